#pragma once

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QString>
#include <string>

/// A typed or pasted text as it enters a record field that has room for `room` more characters.
///
/// A letter and its combining marks become one character where there is one. Control characters and characters that
/// Windows-1252 lacks are left out; but a tab becomes a blank, and so does each run of line breaks. A double quote
/// becomes the typographic closing quote (see `withoutDoubleQuotes`).
QString cleanedInput(const QString& text, qsizetype room);

/// What of such a text finds no room any more.
QString leftOutInput(const QString& text, qsizetype room);
/// As above, of the text that a key press types.
QString leftOutInput(const QKeyEvent& event, qsizetype room);

/// The key press with its text cleaned. A key that types nothing stays as it is.
QKeyEvent cleanedKey(const QKeyEvent& event, qsizetype room);

/// An input method's event with its committed text cleaned.
class TcleanedCommit : public QInputMethodEvent {
 public:
  TcleanedCommit(const QInputMethodEvent& event, qsizetype room);
};

/// The bytes (Windows-1252) of the text in a record field's box, without characters that a record cannot hold.
std::string recordBytes(const QString& text);
