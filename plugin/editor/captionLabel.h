#pragma once

#include <QLabel>

/// A caption that the user chose: one line, shown to the letter, with an ellipsis where it does not fit.
class TcaptionLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  /// A long caption does not widen its window.
  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }
  QSize sizeHint() const override { return minimumSizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};
