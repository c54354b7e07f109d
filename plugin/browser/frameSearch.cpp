#include <QApplication>
#include <QLineEdit>
#include <algorithm>
#include <array>

#include "browser/EquipmentRecordPluginFrame.h"
#include "browser/statusText.h"
#include "editor/eqEditForm.h"
#include "support/headedGrid.h"
#include "support/recordText.h"
#include "support/windows1252.h"
#include "ui_EquipmentRecordPluginFrame.h"

// The search: its boxes, and what is selected after it.

namespace {

/// The text to search for. A text with a character that no record can hold becomes one that finds nothing.
std::string searchText(const QLineEdit* edit) {
  const auto text = toRecordText(edit->text());
  const std::string foundNowhere("x\0x", 3);
  return text ? std::string(trimmedText(*text)) : foundNowhere;
}

std::array<QLineEdit*, 4> boxesOf(const Ui::TEquipmentRecordPluginFrame& ui) {
  return {ui.txtDescSearch, ui.txtManufacturerSearch, ui.txtModelSearch, ui.txtGeneralSearch};
}

}  // namespace

void TEquipmentRecordPluginFrame::btnSearchClick() {
  const TsearchTexts texts = {searchText(ui_->txtDescSearch), searchText(ui_->txtManufacturerSearch),
                              searchText(ui_->txtModelSearch), searchText(ui_->txtGeneralSearch)};
  selectSearchText();
  if (!list_.search(texts)) return;
  lastEvent_.clear();
  sort();
  selectFirstRow();
  say(searchRemark());
}

/// So that the next scan or word replaces it: in the box with the focus, or else in the first one with a text.
void TEquipmentRecordPluginFrame::selectSearchText() {
  const auto boxes = boxesOf(*ui_);
  auto box = std::find_if(boxes.begin(), boxes.end(), [](const QLineEdit* edit) { return edit->hasFocus(); });
  if (box == boxes.end()) {
    box = std::find_if(boxes.begin(), boxes.end(), [](const QLineEdit* edit) { return !edit->text().isEmpty(); });
  }
  if (box != boxes.end()) (*box)->selectAll();
}

void TEquipmentRecordPluginFrame::selectFirstRow() {
  setCurrentRow(0);
  if (list_.view().isEmpty()) ui_->tblEqRec->clearSelection();
}

/// What a user wonders about who sees the first hit and not what was sought.
QString TEquipmentRecordPluginFrame::searchRemark() const {
  const auto column = list_.hiddenColumnFound();
  if (!column) return {};
  const QString heading = fromRecordText(list_.columns().header(*column));
  return QStringLiteral("Found in %1, which is not shown").arg(heading.isEmpty() ? QStringLiteral("a field") : heading);
}

void TEquipmentRecordPluginFrame::clearSearchBoxes() {
  for (QLineEdit* edit : boxesOf(*ui_)) edit->clear();
}

void TEquipmentRecordPluginFrame::btnClearSearchClick() {
  const auto selected = selectedRecords();
  lastEvent_.clear();
  showAll();
  showRows(list_.rowsOf(selected));
}

/// What the boxes hold does not count for this search, so they become empty.
void TEquipmentRecordPluginFrame::lblAttentionClick() {
  lastEvent_.clear();
  clearSearchBoxes();
  list_.searchAttention();
  sort();
  selectFirstRow();
  ui_->tblEqRec->setFocus();
}

void TEquipmentRecordPluginFrame::tblEqRecTyped(const QString& text) {
  say(text.isEmpty() ? QString() : QStringLiteral("Control number: %1").arg(text));
}

/// Opens the record with this control number, also one that a search hides. As the editor stores a control number, a
/// double quote is the typographic one.
void TEquipmentRecordPluginFrame::tblEqRecScanned(const QString& text) {
  const auto controlNum = toRecordText(withoutDoubleQuotes(text));
  const auto found = controlNum ? list_.withControlNum(*controlNum) : std::vector<TrecordIndex>();
  if (found.empty()) {
    say(QStringLiteral("No record has the control number %1").arg(text.trimmed()));
    QApplication::beep();
    return;
  }
  if (!list_.rowsOf(found)) showAll();
  setCurrentRow(list_.rowsOf(found)->top);
  say(found.size() == 1
          ? QString()
          : QStringLiteral("%1 have the control number %2").arg(recordCountText(found.size()), text.trimmed()));
  if (!editor_) editRecord(list_.view().at(currentRow()));
}

void TEquipmentRecordPluginFrame::showAll() {
  clearSearchBoxes();
  list_.clearSearch();
  sort();
}

void TEquipmentRecordPluginFrame::goToSearch() {
  ui_->txtGeneralSearch->setFocus(Qt::ShortcutFocusReason);
  ui_->txtGeneralSearch->selectAll();
}
