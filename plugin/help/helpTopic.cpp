#include "help/helpTopic.h"

#include <system_error>

std::filesystem::path helpTopic(const std::filesystem::path& programFolder, const std::string& section) {
  std::error_code noCurrentFolder;  // then the path is used as given
  const auto given = programFolder / "EquipmentRecord.chm";
  const auto full = std::filesystem::absolute(given, noCurrentFolder);
  auto topic = (noCurrentFolder ? given : full).lexically_normal().make_preferred();
  topic += "::/" + section;
  return topic;
}
