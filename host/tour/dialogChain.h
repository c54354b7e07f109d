#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <exception>
#include <functional>

#include "host/tour/userHands.h"

/// Works through a chain of dialogs in turn, each opened from the one before it or after that one has closed. Unlike
/// `whileDialogIsOpen`, it does not expect another window to come back in between. A failure closes the open dialogs
/// and fails the step.
class TdialogChain : public QObject {
 public:
  using Tact = std::function<void(const TuserHands&)>;

  /// Runs `act` once the dialog with this name or class is open and, if a button is named, that button is enabled.
  void add(const char* dialog, const Tact& act, const char* button = "");

  /// Calls `open`, which opens the first dialog and returns when the last one has closed.
  void run(const std::function<void()>& open);

 private:
  struct Tstep {
    QString dialog;
    Tact act;
    QString button;
  };

  void follow();
  bool isReady(QWidget* window) const;
  void doAct(const Tact& act, QWidget* window);
  QString notReady() const;

  QList<Tstep> acts_;
  QElapsedTimer sinceAct_;
  QPointer<QWidget> last_;  ///< the dialog of the last act, which may still be running: no other act gets it
  std::exception_ptr failure_;
};
