#include "editor/recordInput.h"

#include <algorithm>

#include "support/windows1252.h"

namespace {

bool isLineBreak(QChar character) {
  return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
         character == QChar::ParagraphSeparator;
}

bool fitsRecord(QChar character) {
  return !character.isNull() && toRecordText(QString(character)).has_value();
}

/// What a character becomes in a field; zero: it is left out.
QChar enteredCharacter(QChar character) {
  if (character == u'\t' || isLineBreak(character)) return u' ';
  return fitsRecord(character) && character.category() != QChar::Other_Control ? character : QChar();
}

/// Whether a key's text is typed text: keys such as Backspace have a control character as their text.
bool isTyped(const QString& text) {
  return !text.isEmpty() && text.front() >= u' ' && text.front() != QChar(0x7F);
}

}  // namespace

QString cleanedInput(const QString& text, qsizetype room) {
  QString cleaned;
  bool isInBreak = false;
  for (const QChar character : withoutDoubleQuotes(text.normalized(QString::NormalizationForm_C))) {
    if (cleaned.size() >= room) break;
    const QChar entered = enteredCharacter(character);
    const bool isBreak = isLineBreak(character);
    if (entered.isNull() || (isBreak && isInBreak)) continue;
    cleaned += entered;
    isInBreak = isBreak;
  }
  return cleaned;
}

QString leftOutInput(const QString& text, qsizetype room) {
  return cleanedInput(text, text.size()).mid(std::max<qsizetype>(room, 0));
}

QString leftOutInput(const QKeyEvent& event, qsizetype room) {
  return isTyped(event.text()) ? leftOutInput(event.text(), room) : QString();
}

QKeyEvent cleanedKey(const QKeyEvent& event, qsizetype room) {
  const QString text = isTyped(event.text()) ? cleanedInput(event.text(), room) : event.text();
  return {event.type(), event.key(),          event.modifiers(),
          text,         event.isAutoRepeat(), static_cast<quint16>(event.count())};
}

TcleanedCommit::TcleanedCommit(const QInputMethodEvent& event, qsizetype room)
    : QInputMethodEvent(event.preeditString(), event.attributes()) {
  setCommitString(cleanedInput(event.commitString(), room), event.replacementStart(), event.replacementLength());
}

std::string recordBytes(const QString& text) {
  std::string bytes;
  for (const QChar character : text) {
    if (fitsRecord(character)) bytes += *toRecordText(QString(character));
  }
  return bytes;
}
