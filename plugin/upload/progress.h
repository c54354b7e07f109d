#pragma once

#include <memory>

#include "upload/workerDialog.h"

class TcommStruct;
class TkeepAwake;
class TtaskbarProgress;
class TtimeLeft;
struct TuploadCommStruct;
namespace Ui {
class TfrmProgress;
}

/// Shows the progress of one upload, with a button to cancel it.
///
/// `exec` shows the dialog and starts the worker; the result is `Accepted` if the analyzer has acknowledged everything,
/// else `Rejected`.
class TfrmProgress final : public TworkerDialog {
  Q_OBJECT

 public:
  /// Both stay the caller's and must outlive the worker, which can be made to `hold` them. Throws
  /// `std::invalid_argument` if either is missing.
  TfrmProgress(const TuploadCommStruct* upload, TcommStruct* resources, QWidget* parent);
  ~TfrmProgress() override;

  const TuploadCommStruct& upload() const { return *upload_; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void workerFinished();
  void showProgress(int position);
  void showTimeLeft();

  const TuploadCommStruct* upload_;
  std::unique_ptr<Ui::TfrmProgress> ui_;
  std::unique_ptr<TtimeLeft> timeLeft_;
  std::unique_ptr<TtaskbarProgress> taskbar_;
  std::unique_ptr<TkeepAwake> keepAwake_;
};
