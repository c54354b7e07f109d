#pragma once

#include <filesystem>
#include <string>

/// The topic to show in a viewer of compiled help: the full native path of `EquipmentRecord.chm` in the program's
/// folder, followed by "::/" and `section`, such as "editor.html#fields". `programFolder` may be relative, contain ".."
/// and end with a separator or not.
std::filesystem::path helpTopic(const std::filesystem::path& programFolder, const std::string& section);
