#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "support/lineFile.h"

namespace {

/// A file that is written through a window of memory: a system call a line would take most of the time of an export.
///
/// The room of each window is taken from the disk before it is used, so that a full disk cannot become a fault of
/// memory. A program that is killed leaves zero bytes behind the last line, fewer than a window has.
class TmappedLineFile final : public TlineFile {
 public:
  explicit TmappedLineFile(int file) : file_(file) {}
  TmappedLineFile(const TmappedLineFile&) = delete;
  TmappedLineFile& operator=(const TmappedLineFile&) = delete;

  ~TmappedLineFile() override {
    if (window_) {
      closeWindow();
      [[maybe_unused]] const int cut = ftruncate(file_, static_cast<off_t>(size_));
    }
    close(file_);
  }

  void write(std::string_view line) override {
    while (!line.empty() && (hasRoom() || openWindow())) {
      const std::size_t place = size_ % windowSize;
      const std::size_t count = std::min(line.size(), windowSize - place);
      std::memcpy(window_ + place, line.data(), count);
      line.remove_prefix(count);
      size_ += count;
    }
    writeDirectly(line);
  }

 private:
  static constexpr std::size_t windowSize = 262144;  // a multiple of the page size

  bool hasRoom() const { return window_ && size_ % windowSize != 0; }

  /// The next window, behind what is written. False, and none is tried again, where the file takes none.
  bool openWindow() {
    closeWindow();
    const auto begin = static_cast<off_t>(size_);
    if (!takesWindows_ || posix_fallocate(file_, begin, windowSize) != 0) return takesWindows_ = false;
    void* window = mmap(nullptr, windowSize, PROT_READ | PROT_WRITE, MAP_SHARED, file_, begin);
    if (window == MAP_FAILED) return takesWindows_ = false;
    window_ = static_cast<char*>(window);
    return true;
  }

  void closeWindow() {
    if (window_) munmap(window_, windowSize);
    window_ = nullptr;
  }

  /// For what is no file on a disk, or has no more room for a whole window.
  void writeDirectly(std::string_view line) {
    if (line.empty()) return;
    if (lseek(file_, static_cast<off_t>(size_), SEEK_SET) < 0) size_ = 0;  // a pipe or the like
    const auto count = ::write(file_, line.data(), line.size());
    if (count > 0) size_ += static_cast<std::size_t>(count);
  }

  int file_;
  char* window_ = nullptr;
  std::size_t size_ = 0;  ///< of what is written
  bool takesWindows_ = true;
};

}  // namespace

std::unique_ptr<TlineFile> TlineFile::create(const std::filesystem::path& path) {
  constexpr mode_t mode = 0666;
  const int file = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
  return file < 0 ? nullptr : std::make_unique<TmappedLineFile>(file);
}
