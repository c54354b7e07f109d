#pragma once

#include <QAbstractButton>
#include <QList>
#include <functional>

class QLineEdit;

/// Ends the program with the names of the controls that `window` has.
[[noreturn]] void failWithoutControl(const QWidget* window, const char* name);

/// The control of that name in `window`, which must be there.
template <typename Control = QWidget>
Control* control(const QWidget* window, const char* name) {
  auto* found = window->findChild<Control*>(QString::fromLatin1(name));
  if (found == nullptr) failWithoutControl(window, name);
  return found;
}

inline void click(const QWidget* window, const char* button) {
  control<QAbstractButton>(window, button)->click();
}

/// The names of the controls that Tab goes through in an active window, from the one that has the focus, joined by
/// blanks.
QString tabOrder(const QWidget* window);

/// Chooses Paste in the context menu.
void pasteByMenu(QLineEdit* edit);

/// Steps that handle modal dialogs in turn. `whenOpen` makes one step, `+` joins them, `during` runs them.
class [[nodiscard]] TdialogSteps {
 public:
  using Tact = std::function<void(QWidget* dialog)>;
  struct Tstep {
    QByteArray dialog;
    QByteArray button;
    Tact act;
  };

  TdialogSteps() = default;
  explicit TdialogSteps(const Tstep& step) : steps_{step} {}
  TdialogSteps operator+(const TdialogSteps& more) const {
    TdialogSteps joined = *this;
    joined.steps_ += more.steps_;
    return joined;
  }

  /// Calls `trigger`, which shows the dialogs and returns when they are closed. The test fails where a step is left
  /// then. Calls may be nested: the inner steps come first.
  void during(const std::function<void()>& trigger) const;

 private:
  QList<Tstep> steps_;
};

/// Calls `act` as soon as that dialog is the active one and `button`, where one is named, is enabled. A dialog without
/// an object name goes by its class.
inline TdialogSteps whenOpen(const char* dialog, const TdialogSteps::Tact& act, const char* button = "") {
  return TdialogSteps({dialog, button, act});
}

/// Clicks a button as soon as it is enabled.
inline TdialogSteps clickIn(const char* dialog, const char* button) {
  return whenOpen(
      dialog, [button](QWidget* window) { click(window, button); }, button);
}

/// To be called once, before any dialog opens. A dialog that stays open without a step for it ends the program, which
/// names it.
void watchDialogs();
