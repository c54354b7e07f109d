#pragma once

#include <QKeySequence>
#include <QObject>
#include <QWidget>
#include <functional>

class QAbstractButton;

/// The keyboard shortcuts of a window. Each works wherever the focus is in the window, also in an edit that would use
/// the keys itself.
class Tshortcuts : public QObject {
  Q_OBJECT

 public:
  explicit Tshortcuts(QWidget* window) : QObject(window), window_(window) {}

  /// Clicks the button, if it is enabled.
  void add(const QKeySequence& keys, QAbstractButton* button);
  void add(const QKeySequence& keys, const QObject* context, const std::function<void()>& action);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* window_;
  QList<QKeySequence> keys_;
};
