#pragma once

#include <QThread>
#include <atomic>

#include "support/messageRelay.h"
#include "upload/transfer.h"

class TfrmProgress;

/// The worker thread of one upload. Made suspended; the progress dialog, which owns it, starts it when it is shown and
/// takes its end from `finished`.
///
/// Of the dialog it reads only the cancelled flag and the upload's data; all else goes to it by queued signals. Its own
/// message boxes are shown by the user-interface thread.
class TuploadThread final : public QThread, private TtransferView {
  Q_OBJECT

 public:
  /// Throws `std::invalid_argument` where either is missing. Both must outlive the thread.
  TuploadThread(TfrmProgress* dialog, TcommStruct* resources);
  /// Waits for the thread; `giveUp` comes first.
  ~TuploadThread() override;

  /// Whether the analyzer has acknowledged everything; to be asked after the end.
  bool isCompleted() const { return completed_.load(std::memory_order_acquire); }

  /// No box of this thread is waited for any more. User-interface thread only.
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
  std::atomic<bool> completed_ = false;  ///< the last thing that the thread writes: who reads it sees all the rest
};
