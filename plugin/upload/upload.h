#pragma once

#include <QThread>
#include <atomic>

#include "support/messageRelay.h"
#include "upload/transfer.h"

class TfrmProgress;

/// The worker thread of one upload. The progress dialog owns it, starts it when the dialog is shown, and learns from
/// `finished` that it has ended.
///
/// The thread reads only the cancelled flag and the upload's data from the dialog, and reports by queued signals. The
/// user-interface thread shows its message boxes.
class TuploadThread final : public QThread, private TtransferView {
  Q_OBJECT

 public:
  /// Throws `std::invalid_argument` if either is missing. Both must outlive the thread.
  TuploadThread(TfrmProgress* dialog, TcommStruct* resources);
  /// Calls `giveUp` and waits for the thread.
  ~TuploadThread() override;

  /// Whether the analyzer has acknowledged everything. Valid after the thread has ended.
  bool isCompleted() const { return completed_.load(std::memory_order_acquire); }

  /// The thread no longer waits for an answer to a message box. Called on the user-interface thread.
  void giveUp() { boxes_.release(); }

 signals:
  void operationChanged(const QString& text);
  void progressChanged(int position);  ///< 0 to 100

 protected:
  void run() override;

 private:
  bool isCancelled() const override;
  void showOperation(const char* text) override;
  void showProgress(int position) override;

  TfrmProgress& dialog_;
  TcommStruct& resources_;
  TmessageRelay boxes_;
  int position_ = -1;
  std::atomic<bool> completed_ = false;  ///< written last: whoever reads it sees everything else
};
