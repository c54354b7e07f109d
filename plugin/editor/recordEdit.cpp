#include "editor/recordEdit.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>

#include "editor/recordInput.h"
#include "support/windows1252.h"

TrecordEdit::TrecordEdit(QWidget* parent) : QLineEdit(parent) {}

void TrecordEdit::setRecordText(std::string_view bytes) {
  setText(fromRecordText(bytes));
  setCursorPosition(0);  // shows the beginning of a long text
}

std::string TrecordEdit::recordText() const {
  return recordBytes(text());
}

void TrecordEdit::paste() {
  enter(QGuiApplication::clipboard()->text());
}

void TrecordEdit::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) {
    paste();
    return;
  }
  const QString rest = leftOutInput(*event, room());
  QKeyEvent cleaned = cleanedKey(*event, maxLength());
  QLineEdit::keyPressEvent(&cleaned);
  event->setAccepted(cleaned.isAccepted());
  if (!rest.isEmpty()) emit leftOut(rest);
}

void TrecordEdit::inputMethodEvent(QInputMethodEvent* event) {
  TcleanedCommit cleaned(*event, maxLength());
  QLineEdit::inputMethodEvent(&cleaned);
  event->setAccepted(cleaned.isAccepted());
}

/// On systems with a selection clipboard, the middle button pastes from it.
void TrecordEdit::mouseReleaseEvent(QMouseEvent* event) {
  const QClipboard* clipboard = QGuiApplication::clipboard();
  if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
    deselect();
    enter(clipboard->text(QClipboard::Selection));
  } else {
    QLineEdit::mouseReleaseEvent(event);
  }
}

void TrecordEdit::dropEvent(QDropEvent* event) {
  QMimeData text;
  text.setText(cleanedInput(event->mimeData()->text(), maxLength()));
  QDropEvent cleaned(event->position(), event->possibleActions(), &text, event->buttons(), event->modifiers());
  cleaned.setDropAction(event->dropAction());
  QLineEdit::dropEvent(&cleaned);
  event->setDropAction(cleaned.dropAction());
  event->setAccepted(cleaned.isAccepted());
}

qsizetype TrecordEdit::room() const {
  return maxLength() - text().size() + selectedText().size();
}

void TrecordEdit::enter(const QString& text) {
  const QString cleaned = cleanedInput(text, maxLength());
  if (cleaned.isEmpty()) return;
  const QString rest = leftOutInput(text, room());
  endUndoStep();
  insert(cleaned);
  endUndoStep();
  if (!rest.isEmpty()) emit leftOut(rest);
}

/// Moves the cursor away and back: one undo step reaches back to the last move of the cursor.
void TrecordEdit::endUndoStep() {
  if (hasSelectedText()) return;
  const int position = cursorPosition();
  setCursorPosition(position > 0 ? position - 1 : 1);
  setCursorPosition(position);
}
