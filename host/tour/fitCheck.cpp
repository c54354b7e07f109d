#include "host/tour/fitCheck.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>

namespace {

QString text(const QSize& size) {
  return QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
}

bool showsText(const QWidget* widget) {
  const auto is = [widget](auto* kind) { return qobject_cast<decltype(kind)>(widget) != nullptr; };
  const QAbstractButton* button = nullptr;
  const QAbstractSpinBox* spinBox = nullptr;
  const QComboBox* comboBox = nullptr;
  const QGroupBox* groupBox = nullptr;
  const QLabel* label = nullptr;
  const QLineEdit* lineEdit = nullptr;
  return is(button) || is(spinBox) || is(comboBox) || is(groupBox) || is(label) || is(lineEdit);
}

/// The least size that shows all of the control. Controls that end their text in an ellipsis ask for no width.
QSize leastSize(const QWidget* widget) {
  const auto* button = qobject_cast<const QAbstractButton*>(widget);
  if (button != nullptr && button->text().isEmpty()) return {};
  const auto* label = qobject_cast<const QLabel*>(widget);
  if (label != nullptr && label->text().isEmpty()) return {};
  if (label != nullptr && label->wordWrap()) return {0, label->heightForWidth(label->width())};
  return widget->minimumSizeHint();
}

}  // namespace

QString misfitIn(const QWidget* window) {
  const QSize screen = window->screen()->availableSize();
  if (window->size() != window->size().boundedTo(screen)) {
    return QStringLiteral("%1 is %2 on a screen of %3").arg(window->objectName(), text(window->size()), text(screen));
  }
  if (qobject_cast<const QFileDialog*>(window) != nullptr) return {};
  for (const QWidget* widget : window->findChildren<QWidget*>()) {
    const bool isOwn = !widget->objectName().isEmpty() && !widget->objectName().startsWith(QStringLiteral("qt_"));
    if (!widget->isVisible() || widget->isWindow() || !isOwn || !showsText(widget)) continue;
    const bool isInside = widget->parentWidget()->rect().contains(widget->geometry());
    const QSize least = leastSize(widget);
    if (isInside && widget->size() == widget->size().expandedTo(least)) continue;
    return QStringLiteral("%1 in %2 is %3%4, its text needs %5")
        .arg(widget->objectName(), window->objectName(), text(widget->size()),
             isInside ? QString() : QStringLiteral(" and cut off"), text(least));
  }
  return {};
}
