#pragma once

#include <QAbstractButton>
#include <QPointer>
#include <QString>
#include <QTableView>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>

inline constexpr int windowPatience = 5000;  ///< ms that a window has to do what it is to do

/// A step of the tour did not find what it looked for.
class TstepFailed : public std::runtime_error {
 public:
  explicit TstepFailed(const QString& why) : std::runtime_error(why.toStdString()) {}
};

/// Throws `TstepFailed` with `why` unless `holds`.
void expect(bool holds, const QString& why);

/// What a user does with windows: real mouse and key events, sent to the window as the platform sends them. Controls
/// are found by name; a missing one fails the step with a list of those that are there.
class TuserHands {
 public:
  explicit TuserHands(QWidget* window) : window_(window) {}

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
  /// Drags the right edge of a column's heading by so many pixels.
  void dragColumnEdge(QTableView* grid, int column, int pixels) const;
  void type(const QString& text) const;
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
  /// Presses Tab until `widget` has the focus.
  void tabTo(QWidget* widget) const;

 private:
  QString controlNames() const;
  QPoint inWindow(QWidget* widget, QPoint position) const;

  QWidget* window_;
};

/// Makes a window the active one, as a window manager does and a platform without one does not. Whether it is by now.
bool isBroughtToFront(QWidget* window);
/// Waits until it is. False where it is not after some seconds.
bool comesToFront(QWidget* window);

/// Opens a modal dialog by `open`, which returns when it is closed, and meanwhile lets `act` work on it. The dialog is
/// known by its name or class. A failure in `act`, and a dialog that does not become active, closes it and fails the
/// step.
void whileDialogIsOpen(const QString& dialog, const std::function<void()>& open,
                       const std::function<void(const TuserHands&)>& act);

/// The text of a grid's cell, and of a column's heading.
QString cellText(const QTableView* grid, int row, int column);
QString headingText(const QTableView* grid, int column);
/// The column under a heading; fails the step where there is none.
int columnOf(const QTableView* grid, const QString& heading);

/// Closes message boxes that nobody expects, and remembers what they said.
class TboxWatcher : public QObject {
 public:
  TboxWatcher();

  /// A box is expected, and somebody else will close it.
  void pause() { timer_.stop(); }
  void resume() { timer_.start(); }

  /// What was said since the last call.
  QString takeText();

 private:
  void closeBox();

  QTimer timer_;
  QString said_;
};
