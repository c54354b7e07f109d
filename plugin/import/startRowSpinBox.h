#pragma once

#include <QLineEdit>
#include <QSpinBox>

/// A spin box whose value changes by its arrows and the arrow keys only.
class TstartRowSpinBox : public QSpinBox {
  Q_OBJECT

 public:
  using QSpinBox::QSpinBox;

  void makeTextReadOnly() { lineEdit()->setReadOnly(true); }
};
