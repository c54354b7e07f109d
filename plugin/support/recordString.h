#pragma once

#include <QString>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// A record's bytes as text for the screen: Windows-1252, and the five bytes that it leaves undefined as the control
/// characters of the same value, so that every byte comes back from `toRecordText`.
QString fromRecordText(std::string_view bytes);

/// The bytes of a text from the screen; nothing where it holds a character that Windows-1252 lacks.
std::optional<std::string> toRecordText(const QString& text);

/// A folder or file name of Qt's as a path.
std::filesystem::path toPath(const QString& name);
