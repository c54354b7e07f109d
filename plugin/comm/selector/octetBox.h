#pragma once

#include <QLineEdit>

/// One of the four boxes of an IP address: takes digits only, at most three, whatever way they come. A paste is left to
/// whoever knows the other boxes.
class ToctetBox : public QLineEdit {
  Q_OBJECT

 public:
  explicit ToctetBox(QWidget* parent);

  /// Room for the digits and a little space around them.
  QSize sizeHint() const override;

  /// Takes the slot's place in the context menu, too, which looks it up by name.
  Q_SLOT void paste();

 signals:
  /// A text that the user wants to paste; none of it is in the box yet.
  void pasted(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
};
