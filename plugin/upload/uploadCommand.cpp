#include "upload/uploadCommand.h"

#include <QPointer>
#include <QSharedPointer>
#include <memory>
#include <optional>
#include <string>

#include "comm/portDevices.h"
#include "comm/selector/communicationsSelector.h"
#include "support/log.h"
#include "support/messageBox.h"
#include "support/modalDialog.h"
#include "upload/greeting.h"
#include "upload/progress.h"
#include "upload/uploadAdvice.h"
#include "upload/uploadMessages.h"
#include "upload/waiting.h"

namespace {

/// What an upload's workers use. A worker that hangs in a driver keeps it.
struct TuploadWork final : TheldByWorker {
  TuploadWork(const TconnectionChoice& choice, const TequipRecTable& records)
      : entries(makeUploadEntries(records)),
        upload(choice.method, serialPortNumber(choice.portText), choice.octets, entries) {}

  const std::vector<TuploadEntry> entries;
  const TuploadCommStruct upload;
  TcommStruct resources;
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

/// Shows a dialog until its worker has ended. Returns whether the worker has done its work. A worker that does not end
/// after a cancel is left to a window of its own.
template <typename Tdialog>
bool runWorker(TmodalDialog<Tdialog>& dialog, const QSharedPointer<TuploadWork>& work, QWidget* owner) {
  const QPointer<QWidget> self(owner);
  dialog->hold(work);
  dialog.exec();
  if (dialog.isGone()) return false;
  const bool ended = dialog->awaitWorker();
  if (!ended) TfrmWaiting::showFor(dialog.release(), self);
  return ended && !dialog.isGone() && dialog->isCompleted();
}

bool greetAnalyzer(const QSharedPointer<TuploadWork>& work, QWidget* owner) {
  TmodalDialog<TfrmGreeting> dialog(work->upload, work->resources, owner);
  return runWorker(dialog, work, owner);
}

bool transferWithProgress(const QSharedPointer<TuploadWork>& work, QWidget* owner) {
  TmodalDialog<TfrmProgress> dialog(&work->upload, &work->resources, owner);
  return runWorker(dialog, work, owner);
}

void logStart(const TuploadCommStruct& upload) {
  const char* method = commMethodBy(&TcommMethodEntry::method, upload.method).name;
  logInfo(std::string("upload starts: ") + method + ", " + targetOf(transportOf(upload).parameters) +
          ", number of records: " + std::to_string(upload.entries->size()));
}

/// Returns the analyzer's place.
QString logSuccess(const TuploadCommStruct& upload) {
  const std::string place = placeOf(transportOf(upload));
  logInfo("upload completed: " + place + ", number of records: " + std::to_string(upload.entries->size()));
  return QString::fromStdString(place);
}

}  // namespace

std::optional<QString> uploadRecords(QWidget* owner, const TequipRecTable& records, const TiniFile& hostSettings,
                                     const QString& warning) {
  if (TfrmWaiting::showOpen()) return std::nullopt;
  const QPointer<QWidget> self(owner);
  try {
    const auto choice = chooseConnection(owner, hostSettings, warning);
    if (!choice) return std::nullopt;
    const auto work = QSharedPointer<TuploadWork>::create(*choice, records);
    logStart(work->upload);
    if (!greetAnalyzer(work, owner) || self.isNull() || !transferWithProgress(work, owner)) return std::nullopt;
    return logSuccess(work->upload);
  } catch (...) {
    logCaught("upload");
    if (!self.isNull()) showMessage(owner, internalError);
  }
  return std::nullopt;
}
