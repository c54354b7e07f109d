#pragma once

#include <QDialog>
#include <QPointer>
#include <memory>
#include <utility>

#include "support/fitToScreen.h"

/// A dialog that a function shows and waits for: `TmodalDialog<TfrmOptions> form(ini, this); form.exec();`.
///
/// Deletes the dialog at the end of its scope. While the dialog is open, the host may delete the dialog's Qt parent and
/// the dialog with it. `exec` then returns `QDialog::Rejected` (which is `QMessageBox::NoButton`, too) and `isGone`
/// returns true. When the caller is the parent, the caller is gone as well and must return without touching a member.
template <typename Tdialog>
class TmodalDialog {
 public:
  /// Takes the arguments of the dialog's constructor.
  template <typename... Targuments>
  explicit TmodalDialog(Targuments&&... arguments) : dialog_(new Tdialog(std::forward<Targuments>(arguments)...)) {}
  TmodalDialog(const TmodalDialog&) = delete;
  TmodalDialog& operator=(const TmodalDialog&) = delete;
  ~TmodalDialog() { const std::unique_ptr<Tdialog> last(dialog_.data()); }

  /// Shows the dialog within its screen, waits until it closes, and returns its result.
  int exec() {
    fitToScreen(*dialog_);
    const int result = dialog_->exec();
    return isGone() ? static_cast<int>(QDialog::Rejected) : result;
  }

  /// Shows the dialog within its screen and returns at once.
  void show() {
    fitToScreen(*dialog_);
    dialog_->show();
  }

  /// Whether the dialog was destroyed before its scope ended.
  bool isGone() const { return dialog_.isNull(); }

  /// Hands the dialog over; null once it is gone.
  std::unique_ptr<Tdialog> release() { return std::unique_ptr<Tdialog>(std::exchange(dialog_, nullptr).data()); }

  /// The dialog; null once it is gone.
  Tdialog* get() const { return dialog_.data(); }
  Tdialog* operator->() const { return get(); }

 private:
  QPointer<Tdialog> dialog_;
};
