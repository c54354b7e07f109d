#include <QApplication>
#include <QPointer>
#include <QStringList>
#include <array>
#include <utility>

#include "browser/EquipmentRecordPluginFrame.h"
#include "browser/browserMessages.h"
#include "browser/statusText.h"
#include "help/helpViewer.h"
#include "store/joinLists.h"
#include "support/headedGrid.h"
#include "support/messageBox.h"
#include "support/paths.h"
#include "ui_EquipmentRecordPluginFrame.h"

// Loading the list, offering unsaved changes, and saving.

namespace {

/// What a box says of edits: "2 records added, 1 record changed".
QString textOf(const TlistEdits& edits) {
  std::array<std::size_t, 3> counts{};
  for (const TlistEdit& edit : edits) ++counts.at(!edit.was ? 0 : edit.became ? 1 : 2);
  QStringList parts;
  for (const auto& [what, count] : {std::pair("added", counts[0]), {"changed", counts[1]}, {"deleted", counts[2]}}) {
    if (count == 1) parts << QStringLiteral("1 record %1").arg(QLatin1String(what));
    if (count > 1) parts << QStringLiteral("%1 records %2").arg(count).arg(QLatin1String(what));
  }
  return parts.join(QStringLiteral(", "));
}

/// By how many records a change makes a list longer; negative if shorter.
std::ptrdiff_t growthBy(const TlistChange& change) {
  std::ptrdiff_t growth = 0;
  for (const TlistStep& step : change.steps()) {
    if (const auto* inserted = std::get_if<TinsertRecords>(&step)) growth += std::ssize(inserted->indices);
    if (const auto* removed = std::get_if<TremoveRecords>(&step)) growth -= std::ssize(removed->indices);
  }
  return growth;
}

}  // namespace

void TEquipmentRecordPluginFrame::loadData() {
  TequipRecTable records;
  const auto message = files_.load(records);
  list_.setRecords(std::move(records));
  if (message) showMessage(nullptr, *message);
  const auto loaded =
      loadTestProcTable(diskFileSystem(), findPath(context_.workingFolder, "Data/testProc.asq"), list_.titles());
  if (loaded == TtestProcLoad::damaged) showMessage(nullptr, corruptTestProcList);
  list_.setEditListener([this](const TlistEdits& edits) { files_.unsaved().add(edits); });
  connect(qApp, &QGuiApplication::commitDataRequest, this, &TEquipmentRecordPluginFrame::secureChanges,
          Qt::DirectConnection);
  offerUnsavedChanges();
}

void TEquipmentRecordPluginFrame::offerUnsavedChanges() {
  const TlistEdits unsaved = files_.findUnsaved(list_.records());
  if (unsaved.empty()) return;
  const auto answer = showMessage(nullptr, unsavedChangesFound, QMessageBox::Yes | QMessageBox::No, textOf(unsaved));
  if (answer == QMessageBox::Yes) restore(unsaved);
  if (answer == QMessageBox::No) files_.unsaved().setAside();
}

void TEquipmentRecordPluginFrame::restore(const TlistEdits& unsaved) {
  Tjoined joined = joinLists(list_.records(), unsaved);
  const auto count = static_cast<std::ptrdiff_t>(list_.records().count());
  if (count + growthBy(joined.change) > static_cast<std::ptrdiff_t>(equipRecLimit)) {
    files_.unsaved().setAside();
    showMessage(nullptr, tooManyToRestore);
    return;
  }
  files_.unsaved().adopt(list_.restore(std::move(joined.change)));
  lastEvent_ = QStringLiteral("Restored: ") + textOf(unsaved);
}

/// The user's session ends, and the program may end at once: what is not on the disk as unsaved changes is saved.
void TEquipmentRecordPluginFrame::secureChanges() {
  if (files_.unsaved().isSafe() || list_.isAdding()) return;
  saveRecords();
}

/// Writes the records, and takes over what other programs have changed.
TsaveReport TEquipmentRecordPluginFrame::saveRecords() {
  TsaveReport report = files_.save(list_.records());
  if (report.joined) {
    list_.setRecords(std::move(*report.joined));
    showAll();
  }
  return report;
}

/// Shows the message of a save, if it has one. It has no owner: the frame is hidden or on its way out.
void TEquipmentRecordPluginFrame::showReport(const TsaveReport& report) {
  if (report.message) showMessage(nullptr, *report.message, QMessageBox::Ok, QString::fromStdString(report.details));
}

void TEquipmentRecordPluginFrame::BtnExitClick() {
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  hide();
  const TsaveReport report = saveRecords();
  exitSave_ = report.succeeded ? TexitSave::done : TexitSave::failed;
  say(report.succeeded ? recordCountText(list_.records().count()) + QStringLiteral(" saved")
                       : QStringLiteral("The records could not be saved"));
  showReport(report);
  if (self.isNull()) return;  // deleted while the message box was open
  saveLayout();
  help_->closeAll();
  const auto returnToMainWindow = context_.returnToMainWindow;
  if (returnToMainWindow) returnToMainWindow();
  // Nothing may follow: the host may have deleted this frame.
}
