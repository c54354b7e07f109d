#pragma once

#include <filesystem>

/// What a viewer of compiled help is asked to show: the full path of `EquipmentRecord.chm` in the program's folder, in
/// the machine's own way of writing, followed by "::/EquipmentRecord.html". `programFolder` may be relative, hold ".."
/// and end with a separator or not.
std::filesystem::path helpTopic(const std::filesystem::path& programFolder);
