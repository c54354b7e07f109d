#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class QKeyEvent;
class QWidget;

/// Collects what a barcode scanner, or a quick user, types into a widget that has no use for text of its own. Enter
/// ends the text. A pause of more than a second and a half, Esc, and the loss of the focus forget it.
class TscanBuffer : public QObject {
  Q_OBJECT

 public:
  /// Watches the widget, which becomes its parent.
  explicit TscanBuffer(QWidget* widget);

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  /// What has been typed so far; empty when it was forgotten.
  void typed(const QString& text);
  /// Enter was pressed behind a text, and released. A receiver may delete the widget.
  void entered(const QString& text);

 private:
  bool press(const QKeyEvent& key);
  void change(const QString& text);

  QTimer pause_;
  QString text_;
  bool isEnding_ = false;  ///< Enter is down
};
