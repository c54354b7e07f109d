#pragma once

#include <memory>

#include "upload/workerDialog.h"

class TcommStruct;
struct TuploadCommStruct;
namespace Ui {
class TfrmGreeting;
}

/// Exchanges the handshake with the analyzer on a worker thread. Only where that takes longer than half a second does
/// the window appear, with a button to cancel it. It closes before any message box.
class TfrmGreeting final : public TworkerDialog {
  Q_OBJECT

 public:
  /// `upload` and `resources` must outlive the worker, which can be made to `hold` them. The worker's message boxes are
  /// shown over `parent`, which may be null.
  TfrmGreeting(const TuploadCommStruct& upload, TcommStruct& resources, QWidget* parent);
  ~TfrmGreeting() override;

  /// Returns when the exchange is over or cancelled, the application quits, or this dialog is destroyed: then
  /// `awaitWorker` is due. There is no user input until the window appears.
  int exec() override;

 private:
  void awaitExchange();
  void exchangeEnded();

  std::unique_ptr<Ui::TfrmGreeting> ui_;
  bool ended_ = false;
};
