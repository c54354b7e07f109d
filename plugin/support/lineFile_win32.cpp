#include <fstream>

#include "support/lineFile.h"

namespace {

class TflushedLineFile final : public TlineFile {
 public:
  explicit TflushedLineFile(const std::filesystem::path& path) : file_(path) {}  // text mode
  bool isOpen() const { return file_.is_open(); }
  void write(std::string_view line) override { file_ << line << std::flush; }

 private:
  std::ofstream file_;
};

}  // namespace

std::unique_ptr<TlineFile> TlineFile::create(const std::filesystem::path& path) {
  auto file = std::make_unique<TflushedLineFile>(path);
  if (!file->isOpen()) return nullptr;
  return file;
}
