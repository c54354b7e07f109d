#include "editor/recordMemo.h"

#include <QMimeData>
#include <memory>

#include "editor/recordInput.h"
#include "support/windows1252.h"

namespace {

constexpr int fewestLines = 2;
constexpr int fewestCharacters = 20;

// Shown for line breaks, which a document would turn into paragraph ends, losing which of the two it was.
constexpr QChar lineFeedSymbol(0x240A);
constexpr QChar carriageReturnSymbol(0x240D);

QString withSymbols(QString text) {
  return text.replace(u'\n', lineFeedSymbol).replace(u'\r', carriageReturnSymbol);
}

QString withoutSymbols(QString text) {
  return text.replace(lineFeedSymbol, u'\n').replace(carriageReturnSymbol, u'\r');
}

}  // namespace

TrecordMemo::TrecordMemo(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
}

void TrecordMemo::setRecordText(std::string_view bytes) {
  setPlainText(withSymbols(fromRecordText(bytes)));
}

/// Uses the raw text, because the plain text has blanks in place of no-break spaces.
std::string TrecordMemo::recordText() const {
  return recordBytes(withoutSymbols(document()->toRawText()));
}

QSize TrecordMemo::minimumSizeHint() const {
  const int border = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
  const QFontMetrics metrics = fontMetrics();
  return {fewestCharacters * metrics.averageCharWidth() + border, fewestLines * metrics.lineSpacing() + border};
}

void TrecordMemo::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return;
  const QString rest = leftOutInput(*event, room());
  QKeyEvent cleaned = cleanedKey(*event, room());
  QPlainTextEdit::keyPressEvent(&cleaned);
  event->setAccepted(cleaned.isAccepted());
  if (!rest.isEmpty()) emit leftOut(rest);
}

void TrecordMemo::inputMethodEvent(QInputMethodEvent* event) {
  TcleanedCommit cleaned(*event, room() + event->replacementLength());
  QPlainTextEdit::inputMethodEvent(&cleaned);
  event->setAccepted(cleaned.isAccepted());
}

void TrecordMemo::insertFromMimeData(const QMimeData* source) {
  QMimeData cleaned;
  const QString rest = leftOutInput(source->text(), room());
  cleaned.setText(cleanedInput(source->text(), room()));
  if (!cleaned.text().isEmpty()) QPlainTextEdit::insertFromMimeData(&cleaned);
  if (!rest.isEmpty()) emit leftOut(rest);
}

QMimeData* TrecordMemo::createMimeDataFromSelection() const {
  auto copied = std::make_unique<QMimeData>();
  copied->setText(withoutSymbols(textCursor().selectedText()));
  return copied.release();
}

qsizetype TrecordMemo::room() const {
  const qsizetype kept = document()->toRawText().size() - textCursor().selectedText().size();
  return maxLength_ - kept;
}
