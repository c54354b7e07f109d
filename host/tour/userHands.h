#pragma once

#include <QAbstractButton>
#include <QPointer>
#include <QString>
#include <QTableView>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>

class QRadioButton;

inline constexpr int windowPatience = 5000;  ///< ms to wait for a window

/// A step of the tour did not find what it expected.
class TstepFailed : public std::runtime_error {
 public:
  explicit TstepFailed(const QString& why) : std::runtime_error(why.toStdString()) {}
};

/// Throws `TstepFailed` with `why` unless `holds`.
void expect(bool holds, const QString& why);

/// What a user does with a window: real mouse and key events, sent as the platform sends them. Controls are found by
/// name; a missing control fails the step with a list of the existing ones.
class TuserHands {
 public:
  explicit TuserHands(QWidget* window) : window_(window) {}

  /// From now on there is no mouse: what is to be clicked is reached with Tab and the arrow keys, and pressed with
  /// Space.
  static void takeMouseAway() { hasMouse_ = false; }

  QWidget* window() const { return window_; }

  template <typename Control>
  Control* control(const QString& name) const {
    auto* found = window_->findChild<Control*>(name);
    expect(found != nullptr, QStringLiteral("no control %1, only %2").arg(name, controlNames()));
    return found;
  }

  QAbstractButton* button(const char* name) const { return control<QAbstractButton>(QString::fromLatin1(name)); }

  void click(QWidget* widget) const;
  void clickHeading(QTableView* grid, int column) const;
  /// Drags the right edge of a column's heading by `pixels`, a multiple of 10. Without a mouse it must be the sort
  /// column.
  void dragColumnEdge(QTableView* grid, int column, int pixels) const;
  void type(const QString& text) const;
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
  /// The menu key, which offscreen platforms do not know.
  void pressMenuKey() const;
  /// Presses Tab until `widget` has the focus.
  void tabTo(QWidget* widget) const;

 private:
  void pressByKeys(QWidget* widget) const;
  void tabToRadioButton(const QRadioButton* button) const;
  QString controlNames() const;
  QPoint inWindow(QWidget* widget, QPoint position) const;

  inline static bool hasMouse_ = true;
  QWidget* window_;
};

/// Activates a window, as a window manager would, for platforms without one. Returns whether it is active by now.
bool isBroughtToFront(QWidget* window);
/// Waits for that. False if the window is still not active after some seconds.
bool comesToFront(QWidget* window);

/// Calls `open`, which opens the modal dialog with this name or class and returns when it is closed; meanwhile runs
/// `act` on the dialog. If `act` fails or the dialog does not become active, closes the dialog and fails the step.
void whileDialogIsOpen(const QString& dialog, const std::function<void()>& open,
                       const std::function<void(const TuserHands&)>& act);

/// The text of a grid's cell or of a column's heading.
QString cellText(const QTableView* grid, int row, int column);
QString headingText(const QTableView* grid, int column);
/// The column with this heading; fails the step if there is none.
int columnOf(const QTableView* grid, const QString& heading);

/// Closes unexpected message boxes, and remembers their texts.
class TboxWatcher : public QObject {
 public:
  TboxWatcher();

  /// Call before a step that expects a box and closes it itself.
  void pause() { timer_.stop(); }
  void resume() { timer_.start(); }

  /// The texts since the last call.
  QString takeText();

 private:
  void closeBox();

  QTimer timer_;
  QString said_;
};
