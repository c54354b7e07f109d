#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>

#include "browser/EquipmentRecordPluginFrame.h"
#include "browser/browserMessages.h"
#include "browser/csvExport.h"
#include "browser/spreadsheetExport.h"
#include "browser/statusText.h"
#include "support/messageBox.h"
#include "support/modalDialog.h"
#include "support/paths.h"
#include "support/windows1252.h"

// The frame's two exports.

namespace {

/// Asks where to write; empty if the user cancelled. Offers the file that was written last.
QString askForFile(QWidget* owner, const QString& last) {
  const QFileInfo offered(last);
  const bool folderExists = !last.isEmpty() && offered.dir().exists();
  TmodalDialog<QFileDialog> dialog(owner, QStringLiteral("Export As"));
  dialog->setObjectName(QStringLiteral("SaveDialogExport"));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setDefaultSuffix(QStringLiteral("csv"));
  dialog->setNameFilters({QStringLiteral("Comma Separated Value files (*.csv)"), QStringLiteral("All files (*.*)")});
  dialog->setDirectory(folderExists ? offered.absolutePath()
                                    : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  dialog->selectFile(last.isEmpty() ? QStringLiteral("equipment.csv") : offered.fileName());
  return dialog.exec() == QDialog::Accepted ? dialog->selectedFiles().value(0) : QString();
}

}  // namespace

void TEquipmentRecordPluginFrame::btnExportClick() {
  const std::filesystem::path path = findPath(context_.programFolder, "export.csv");
  switch (exportRecords(list_.view(), list_.titles(), path)) {
    case TexportResult::notOpened:
      showMessage(this, exportNotOpened);
      break;
    case TexportResult::nothingShown:
      showMessage(this, nothingToExport);
      break;
    case TexportResult::done:
      sayExported(list_.view().count(), path);
      break;
  }
}

void TEquipmentRecordPluginFrame::exportAs() {
  if (list_.view().isEmpty()) {
    showMessage(this, nothingToExport);
    return;
  }
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  const auto rows = rowsToExport();
  if (!rows || self.isNull()) return;
  const QString file = askForFile(this, fromRecordText(lastExportFile(ini_)));
  if (file.isEmpty() || self.isNull()) return;
  const Toutcome outcome = writeSpreadsheet(diskFileSystem(), file.toStdU16String(), list_.records(),
                                            list_.recordsIn(*rows), settings_.captions);
  if (!outcome) {
    const QString reason = QString::fromLocal8Bit(outcome.failure().reason);
    showMessage(this, exportNotWritten, QMessageBox::Ok, QDir::toNativeSeparators(file) + u'\n' + reason);
    return;
  }
  if (const auto name = toRecordText(QDir::toNativeSeparators(file))) saveLastExportFile(ini_, *name);
  sayExported(rows->count(), file.toStdU16String());
}

void TEquipmentRecordPluginFrame::sayExported(std::size_t count, const std::filesystem::path& path) {
  const QString name = QDir::toNativeSeparators(QString::fromStdU16String(path.u16string()));
  say(QStringLiteral("Exported %1 to %2").arg(recordCountText(count), name));
}

/// The selected rows or all, as the user wants it where that is a question; nothing if the user cancelled.
std::optional<TrowRange> TEquipmentRecordPluginFrame::rowsToExport() {
  const TrowRange all{0, list_.view().count() - 1};
  const auto selected = selectedRows();
  if (!selected || selected->count() < 2 || selected->count() == all.count()) return all;
  const QString counts = QStringLiteral("%1 of %2 records are selected.").arg(selected->count()).arg(all.count());
  const auto answer =
      showMessage(this, exportSelected, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, counts);
  if (answer == QMessageBox::Yes) return selected;
  return answer == QMessageBox::No ? std::optional(all) : std::nullopt;
}
