#pragma once

#include <QDialog>
#include <atomic>
#include <memory>

class TcommStruct;
class TkeepAwake;
class TtaskbarProgress;
class TtimeLeft;
class TuploadThread;
struct TuploadCommStruct;
namespace Ui {
class TfrmProgress;
}

/// Shows the progress of one upload, with a button to cancel it.
///
/// Lives on the user-interface thread and owns the upload's worker. `exec` shows the dialog and starts the worker; the
/// result is `Accepted` if the analyzer has acknowledged everything, else `Rejected`. Cancel closes the dialog at once.
/// The worker ends soon after and may show a message box: `awaitWorker` keeps the event loop running until then.
/// Destroying the dialog at any time cancels the upload and joins the worker without a message.
class TfrmProgress final : public QDialog {
  Q_OBJECT

 public:
  /// Both stay the caller's and must outlive the dialog. Throws `std::invalid_argument` if either is missing.
  TfrmProgress(const TuploadCommStruct* upload, TcommStruct* resources, QWidget* parent);
  ~TfrmProgress() override;

  const TuploadCommStruct& upload() const { return *upload_; }
  /// May be called from any thread.
  bool isCancelled() const { return cancelled_; }

  /// Returns when the worker has ended, or earlier if the application quits or this dialog is destroyed.
  void awaitWorker();

  /// Esc is Cancel.
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void btnCancelClick();
  void workerFinished();
  void showProgress(int position);
  void showTimeLeft();

  const TuploadCommStruct* upload_;
  std::atomic<bool> cancelled_ = false;
  std::unique_ptr<Ui::TfrmProgress> ui_;
  std::unique_ptr<TtimeLeft> timeLeft_;
  std::unique_ptr<TtaskbarProgress> taskbar_;
  std::unique_ptr<TkeepAwake> keepAwake_;
  std::unique_ptr<TuploadThread> worker_;
};
