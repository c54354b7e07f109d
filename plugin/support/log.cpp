#include "support/log.h"

#include <exception>
#include <memory>
#include <mutex>
#include <spdlog/logger.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/base_sink.h>
#include <string>
#include <utility>

#include "support/appendFile.h"
#include "support/errors.h"
#include "support/paths.h"

namespace {

constexpr std::uint64_t mostBytes = 1'000'000;
constexpr std::uint64_t reserve = 10'000;  // for the last line, which each of several programs may add
constexpr std::size_t longestText = 2000;

/// Appends each line to the file with a single write.
class TlogSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
 public:
  explicit TlogSink(std::filesystem::path path) : path_(std::move(path)) {}

 private:
  void sink_it_(const spdlog::details::log_msg& message) override {
    const TappendResult result = append(message, mostBytes - reserve);
    if (result == TappendResult::full && !wasFull_) {
      spdlog::details::log_msg last = message;
      last.payload = "The log is full. Further lines are lost until it is opened again.";
      append(last, mostBytes);
    }
    wasFull_ = result == TappendResult::full;
  }
  void flush_() override {}

  TappendResult append(const spdlog::details::log_msg& message, std::uint64_t most) {
    spdlog::memory_buf_t line;
    formatter_->format(message, line);
    return appendToFile(path_, {line.data(), line.size()}, most);
  }

  std::filesystem::path path_;
  bool wasFull_ = false;
};

std::mutex mutex;
std::unique_ptr<spdlog::logger> logger;  // null while no log is open

bool isControl(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 || code == 0x7F;
}

/// The text as it stands in one line.
std::string lineText(std::string_view text) {
  const bool isCut = text.size() > longestText;
  std::string line(text.substr(0, longestText));
  std::replace_if(line.begin(), line.end(), isControl, ' ');
  return isCut ? line + "..." : line;
}

void addLine(spdlog::level::level_enum level, std::string_view text) noexcept try {
  const std::lock_guard lock(mutex);
  if (!logger) return;
  const std::string line = lineText(text);
  logger->log(level, spdlog::string_view_t(line.data(), line.size()));
} catch (...) {  // a log disturbs nobody
}

std::string describe(const std::exception_ptr& exception) try {
  if (!exception) return "no exception";
  std::rethrow_exception(exception);
} catch (const TEqRecException& error) {
  return std::string(error.what()) + " (" + error.fileName() + ':' + std::to_string(error.line()) + ')';
} catch (const std::exception& error) {
  return error.what();
} catch (...) {
  return "an exception of unknown type";
}

}  // namespace

void openLog(const std::filesystem::path& folder) noexcept try {
  const std::lock_guard lock(mutex);
  logger.reset();
  const auto path = findPath(folder, "EquipmentRecord.log");
  turnFileOver(path, findPath(folder, "EquipmentRecord.old.log"), mostBytes / 2);
  logger = std::make_unique<spdlog::logger>(std::string(), std::make_shared<TlogSink>(path));
  logger->set_pattern("%Y-%m-%d %H:%M:%S.%e [%P] %l: %v");
  logger->set_error_handler([](const std::string&) {});  // instead of a line on the standard error stream
} catch (...) {                                          // a log disturbs nobody
}

void closeLog() noexcept try {
  const std::lock_guard lock(mutex);
  logger.reset();
} catch (...) {  // a log disturbs nobody
}

void logInfo(std::string_view text) noexcept {
  addLine(spdlog::level::info, text);
}

void logFailure(std::string_view text) noexcept {
  addLine(spdlog::level::err, text);
}

void logCaught(std::string_view where) noexcept try {
  logFailure(std::string(where) + ": " + describe(std::current_exception()));
} catch (...) {
  logFailure(where);
}
