#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class TImportProgress;
}

/// Shows the progress of an import run and lets the user cancel it. At the end it reports the result and waits for OK.
/// Use `show` during the run and `exec` at the end.
class TImportProgress : public QDialog {
  Q_OBJECT

 public:
  explicit TImportProgress(QWidget* parent);
  ~TImportProgress() override;

  /// Advances the bar by one percent.
  void Step();
  /// Advances the bar to this percentage. The bar never goes back.
  void stepTo(int percent);
  /// Whether the user pressed Cancel, which also hides the dialog.
  bool IsCancelled() const { return cancelled_; }
  /// Call this when the run has ended. `isAnything`: the list was changed.
  void Finish(const QString& summary, bool isAnything, bool hasDetails);

  /// Esc and closing the window press Cancel while it is enabled, and OK afterwards.
  void reject() override;

 signals:
  void detailsWanted();

 private:
  void BtnCancelClick();
  void BtnOKClick();

  bool cancelled_ = false;
  std::unique_ptr<Ui::TImportProgress> ui_;
};
