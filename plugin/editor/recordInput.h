#pragma once

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QString>
#include <string>

/// What of a typed or pasted text may enter a record field that has room for `room` more characters.
///
/// Characters that Windows-1252 lacks, and the zero character, are left out. A line break becomes one blank. The double
/// quote, which would end the field in the record files, becomes the typographic closing quote.
QString cleanedInput(const QString& text, qsizetype room);

/// The key press with its text cleaned. Keys that type nothing stay as they are.
QKeyEvent cleanedKey(const QKeyEvent& event, qsizetype room);

/// An input method's event with the text that it enters cleaned.
class TcleanedCommit : public QInputMethodEvent {
 public:
  TcleanedCommit(const QInputMethodEvent& event, qsizetype room);
};

/// The bytes of a record field's box (Windows-1252), without anything that a record cannot hold.
std::string recordBytes(const QString& text);
