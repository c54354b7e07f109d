#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QTime>

#include "browser/EquipmentRecordPluginFrame.h"
#include "browser/browserMessages.h"
#include "browser/gridModel.h"
#include "browser/optionsForm.h"
#include "browser/statusText.h"
#include "editor/eqEditForm.h"
#include "help/helpViewer.h"
#include "help/windowTopics.h"
#include "import/importOptionsForm.h"
#include "print/printForm.h"
#include "support/headedGrid.h"
#include "support/messageBox.h"
#include "support/modalDialog.h"
#include "support/paths.h"
#include "ui_EquipmentRecordPluginFrame.h"
#include "upload/uploadCommand.h"

// The commands behind the frame's buttons, keys and clicks, but for the exports. Their rules are in TrecordList.

void TEquipmentRecordPluginFrame::tblEqRecHeaderPressed(int column) {
  layout_.sort.press(column);
  sort();
}

void TEquipmentRecordPluginFrame::tblEqRecDoubleClicked(const QModelIndex& index) {
  if (list_.view().isEmpty() || editor_) return;
  editRecord(list_.view().at(static_cast<std::size_t>(index.row())));
}

void TEquipmentRecordPluginFrame::tblEqRecEnterReleased() {
  const auto rows = selectedRows();
  if (!rows || rows->count() != 1 || editor_) return;
  editRecord(list_.view().at(currentRow()));
}

std::optional<bool> TEquipmentRecordPluginFrame::editRecord(TrecordIndex index) {
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  TeditorHost& host = *this;
  TmodalDialog<TfrmEqRecEditor> editor(host, ini_, this);
  editor_ = editor.get();
  editor->showRecord(static_cast<std::int32_t>(index));
  editor.exec();
  if (self.isNull()) return std::nullopt;
  editor_.clear();
  fill();  // also after Cancel, because Next and Previous may have stored something
  ui_->tblEqRec->setFocus();
  return editor->isCancelled();
}

void TEquipmentRecordPluginFrame::btnAddClick() {
  if (!list_.hasRoomFor(1)) {
    showMessage(this, tooManyRecords);
    return;
  }
  if (editor_) return;
  const TrecordIndex added = list_.addBlank();
  fill();
  setCurrentRow(list_.view().count() - 1);
  const auto cancelled = editRecord(added);
  if (!cancelled) return;
  if (*cancelled) {
    list_.removeAdded(added);
    sort();
    setCurrentRow(currentRow());
  } else {
    list_.keepAdded(added);
    showSteps();
    say(QStringLiteral("1 record added"));
  }
}

void TEquipmentRecordPluginFrame::btnCopyClick() {
  const auto rows = selectedRows();
  if (!rows) return;
  if (!list_.hasRoomFor(rows->count())) {
    showMessage(this, tooManyRecords);
    return;
  }
  const TrowRange copies = list_.copy(*rows);
  fill();
  selectRows(copies);
  ui_->tblEqRec->setFocus();
  say(recordCountText(rows->count()) + QStringLiteral(" copied"));
}

void TEquipmentRecordPluginFrame::btnDeleteClick() {
  const auto rows = selectedRows();
  if (!rows) return;
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  const QString count = recordCountText(rows->count());
  const auto answer = showMessage(this, deleteRecords, QMessageBox::Yes | QMessageBox::No, count);
  if (answer != QMessageBox::Yes || self.isNull()) return;
  list_.remove(*rows);
  sort();
  // Selects a single row, so that a second press of the key cannot delete more than that.
  setCurrentRow(rows->top);
  say(count + QStringLiteral(" deleted"));
}

/// Called by the editor and the import. Their dialogs are modal, so a change while no editor is open is an import's.
void TEquipmentRecordPluginFrame::change(TlistChange change) {
  const auto* stored = change.steps().empty() ? nullptr : std::get_if<TreplaceRecord>(&change.steps().front());
  if (editor_ && stored != nullptr) lastEvent_ = QStringLiteral("Record %1 changed").arg(stored->index + 1);
  list_.makeStep(editor_ ? TstepKind::change : TstepKind::import, std::move(change));
}

void TEquipmentRecordPluginFrame::goStep(TstepWay way) {
  if (QApplication::activeModalWidget() != nullptr || !list_.steps().can(way)) return;
  const QString step = list_.steps().text(way);
  const TstepShown shown = list_.goStep(way, layout_.sort);
  if (shown.searchCleared) clearSearchBoxes();
  ui_->tblEqRec->setFocus();  // before a button with the focus is disabled, which would pass the focus to the next one
  fill();
  showRows(shown.rows);
  say((way == TstepWay::undo ? QStringLiteral("Undone: ") : QStringLiteral("Redone: ")) + step);
}

void TEquipmentRecordPluginFrame::btnOptionsClick() {
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  TmodalDialog<TfrmOptions> form(ini_, this);
  if (form.exec() != QDialog::Accepted || self.isNull()) return;
  ui_->tblEqRec->readColumnWidths(layout_);
  settings_ = TbrowserSettings::load(ini_);
  list_.changeColumns(settings_, layout_.sort);
  sort();
  ui_->tblEqRec->setColumnWidths(layout_);
}

void TEquipmentRecordPluginFrame::btnPrintClick() {
  const Tview& view = list_.view();
  if (view.isEmpty()) {
    showMessage(this, nothingToPrint);
    return;
  }
  TprintJob job{list_.records(),   list_.titles(),     list_.recordsIn({0, view.count() - 1}),
                selectedRecords(), settings_.captions, list_.searchInWords()};
  TmodalDialog<TEquipRecPrint>(std::move(job), ini_, this).exec();
}

void TEquipmentRecordPluginFrame::BtnUploadClick() {
  if (uploading_) return;
  if (list_.view().isEmpty()) {
    showMessage(this, noRecordsToUpload);
    return;
  }
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  uploading_ = true;
  const QString count = recordCountText(list_.records().count());
  const QString warning = uploadWarning(list_.attention().withoutOwnControlNum(), list_.records().count());
  const TiniFile hostSettings(findPath(context_.programFolder, "QT484pc.ini"));
  const auto place = uploadRecords(this, list_.records(), hostSettings, warning);
  if (self.isNull()) return;
  uploading_ = false;
  const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm"));
  if (place) say(QStringLiteral("%1 sent to the analyzer at %2 (%3)").arg(count, time, *place));
}

/// Shows all records afterwards, so that the new ones are in sight whatever was searched for before.
void TEquipmentRecordPluginFrame::btnImportClick() {
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  const std::uint64_t before = list_.records().revision();
  TlistOwner& owner = *this;
  TmodalDialog<TEquipRecImportOptions> form(owner, ini_, this);
  if (form.exec() != QDialog::Accepted || self.isNull()) return;
  showAll();
  const bool isChanged = list_.records().revision() != before;
  showRows(isChanged ? list_.rowsOfNewestStep() : std::nullopt);
  ui_->tblEqRec->setFocus();
  if (isChanged) say(recordCountText(list_.steps().count(TstepWay::undo)) + QStringLiteral(" imported"));
}

/// Selects rows, or the current one if there are none.
void TEquipmentRecordPluginFrame::showRows(const std::optional<TrowRange>& rows) {
  if (rows && rows->count() > 1) {
    selectRows(*rows);
  } else {
    setCurrentRow(rows ? rows->top : currentRow());
  }
}

void TEquipmentRecordPluginFrame::BtnHelpClick() {
  help_->show(this, QString::fromLatin1(guideStart));
}
