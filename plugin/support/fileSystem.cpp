#include "support/fileSystem.h"

#include "support/log.h"
#include "support/paths.h"

Toutcome writeFlushed(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& like,
                      std::string_view content) {
  std::unique_ptr<TfileWriter> writer;
  Toutcome outcome = files.create(path, like, writer);
  if (outcome) outcome = writer->write(content);
  if (outcome) outcome = writer->flush();
  if (outcome) outcome = writer->close();
  return outcome;
}

Toutcome replaceFile(TfileSystem& files, const std::filesystem::path& path, std::string_view content) {
  const auto target = files.resolve(path);
  auto temporary = target;
  temporary += ".new";
  Toutcome outcome = files.checkWritable(target);
  if (!outcome) return outcome;
  outcome = writeFlushed(files, temporary, target, content);
  if (outcome) outcome = files.rename(temporary, target);
  if (outcome) return files.flushFolder(target.parent_path());
  files.remove(temporary);
  return outcome;
}

Tfailure loggedFailure(const char* operation, const std::filesystem::path& path, int error) {
  Tfailure failure{operation, pathText(path), systemErrorText(error)};
  logFailure(failure.text());
  return failure;
}
