#include "tools/faultyFiles.h"

#include <utility>

namespace {

class TfaultyWriter final : public TfileWriter {
 public:
  TfaultyWriter(TfaultyFiles& files, std::filesystem::path path, std::unique_ptr<TfileWriter> writer)
      : files_(files), path_(std::move(path)), writer_(std::move(writer)) {}

  bool write(std::string_view bytes) override { return !files_.fails("write", path_) && writer_->write(bytes); }
  bool flush() override { return !files_.fails("flush", path_) && writer_->flush(); }
  bool close() override {
    const bool failing = files_.fails("close", path_);
    return writer_->close() && !failing;
  }

 private:
  TfaultyFiles& files_;
  std::filesystem::path path_;
  std::unique_ptr<TfileWriter> writer_;
};

}  // namespace

bool TfaultyFiles::fails(const char* operation, const std::filesystem::path& path) {
  const QByteArray name = QByteArray(operation) + ' ' + path.filename().string().c_str();
  const QByteArray numbered = name + ' ' + QByteArray::number(++occurrences_[name]);
  ++count_;
  return (count_ >= first_ && count_ <= last_) || failing_.contains(numbered);
}

TfileSystem::TreadResult TfaultyFiles::read(const std::filesystem::path& path, std::string& content) {
  if (fails("read", path)) return TreadResult::readFailed;
  const TreadResult result = files_.read(path, content);
  return result == TreadResult::done && fails("closeRead", path) ? TreadResult::closeFailed : result;
}

bool TfaultyFiles::isWritable(const std::filesystem::path& path) {
  return !fails("isWritable", path) && files_.isWritable(path);
}

std::unique_ptr<TfileWriter> TfaultyFiles::create(const std::filesystem::path& path,
                                                  const std::filesystem::path& like) {
  auto writer = fails("create", path) ? nullptr : files_.create(path, like);
  return writer ? std::make_unique<TfaultyWriter>(*this, path, std::move(writer)) : nullptr;
}

bool TfaultyFiles::rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  return !fails("rename", from) && files_.rename(from, to);
}

bool TfaultyFiles::remove(const std::filesystem::path& path) {
  return !fails("remove", path) && files_.remove(path);
}

bool TfaultyFiles::flushFolder(const std::filesystem::path& folder) {
  return !fails("flushFolder", folder) && files_.flushFolder(folder);
}
