#include "support/safeWrite.h"

#include <memory>

#include "support/fileSystem.h"

bool writeFlushed(TfileSystem& files, const std::filesystem::path& path, const std::filesystem::path& like,
                  std::string_view content) {
  const auto writer = files.create(path, like);
  return writer && writer->write(content) && writer->flush() && writer->close();
}

bool replaceFile(TfileSystem& files, const std::filesystem::path& path, std::string_view content) {
  const auto target = files.resolve(path);
  auto temporary = target;
  temporary += ".new";
  if (!files.isWritable(target)) return false;
  if (writeFlushed(files, temporary, target, content) && files.rename(temporary, target)) {
    return files.flushFolder(target.parent_path());
  }
  files.remove(temporary);
  return false;
}
