#pragma once

#include "upload/driverThread.h"

class TfrmProgress;

/// The worker thread of one upload. The progress dialog owns it, starts it when the dialog is shown, and learns from
/// `finished` that it has ended. It reports by queued signals.
class TuploadThread final : public TdriverThread {
  Q_OBJECT

 public:
  /// Throws `std::invalid_argument` if either is missing. The resources, and the dialog's upload, must outlive the
  /// thread: whoever starts it lets it `hold` them.
  TuploadThread(TfrmProgress* dialog, TcommStruct* resources);

 signals:
  void operationChanged(const QString& text);
  void progressChanged(int position);  ///< 0 to 100

 private:
  TtransferResult exchange() override;
  void showOperation(const char* text) override;
  void showProgress(int position) override;

  const TuploadCommStruct& upload_;
  TcommStruct& resources_;
  int position_ = -1;
};
