#include <string>

#include "fuzz/fuzzTarget.h"
#include "support/checksum.h"
#include "support/fileSystem.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

using Tpath = std::filesystem::path;
using Twriter = std::unique_ptr<TfileWriter>;

/// A file system with a single read-only file.
class ToneFile final : public TfileSystem {
 public:
  explicit ToneFile(std::string content) : content_(std::move(content)) {}

  TreadResult read(const Tpath& /*path*/, std::string& content, std::uint64_t /*most*/) override {
    content = content_;
    return {};
  }
  TstampResult stamp(const Tpath& /*path*/) override { return {TstampResult::Tend::found, {}, {}}; }
  Toutcome checkWritable(const Tpath& /*path*/) override { return readOnly(); }
  Toutcome create(const Tpath& /*path*/, const Tpath& /*like*/, Twriter& /*writer*/) override { return readOnly(); }
  Toutcome append(const Tpath& /*path*/, Twriter& /*writer*/) override { return readOnly(); }
  TlockResult lock(const Tpath& /*path*/, bool /*create*/, const Tpath& /*like*/,
                   std::chrono::milliseconds /*wait*/) override {
    return {};
  }
  Toutcome rename(const Tpath& /*from*/, const Tpath& /*to*/) override { return readOnly(); }
  Toutcome remove(const Tpath& /*path*/) override { return readOnly(); }
  Toutcome list(const Tpath& /*folder*/, std::vector<Tpath>& /*names*/) override { return readOnly(); }
  Toutcome makeFolder(const Tpath& /*folder*/) override { return readOnly(); }
  Toutcome removeFolder(const Tpath& /*folder*/) override { return readOnly(); }
  Toutcome flushFolder(const Tpath& /*folder*/) override { return readOnly(); }
  Tpath resolve(const Tpath& path) override { return path; }

 private:
  static Toutcome readOnly() { return Tfailure{"write", "file", "read-only"}; }

  std::string content_;
};

/// The file with a correct checksum, so that the code after that check is reached.
std::string withChecksum(std::string content) {
  constexpr std::size_t headerSize = 16;
  constexpr std::size_t place = 8;
  if (content.size() < headerSize) return content;
  const std::uint32_t sum = crc32Of(std::string_view(content).substr(headerSize));
  for (std::size_t i = 0; i < sizeof sum; ++i) content[place + i] = static_cast<char>(sum >> (8 * i));
  return content;
}

void load(std::string content) {
  ToneFile file(std::move(content));
  TtestProcTable table;
  const auto result = loadTestProcTable(file, ".", table);  // any existing path; the content is ours
  mustHold(result != TtestProcLoad::missing && (result == TtestProcLoad::loaded || table.count() == 0));
  for (unsigned number = 0; number <= maxTestProcNumber + 1; ++number) {
    const std::string_view title = table.title(number);
    mustHold(title.size() <= 41 && title.find('\0') == std::string_view::npos);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string content(textOf(data, size));
  load(content);
  load(withChecksum(content));
  return 0;
}
