#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <exception>
#include <functional>

#include "host/tour/userHands.h"

/// Lets a chain of dialogs open, each from the one before or after it, and works on them in turn. Unlike with
/// `whileDialogIsOpen` no window needs to come back in between. A failure closes what is open and fails the step.
class TdialogChain : public QObject {
 public:
  using Tact = std::function<void(const TuserHands&)>;

  /// `act` is done once the dialog, known by its name or class, is open and, where a button is named, that is enabled.
  void add(const char* dialog, const Tact& act, const char* button = "");

  /// Opens the first dialog by `open`, which returns when the last is closed.
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
  QPointer<QWidget> last_;  ///< the dialog of the last act, which is not another's, too: that act may not be over yet
  std::exception_ptr failure_;
};
