// What the record editor does when a button is pressed, and how it is opened and left.

#include <QKeyEvent>
#include <QPushButton>
#include <QShowEvent>

#include "editor/editorHost.h"
#include "editor/eqEditForm.h"
#include "support/windows1252.h"
#include "ui_eqEditForm.h"

void TfrmEqRecEditor::btnPrevClick() {
  const std::size_t row = host_.currentRow();
  if (row > 0) goToRow(row - 1);
}

void TfrmEqRecEditor::btnNextClick() {
  goToRow(host_.currentRow() + 1);
}

void TfrmEqRecEditor::goToRow(std::size_t row) {
  if (row >= host_.shownCount()) return;
  host_.setCurrentRow(row);
  showRecord(static_cast<std::int32_t>(host_.recordAt(row)));
}

void TfrmEqRecEditor::btnOkClick() {
  if (const TequipRec* record = currentRecord()) {
    TequipRec changed = *record;
    boxes().accept(changed, markedTestProc());
    replaceCurrent(std::move(changed));
  }
  host_.refillGrid();
  accept();
}

void TfrmEqRecEditor::btnCancelClick() {
  cancelled_ = true;
  accept();
}

void TfrmEqRecEditor::btnSearchClick() {
  if (const auto text = toRecordText(ui_->txtTestProcSearch->text())) {
    list_.search(*text);
  } else {
    list_.showNone();  // no title holds what cannot be written in one
  }
  refillSorted();
}

void TfrmEqRecEditor::btnClearSearchClick() {
  ui_->txtTestProcSearch->clear();
  list_.showAll();
  refillSorted();
}

void TfrmEqRecEditor::lstTestProcHeaderPressed(int column) {
  layout_.sort.press(column);
  refillSorted();
}

void TfrmEqRecEditor::reject() {
  btnCancelClick();
}

void TfrmEqRecEditor::done(int result) {
  ini_.write("EQEDITOR", {{"HEIGHT", std::to_string(height())},
                          {"WIDTH", std::to_string(width())},
                          {"TOP", std::to_string(y())},
                          {"LEFT", std::to_string(x())}});
  QDialog::done(result);
}

/// A dialog selects what its first box holds, where one wrong key would wipe it out: typing goes on behind it instead.
void TfrmEqRecEditor::setVisible(bool visible) {
  QDialog::setVisible(visible);
  if (visible) ui_->txtControlNum->end(false);
}

/// The window system shows a window again, too, and what was typed in the meantime must not go.
void TfrmEqRecEditor::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) showRecord(noRecord);
}

/// Enter presses the button that has the focus, and none that has not.
void TfrmEqRecEditor::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  auto* button = qobject_cast<QPushButton*>(focusWidget());
  if (enter && button != nullptr && !event->isAutoRepeat()) {
    button->click();
  } else {
    QDialog::keyPressEvent(event);
  }
}
