#include <QApplication>
#include <QKeySequence>
#include <QPushButton>
#include <QShortcut>

#include "editor/editorHost.h"
#include "editor/eqEditForm.h"
#include "support/plainToolTip.h"
#include "support/recordText.h"
#include "ui_eqEditForm.h"

// What the editor remarks beside its boxes, and its keys.

void TfrmEqRecEditor::setUpRemarks() {
  const auto forgetLeftOut = [this] {
    leftOut_.clear();
    showRemark();
  };
  for (const TrecordEdit* edit : findChildren<TrecordEdit*>()) {
    connect(edit, &QLineEdit::textChanged, this, forgetLeftOut);
    connect(edit, &TrecordEdit::leftOut, this, &TfrmEqRecEditor::addLeftOut);
  }
  for (const TrecordMemo* memo : findChildren<TrecordMemo*>()) {
    connect(memo, &QPlainTextEdit::textChanged, this, forgetLeftOut);
    connect(memo, &TrecordMemo::leftOut, this, &TfrmEqRecEditor::addLeftOut);
  }
  const std::initializer_list<std::pair<QKeyCombination, QPushButton*>> keys = {{Qt::ALT | Qt::Key_Left, ui_->btnPrev},
                                                                                {Qt::ALT | Qt::Key_Right, ui_->btnNext},
                                                                                {Qt::CTRL | Qt::Key_Return, ui_->btnOk},
                                                                                {Qt::CTRL | Qt::Key_Enter, ui_->btnOk}};
  for (const auto& [key, button] : keys) {
    connect(new QShortcut(key, this), &QShortcut::activated, button, &QPushButton::click);
  }
}

/// A scanner types one character at a time; one beep is enough for all that it types in vain.
void TfrmEqRecEditor::addLeftOut(const QString& text) {
  if (leftOut_.isEmpty()) QApplication::beep();
  leftOut_ += text;
  showRemark();
}

void TfrmEqRecEditor::showRemark() {
  const auto other = otherWithControlNum();
  QString remark = other ? QStringLiteral("Record %1 has this control number, too").arg(*other + 1) : QString();
  ui_->lblControlNumUsed->setText(other ? QStringLiteral("in use") : QString());
  ui_->lblControlNumUsed->setToolTip(remark);
  if (!leftOut_.isEmpty()) remark = QStringLiteral("Left out, the box is full: %1").arg(leftOut_);
  ui_->lblRemark->setText(remark);
  ui_->lblRemark->setToolTip(plainToolTip(remark));
}

std::optional<TrecordIndex> TfrmEqRecEditor::otherWithControlNum() const {
  const std::string text = ui_->txtControlNum->recordText();
  const std::string_view controlNum = trimmedText(text);
  if (controlNum.empty() || currentRecord() == nullptr) return std::nullopt;
  for (TrecordIndex i = 0; i < host_.records().count(); ++i) {
    const bool isOther = static_cast<std::int32_t>(i) != currentIndex_;
    if (isOther && trimmedText(host_.records().at(i).text(fieldControlNum)) == controlNum) return i;
  }
  return std::nullopt;
}

/// Previous and Next store the texts only, so a chosen procedure could be taken for a stored one.
void TfrmEqRecEditor::showProcedureMark() {
  const TequipRec* record = currentRecord();
  const auto number = markedTestProc();
  const bool isOnlyChosen = record != nullptr && number && *number != record->testProc();
  ui_->lblProcedureMark->setText(isOnlyChosen ? QStringLiteral("chosen, not taken until OK") : QString());
}
