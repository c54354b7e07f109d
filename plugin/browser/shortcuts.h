#pragma once

#include <QKeySequence>
#include <QMap>
#include <QObject>
#include <QWidget>
#include <functional>

class QAbstractButton;

/// The keyboard shortcuts of a window. Each works wherever the focus is in the window.
class Tshortcuts : public QObject {
  Q_OBJECT

 public:
  explicit Tshortcuts(QWidget* window) : QObject(window), window_(window) {}

  /// Clicks the button, if it is enabled. Works also in an edit that would use the keys itself.
  void add(const QKeySequence& keys, QAbstractButton* button);
  void add(const QKeySequence& keys, const QObject* context, const std::function<void()>& action);
  /// Clicks the button, if it is enabled, except in an edit, which keeps these keys.
  void addOutsideEdits(const QKeySequence& keys, QAbstractButton* button);
  void addOutsideEdits(const QKeySequence& keys, const QObject* context, const std::function<void()>& action);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void bind(const QKeySequence& keys, bool editsKeepThem, const QObject* context, const std::function<void()>& action);

  QWidget* window_;
  QMap<QKeySequence, bool> editsKeep_;  ///< by keys: whether edits keep them
};
