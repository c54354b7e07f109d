#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

/// A record's bytes (Windows-1252) as a Qt string. The five bytes that Windows-1252 leaves undefined become the control
/// characters of the same value, so that `toRecordText` gives every byte back.
QString fromRecordText(std::string_view bytes);

/// The bytes of a Qt string; nothing when it holds a character that Windows-1252 lacks.
std::optional<std::string> toRecordText(const QString& text);

/// The byte of a character; nothing when Windows-1252 lacks it.
std::optional<char> toRecordByte(char32_t character);

/// `withoutDoubleQuotes` for a Qt string, which may hold any characters.
QString withoutDoubleQuotes(QString text);
