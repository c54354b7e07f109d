#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class TImportProgress;
}

/// Shows how far an import run is, and lets the user cancel it; at the end it says that all went well and waits for OK.
/// Shown by `show` while the run works, and by `exec` at the end.
class TImportProgress : public QDialog {
  Q_OBJECT

 public:
  explicit TImportProgress(QWidget* parent);
  ~TImportProgress() override;

  /// Advances the bar by one step, a percent.
  void Step();
  /// Steps until the bar stands at so many percent; it never goes back.
  void stepTo(int percent);
  /// Whether Cancel was pressed, which also hides the dialog.
  bool IsCancelled() const { return cancelled_; }
  /// To be called when the run has come to its end.
  void Finish();

  /// Esc and the system's ways to close a window: Cancel while that is enabled, OK afterwards.
  void reject() override;

 private:
  void BtnCancelClick();
  void BtnOKClick();

  bool cancelled_ = false;
  std::unique_ptr<Ui::TImportProgress> ui_;
};
