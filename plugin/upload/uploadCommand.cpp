#include "upload/uploadCommand.h"

#include <QGuiApplication>
#include <QPointer>
#include <optional>
#include <string>

#include "comm/portDevices.h"
#include "comm/selector/communicationsSelector.h"
#include "support/log.h"
#include "support/messageBox.h"
#include "support/modalDialog.h"
#include "upload/progress.h"
#include "upload/transfer.h"
#include "upload/uploadMessages.h"

namespace {

/// Cancels the handshake when the owner is destroyed. Shows no progress: the handshake is too short for that.
class TgreetingView final : public TtransferView {
 public:
  explicit TgreetingView(QWidget* owner) : owner_(owner) {}
  bool isCancelled() const override { return owner_.isNull(); }
  void showOperation(const char*) override {}
  void showProgress(int) override {}

 private:
  QPointer<QWidget> owner_;
};

class TwaitCursor {
 public:
  TwaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  TwaitCursor(const TwaitCursor&) = delete;
  TwaitCursor& operator=(const TwaitCursor&) = delete;
  ~TwaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

/// Nothing if the user has cancelled or the owner was destroyed.
std::optional<TconnectionChoice> chooseConnection(QWidget* owner, const TiniFile& hostSettings,
                                                  const QString& warning) {
  const TportCalls ports = {[](int number) { return systemSerialCalls().isFree(number); }, isPortPresent,
                            portDeviceName};
  TmodalDialog<TcomSelectFrm> selector(hostSettings, ports, owner);
  selector->showListWarning(warning);
  return selector.exec() == QDialog::Accepted ? std::optional(selector->choice()) : std::nullopt;
}

TcommOutcome greetOverTransport(const TuploadCommStruct& upload, TcommStruct& resources, QWidget* owner) {
  const TuploadTransport transport = transportOf(upload);
  const TwaitCursor waiting;
  return greet(transport, resources, TgreetingView(owner));
}

bool transferWithProgress(const TuploadCommStruct& upload, TcommStruct& resources, QWidget* owner) {
  TmodalDialog<TfrmProgress> dialog(&upload, &resources, owner);
  const bool completed = dialog.exec() == QDialog::Accepted;
  if (!dialog.isGone()) dialog->awaitWorker();
  return completed;
}

void logStart(const TuploadCommStruct& upload) {
  const char* method = commMethodBy(&TcommMethodEntry::method, upload.method).name;
  logInfo(std::string("upload starts: ") + method + ", " + targetOf(transportOf(upload).parameters) +
          ", number of records: " + std::to_string(upload.entries->size()));
}

}  // namespace

bool uploadRecords(QWidget* owner, const TequipRecTable& records, const TiniFile& hostSettings,
                   const QString& warning) {
  const QPointer<QWidget> self(owner);
  try {
    const auto choice = chooseConnection(owner, hostSettings, warning);
    if (!choice) return false;
    const auto entries = makeUploadEntries(records);
    const TuploadCommStruct upload(choice->method, serialPortNumber(choice->portText), choice->octets, entries);
    logStart(upload);
    TcommStruct resources;
    const TcommOutcome failure = greetOverTransport(upload, resources, owner);
    if (self.isNull()) return false;
    if (!failure) return transferWithProgress(upload, resources, owner);
    showMessage(owner, *failure, QMessageBox::Ok, QString::fromStdString(failure->advice));
  } catch (...) {
    logCaught("upload");
    if (!self.isNull()) showMessage(owner, internalError);
  }
  return false;
}
