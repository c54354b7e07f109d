#include "tools/simulatedFiles.h"

#include <utility>

namespace {

std::string folderOf(const std::string& path) {
  return std::filesystem::path(path).parent_path().string();
}

}  // namespace

TsimulatedDisk::TsimulatedDisk(const TfileMap& files) {
  for (const auto& [path, content] : files) {
    flushedNames_[path] = nodes_.size();
    nodes_.push_back({content, content});
  }
  names_ = flushedNames_;
}

std::set<TfileMap> TsimulatedDisk::afterPowerLoss() const {
  std::set<Tnames> survivors{flushedNames_};
  for (const Tchange& change : changes_) {
    for (Tnames names : std::set(survivors)) {
      apply(change, names);
      survivors.insert(std::move(names));
    }
  }
  std::set<TfileMap> result;
  for (const Tnames& names : survivors) addContents(names, names.begin(), {}, result);
  return result;
}

void TsimulatedDisk::addContents(const Tnames& names, Tnames::const_iterator next, TfileMap files,
                                 std::set<TfileMap>& result) const {
  if (next == names.end()) {
    result.insert(std::move(files));
    return;
  }
  const auto& [content, flushed] = nodes_[next->second];
  std::set<std::string> possible{flushed};
  if (content != flushed) possible.insert({"", content.substr(0, content.size() / 2), content});
  for (const std::string& survivor : possible) {
    files[next->first] = survivor;
    addContents(names, std::next(next), files, result);
  }
}

std::size_t TsimulatedDisk::create(const std::string& path) {
  if (!exists(path)) {
    nodes_.emplace_back();
    change({"", path, nodes_.size() - 1});
  }
  nodes_[node(path)].content.clear();
  return node(path);
}

void TsimulatedDisk::rename(const std::string& from, const std::string& to) {
  change({from, to, node(from)});
}

void TsimulatedDisk::remove(const std::string& path) {
  change({path, "", 0});
}

void TsimulatedDisk::flushFolder(const std::string& folder) {
  std::erase_if(changes_, [&](const Tchange& change) {
    const bool inFolder = folderOf(change.added + (change.added.empty() ? change.removed : "")) == folder;
    if (inFolder) apply(change, flushedNames_);
    return inFolder;
  });
}

void TsimulatedDisk::apply(const Tchange& change, Tnames& names) {
  names.erase(change.removed);
  if (!change.added.empty()) names[change.added] = change.node;
}

void TsimulatedDisk::change(const Tchange& change) {
  apply(change, names_);
  changes_.push_back(change);
}

class TsimulatedFiles::Twriter final : public TfileWriter {
 public:
  Twriter(TsimulatedFiles& files, std::size_t node) : files_(files), node_(node) {}

  bool write(std::string_view bytes) override {
    files_.disk_.append(node_, bytes);
    files_.remember();
    return true;
  }
  bool flush() override {
    if (!files_.isFlushLeftOut()) files_.disk_.flush(node_);
    files_.remember();
    return true;
  }
  bool close() override { return true; }

 private:
  TsimulatedFiles& files_;
  std::size_t node_;
};

TfileSystem::TreadResult TsimulatedFiles::read(const std::filesystem::path& path, std::string& content) {
  if (!disk_.exists(path)) return TreadResult::notOpened;
  content = disk_.content(path);
  return TreadResult::done;
}

std::optional<TfileStamp> TsimulatedFiles::stamp(const std::filesystem::path& path) {
  if (!disk_.exists(path)) return std::nullopt;
  return TfileStamp{disk_.node(path), disk_.content(path).size(), 0};
}

std::unique_ptr<TfileWriter> TsimulatedFiles::create(const std::filesystem::path& path, const std::filesystem::path&) {
  const std::size_t node = disk_.create(path);
  remember();
  return std::make_unique<Twriter>(*this, node);
}

bool TsimulatedFiles::rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (!disk_.exists(from)) return false;
  disk_.rename(from, to);
  remember();
  return true;
}

bool TsimulatedFiles::remove(const std::filesystem::path& path) {
  if (!disk_.exists(path)) return true;
  disk_.remove(path);
  remember();
  return true;
}

bool TsimulatedFiles::flushFolder(const std::filesystem::path& folder) {
  if (!isFlushLeftOut()) disk_.flushFolder(folder);
  remember();
  return true;
}

std::filesystem::path TsimulatedFiles::resolve(const std::filesystem::path& path) {
  const auto link = links_.find(path);
  return link == links_.end() ? path : link->second;
}
