#pragma once

#include <QString>
#include <QWidget>
#include <stdexcept>

/// Finds a form's control by its name. Throws `std::logic_error` with the name when the form has no such control, for
/// example when a field was added to the table of fields, but not to the form.
template <typename Control>
Control& formControl(const QWidget& form, const QString& name) {
  auto* control = form.findChild<Control*>(name);
  if (control == nullptr) throw std::logic_error("no control " + name.toStdString());
  return *control;
}

/// The control of a field or a column: `prefix` is the control's kind ("chk"), `name` the field's ("Model").
template <typename Control>
Control& formControl(const QWidget& form, const char* prefix, const char* name) {
  return formControl<Control>(form, QString::fromLatin1(prefix) + QString::fromLatin1(name));
}
