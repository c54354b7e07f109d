#pragma once

#include <filesystem>

/// The topic to show in a viewer of compiled help: the full native path of `EquipmentRecord.chm` in the program's
/// folder, followed by "::/EquipmentRecord.html". `programFolder` may be relative, contain ".." and end with a
/// separator or not.
std::filesystem::path helpTopic(const std::filesystem::path& programFolder);
