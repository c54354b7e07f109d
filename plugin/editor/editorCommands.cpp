// The record editor's buttons and keys, and how it opens and closes.

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
  store(markedTestProc());
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
    list_.showNone();  // no title can contain such a character
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

/// A dialog selects the text in its first box when it opens, and one wrong key would erase it. The cursor stands at the
/// end instead.
void TfrmEqRecEditor::setVisible(bool visible) {
  QDialog::setVisible(visible);
  if (visible) ui_->txtControlNum->end(false);
}

/// Does not reload the record when the window system shows the window again: the user's input must stay.
void TfrmEqRecEditor::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) showRecord(noRecord);
}

/// Enter presses the focused button, and no other.
void TfrmEqRecEditor::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  auto* button = qobject_cast<QPushButton*>(focusWidget());
  if (enter && button != nullptr && !event->isAutoRepeat()) {
    button->click();
  } else {
    QDialog::keyPressEvent(event);
  }
}
