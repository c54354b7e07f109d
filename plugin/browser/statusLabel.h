#pragma once

#include <QLabel>

/// A line that tells what happens: plain text, with an ellipsis and the whole as its tooltip where it does not fit. It
/// never widens its window. Screen readers hear of each new text.
class TstatusLabel : public QLabel {
  Q_OBJECT

 public:
  explicit TstatusLabel(QWidget* parent);

  void setStatus(const QString& text);

  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void showToolTip();
};

/// A link at the end of the line, readable on any palette. Shows a frame while it has the focus, as no style draws one
/// around a link. Enter and Space follow it. Without a text it is hidden.
class TlinkLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  void setLink(const QString& text);

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};
