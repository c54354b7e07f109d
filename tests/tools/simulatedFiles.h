#pragma once

#include <QByteArrayList>
#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "support/fileSystem.h"

/// Contents by path. Paths are written with slashes on every system.
using TfileMap = std::map<std::string, std::string>;

/// A simulated disk. It knows which changes are durable (flushed) and which a loss of power may take back. A value
/// type.
///
/// A file written since its last flush keeps, after a loss of power, its flushed bytes and none, half or all of the new
/// ones. Each name created, renamed or removed since the last flush of its folder lasts or is lost independently; what
/// a renamed folder holds, together. A folder exists while it holds a file.
struct TsimulatedDisk {
  using Tnames = std::map<std::string, std::size_t>;
  struct Tnode {
    std::string content;
    std::string flushed;
    int writes = 0;
  };
  /// One name that changes; an empty name means none.
  struct Tmove {
    std::string removed;
    std::string added;
    std::size_t node = 0;
  };
  /// Moves that last or are lost together, and the folder whose flush makes them durable.
  struct Tchange {
    std::filesystem::path folder;
    std::vector<Tmove> moves;
  };

  explicit TsimulatedDisk(const TfileMap& files = {}) {
    for (const auto& [path, content] : files) {
      names[path] = nodes.size();
      nodes.push_back({content, content});
    }
    flushedNames = names;
  }

  static void apply(const Tchange& change, Tnames& names) {
    for (const Tmove& move : change.moves) {
      names.erase(move.removed);
      if (!move.added.empty()) names[move.added] = move.node;
    }
  }
  void change(const std::filesystem::path& path, const std::vector<Tmove>& moves) {
    changes.push_back({path.parent_path(), moves});
    apply(changes.back(), names);
  }
  /// Makes an empty file. Returns the number of its node.
  std::size_t create(const std::filesystem::path& path) {
    nodes.emplace_back();
    change(path, {{"", path.generic_string(), nodes.size() - 1}});
    return nodes.size() - 1;
  }
  void flushFolder(const std::filesystem::path& folder) {
    std::erase_if(changes, [&](const Tchange& change) {
      if (change.folder == folder) apply(change, flushedNames);
      return change.folder == folder;
    });
  }

  bool contains(const std::filesystem::path& path) const { return names.contains(path.generic_string()); }
  Tnode& nodeAt(const std::filesystem::path& path) { return nodes[names.at(path.generic_string())]; }
  /// The names of all files in a folder and below it.
  std::vector<std::string> below(const std::filesystem::path& folder) const {
    const std::string start = folder.generic_string() + '/';
    std::vector<std::string> found;
    for (const auto& [name, node] : names) {
      if (name.starts_with(start)) found.push_back(name);
    }
    return found;
  }
  const std::string& contentOf(const std::string& path) const { return nodes[names.at(path)].content; }

  /// All states that a loss of power may leave now.
  std::set<TfileMap> afterPowerLoss() const {
    std::set<Tnames> survivors{flushedNames};
    for (const Tchange& change : changes) {
      for (Tnames survivor : std::set(survivors)) {
        apply(change, survivor);
        survivors.insert(survivor);
      }
    }
    std::set<TfileMap> result;
    for (const Tnames& survivor : survivors) {
      for (const std::size_t halves : {0, 1, 2}) {
        TfileMap files;
        for (const auto& [path, number] : survivor) {
          const auto& [content, flushed, writes] = nodes[number];
          files[path] = content.substr(0, flushed.size() + (content.size() - flushed.size()) * halves / 2);
        }
        result.insert(files);
      }
    }
    return result;
  }

  std::vector<Tnode> nodes;
  Tnames names;                  ///< as seen by programs
  Tnames flushedNames;           ///< durable
  std::vector<Tchange> changes;  ///< since the flush
};

/// A file system on a simulated disk that keeps the state of the disk before and after each operation that may change
/// it. An operation that is told to fail does nothing. Its name is the verb, the file and a number: "write eq.dat 2" is
/// the second write. The random part of a temporary's name is left out.
class TsimulatedFiles final : public TfileSystem {
 public:
  using Tpath = std::filesystem::path;

  explicit TsimulatedFiles(const TsimulatedDisk& disk, std::map<Tpath, Tpath> links = {})
      : history{disk}, links_(std::move(links)) {}

  std::vector<TsimulatedDisk> history;
  QByteArrayList failing;      ///< the names of the operations to fail
  qsizetype firstFailing = 0;  ///< numbers of the operations to fail, counted from 1
  qsizetype lastFailing = 0;
  QByteArrayList operations;                                ///< all so far
  std::function<void(const QByteArray& operation)> before;  ///< is told each operation and its number
  std::set<Tpath> locked;                                   ///< files that somebody has locked; a test may add its own

  TreadResult read(const Tpath& path, std::string& content, std::uint64_t most) override {
    using enum TreadResult::Tend;
    if (const Toutcome opened = look("open", path); !opened) return {notOpened, opened.failure()};
    if (!disk().contains(path)) return {missing, {}};
    if (const Toutcome read = look("read", path); !read) return {readFailed, read.failure()};
    content = disk().nodeAt(path).content;
    if (content.size() > most) return {tooLarge, failureOf("read", path)};
    const Toutcome closed = look("closeRead", path);
    return closed ? TreadResult() : TreadResult{closeFailed, closed.failure()};
  }
  TstampResult stamp(const Tpath& path) override {
    using enum TstampResult::Tend;
    if (const Toutcome looked = look("stamp", path); !looked) return {unknown, {}, looked.failure()};
    if (!disk().contains(path)) return {absent, {}, {}};
    const auto& [content, flushed, writes] = disk().nodeAt(path);
    return {found, {1, disk().names.at(path.generic_string()), content.size(), writes}, {}};
  }
  Toutcome checkWritable(const Tpath& path) override { return look("checkWritable", path); }
  Toutcome create(const Tpath& path, const Tpath&, std::unique_ptr<TfileWriter>& writer) override {
    if (Toutcome created = run("create", path); !created) return created;
    if (disk().contains(path)) return failureOf("create", path);
    writer = std::make_unique<Twriter>(*this, path, disk().create(path));
    return {};
  }
  Toutcome append(const Tpath& path, std::unique_ptr<TfileWriter>& writer) override {
    if (Toutcome opened = look("append", path); !opened) return opened;
    if (!disk().contains(path)) return failureOf("append", path);
    writer = std::make_unique<Twriter>(*this, path, disk().names.at(path.generic_string()));
    return {};
  }
  TlockResult lock(const Tpath& path, bool create, const Tpath&, std::chrono::milliseconds) override {
    using enum TlockResult::Tend;
    if (const Toutcome opened = look("lock", path); !opened) return {unavailable, nullptr, opened.failure()};
    if (!disk().contains(path) && !create) return {absent, nullptr, {}};
    if (!disk().contains(path)) {
      history.push_back(disk());
      disk().create(path);
    }
    if (!locked.insert(path).second) return {busy, nullptr, {}};
    return {held, std::make_unique<Tlock>(*this, path), {}};
  }
  Toutcome rename(const Tpath& from, const Tpath& to) override {
    const std::vector<std::string> inside = disk().below(from);
    if (!disk().contains(from) && inside.empty()) return failureOf("rename", from);
    if (Toutcome renamed = run("rename", from); !renamed) return renamed;
    if (!disk().below(to).empty() || (!inside.empty() && disk().contains(to))) return failureOf("rename", from);
    std::vector<TsimulatedDisk::Tmove> moves;
    const auto move = [&](const std::string& name) {
      moves.push_back({name, to.generic_string() + name.substr(from.generic_string().size()), disk().names.at(name)});
    };
    if (inside.empty()) move(from.generic_string());
    for (const std::string& name : inside) move(name);
    disk().change(to, moves);
    return {};
  }
  Toutcome remove(const Tpath& path) override {
    if (Toutcome removed = run("remove", path); !removed) return removed;
    if (disk().contains(path)) disk().change(path, {{path.generic_string(), ""}});
    return {};
  }
  Toutcome list(const Tpath& folder, std::vector<Tpath>& names) override {
    names.clear();
    if (Toutcome listed = look("list", folder); !listed) return listed;
    std::set<Tpath> found;
    for (const Tpath path : disk().below(folder)) found.insert(*path.lexically_relative(folder).begin());
    names.assign(found.begin(), found.end());
    return {};
  }
  Toutcome makeFolder(const Tpath& folder) override { return look("makeFolder", folder); }
  Toutcome removeFolder(const Tpath& folder) override {
    if (Toutcome removed = look("removeFolder", folder); !removed) return removed;
    return disk().below(folder).empty() ? Toutcome() : failureOf("removeFolder", folder);
  }
  Toutcome flushFolder(const Tpath& folder) override {
    if (Toutcome flushed = run("flushFolder", folder); !flushed) return flushed;
    disk().flushFolder(folder);
    return {};
  }
  Tpath resolve(const Tpath& path) override { return links_.contains(path) ? links_.at(path) : path; }

 private:
  class Tlock final : public TfileLock {
   public:
    Tlock(TsimulatedFiles& files, Tpath path) : files_(files), path_(std::move(path)) {}
    Tlock(const Tlock&) = delete;
    Tlock& operator=(const Tlock&) = delete;
    ~Tlock() override { files_.locked.erase(path_); }

   private:
    TsimulatedFiles& files_;
    Tpath path_;
  };

  class Twriter final : public TfileWriter {
   public:
    Twriter(TsimulatedFiles& files, Tpath path, std::size_t node)
        : files_(files), path_(std::move(path)), node_(node) {}
    Toutcome write(std::string_view bytes) override {
      if (Toutcome written = files_.run("write", path_); !written) return written;
      files_.disk().nodes[node_].content += bytes;
      ++files_.disk().nodes[node_].writes;
      return {};
    }
    Toutcome flush() override {
      if (Toutcome done = files_.run("flush", path_); !done) return done;
      auto& [content, flushed, writes] = files_.disk().nodes[node_];
      flushed = content;
      return {};
    }
    Toutcome close() override { return files_.look("close", path_); }

   private:
    TsimulatedFiles& files_;
    Tpath path_;
    std::size_t node_;
  };

  TsimulatedDisk& disk() { return history.back(); }

  static Tfailure failureOf(const char* operation, const Tpath& path) {
    return {operation, path.generic_string(), "not possible"};
  }

  static std::string withoutRandomPart(std::string name) {
    constexpr std::size_t length = std::string_view("-0123456789abcdef").size();
    const std::size_t place = name.rfind(".new-");
    if (place != std::string::npos && name.size() == place + 4 + length) name.resize(place + 4);
    return name;
  }

  /// Counts an operation that may change the disk, and fails it if it is to fail.
  Toutcome run(const QByteArray& operation, const Tpath& path) {
    history.push_back(disk());
    return look(operation, path);
  }

  /// The same for an operation that changes nothing.
  Toutcome look(const QByteArray& operation, const Tpath& path) {
    const QByteArray name = operation + ' ' + withoutRandomPart(path.filename().string()).c_str();
    operations << name;
    const QByteArray numbered = name + ' ' + QByteArray::number(operations.count(name));
    if (before) before(numbered);
    const auto number = operations.size();
    const bool fails = (number >= firstFailing && number <= lastFailing) || failing.contains(numbered);
    return fails ? Toutcome({operation.toStdString(), path.generic_string(), "told to fail"}) : Toutcome();
  }

  std::map<Tpath, Tpath> links_;
};
