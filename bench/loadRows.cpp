#include <cstring>
#include <fstream>
#include <string_view>
#include <utility>

#include "bench/program.h"
#include "bench/rows.h"
#include "store/datastructs.h"

namespace {

using Tfields = std::vector<std::string>;

/// The text before the next `mark`, or all of it if there is none; `rest` becomes what follows.
std::string_view takeUntil(char mark, std::string_view& rest) {
  const void* found = rest.empty() ? nullptr : std::memchr(rest.data(), mark, rest.size());
  if (found == nullptr) return std::exchange(rest, {});
  const auto length = static_cast<std::size_t>(static_cast<const char*>(found) - rest.data());
  const std::string_view before = rest.substr(0, length);
  rest.remove_prefix(length + 1);
  return before;
}

/// Appends the texts between quotes in a line, and what follows the last comma: a number, in the data file.
void splitLine(std::string_view line, Tfields& fields) {
  while (!line.empty()) {
    const std::string_view separator = takeUntil('"', line);
    if (!line.empty()) {
      fields.emplace_back(takeUntil('"', line));
    } else if (separator.size() > 1) {
      fields.emplace_back(separator.substr(1));
    }
  }
}

/// The minimum that a load must do: read both files, find lines and fields, and copy each field. Checks nothing.
void splitFiles(const TbenchFolders& folders, Tfields& fields) {
  for (const auto& path : {folders.dataFile(), folders.infoFile()}) {
    const std::string content = contentOf(path);
    std::string_view rest = content;
    while (!rest.empty()) splitLine(takeUntil('\n', rest), fields);
  }
}

double measureLoad(const TbenchFolders& folders) {
  TequipRecTable records;  // freeing it is not measured
  return millisecondsOf([&] { records = fullTable(folders); });
}

double measureFloor(const TbenchFolders& folders) {
  constexpr std::size_t fieldsPerRecord = 2 + fieldCount;
  Tfields fields;
  const double milliseconds = millisecondsOf([&] { splitFiles(folders, fields); });
  require(fields.size() == fieldsPerRecord * equipRecLimit, "the minimum load did not find each field");
  return milliseconds;
}

constexpr const char* importScript =
    ".bail on\n"
    "create table eq (control text, procedure text);\n"
    "create table eqinfo (control text, description text, manufacturer text, model text, custom1 text, custom2 text, "
    "custom3 text);\n"
    ".mode csv\n";

constexpr const char* countScript = "select count(procedure) + (select count(custom3) from eqinfo) from eq;\n";

void writeScript(const TbenchFolders& folders, const std::filesystem::path& path, const char* atEnd) {
  std::ofstream script(path);
  script << importScript << ".import " << folders.dataFile() << " eq\n"
         << ".import " << folders.infoFile() << " eqinfo\n"
         << atEnd;
}

double runScript(const std::filesystem::path& script, const std::filesystem::path& output) {
  return runProgram({"sqlite3", "-batch", "-init", "/dev/null", ":memory:"}, script, output);
}

/// Imports both files into tables of an in-memory database, with one command each.
Tsides prepareDatabase(const TbenchFolders& folders) {
  const auto script = folders.scratch / "import.sql";
  const auto counting = folders.scratch / "count.sql";
  const auto counts = folders.scratch / "counts";
  writeScript(folders, script, "");
  writeScript(folders, counting, countScript);
  runScript(counting, counts);
  require(std::stoul(contentOf(counts)) == 2 * equipRecLimit, "the database did not import each row");
  return {[folders] { return measureLoad(folders); }, [script] { return runScript(script, "/dev/null"); }};
}

Tsides prepareFloor(const TbenchFolders& folders) {
  return {[folders] { return measureLoad(folders); }, [folders] { return measureFloor(folders); }};
}

}  // namespace

std::vector<Trow> loadRows(const TbenchFolders& folders) {
  return {{"load-floor", "ms", 3.5, 31, [folders] { return prepareFloor(folders); }},
          {"load-sqlite", "ms", 0.333, 15, [folders] { return prepareDatabase(folders); }}};
}
