#pragma once

#include <QByteArrayList>
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
/// A file written since its last flush keeps, after a loss of power, its flushed bytes or none, half or all of the new
/// ones. Each name created, renamed or removed since the last flush of its folder lasts or is lost independently.
struct TsimulatedDisk {
  using Tnames = std::map<std::string, std::size_t>;
  struct Tnode {
    std::string content;
    std::string flushed;
  };
  /// One change of names; an empty name means none.
  struct Tchange {
    std::string removed;
    std::string added;
    std::size_t node = 0;
  };

  explicit TsimulatedDisk(const TfileMap& files = {}) {
    for (const auto& [path, content] : files) {
      names[path] = nodes.size();
      nodes.push_back({content, content});
    }
    flushedNames = names;
  }

  static void apply(const Tchange& change, Tnames& names) {
    names.erase(change.removed);
    if (!change.added.empty()) names[change.added] = change.node;
  }
  void change(const Tchange& change) {
    apply(change, names);
    changes.push_back(change);
  }
  void flushFolder(const std::filesystem::path& folder) {
    std::erase_if(changes, [&](const Tchange& change) {
      const std::filesystem::path changed = change.added.empty() ? change.removed : change.added;
      if (changed.parent_path() == folder) apply(change, flushedNames);
      return changed.parent_path() == folder;
    });
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
      for (const std::size_t halves : {0, 1, 2, 3}) {
        TfileMap files;
        for (const auto& [path, number] : survivor) {
          const auto& [content, flushed] = nodes[number];
          files[path] = halves == 3 || content == flushed ? flushed : content.substr(0, content.size() * halves / 2);
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

/// A file system on a simulated disk that keeps the state of the disk before and after each operation. An operation
/// that is told to fail does nothing. Its name is the verb, the file and a number: "write eq.dat 2" is the second
/// write.
class TsimulatedFiles final : public TfileSystem {
 public:
  using Tpath = std::filesystem::path;

  explicit TsimulatedFiles(const TsimulatedDisk& disk, std::map<Tpath, Tpath> links = {})
      : history{disk}, links_(std::move(links)) {}

  std::vector<TsimulatedDisk> history;
  QByteArrayList failing;      ///< the names of the operations to fail
  qsizetype firstFailing = 0;  ///< numbers of the operations to fail, counted from 1
  qsizetype lastFailing = 0;
  int leftOutFlush = 0;       ///< number of the flush, of a file or a folder, that does nothing and reports success
  QByteArrayList operations;  ///< all so far

  TreadResult read(const Tpath& path, std::string& content) override {
    using enum TreadResult::Tend;
    if (!stamp(path)) return {missing, {}};
    if (const Toutcome read = run("read", path); !read) return {readFailed, read.failure()};
    content = disk().contentOf(path.generic_string());
    const Toutcome closed = run("closeRead", path);
    return closed ? TreadResult() : TreadResult{closeFailed, closed.failure()};
  }
  std::optional<TfileStamp> stamp(const Tpath& path) override {
    return disk().names.contains(path.generic_string())
               ? std::optional(TfileStamp{disk().names.at(path.generic_string())})
               : std::nullopt;
  }
  Toutcome checkWritable(const Tpath& path) override { return run("checkWritable", path); }
  Toutcome create(const Tpath& path, const Tpath&, std::unique_ptr<TfileWriter>& writer) override {
    if (Toutcome created = run("create", path); !created) return created;
    if (!stamp(path)) disk().change({"", path.generic_string(), disk().nodes.size()});
    const std::size_t node = disk().names[path.generic_string()];
    disk().nodes.resize(std::max(disk().nodes.size(), node + 1));
    disk().nodes[node].content.clear();
    writer = std::make_unique<Twriter>(*this, path, node);
    return {};
  }
  Toutcome rename(const Tpath& from, const Tpath& to) override {
    if (!stamp(from)) return Tfailure{"rename", from.generic_string(), "missing"};
    if (Toutcome renamed = run("rename", from); !renamed) return renamed;
    disk().change({from.generic_string(), to.generic_string(), disk().names[from.generic_string()]});
    return {};
  }
  Toutcome remove(const Tpath& path) override {
    if (Toutcome removed = run("remove", path); !removed) return removed;
    if (stamp(path)) disk().change({path.generic_string(), ""});
    return {};
  }
  Toutcome flushFolder(const Tpath& folder) override {
    if (Toutcome flushed = run("flushFolder", folder); !flushed) return flushed;
    if (++flushes_ != leftOutFlush) disk().flushFolder(folder);
    return {};
  }
  Tpath resolve(const Tpath& path) override { return links_.contains(path) ? links_.at(path) : path; }

 private:
  class Twriter final : public TfileWriter {
   public:
    Twriter(TsimulatedFiles& files, Tpath path, std::size_t node)
        : files_(files), path_(std::move(path)), node_(node) {}
    Toutcome write(std::string_view bytes) override {
      if (Toutcome written = files_.run("write", path_); !written) return written;
      files_.disk().nodes[node_].content += bytes;
      return {};
    }
    Toutcome flush() override {
      if (Toutcome done = files_.run("flush", path_); !done) return done;
      auto& [content, flushed] = files_.disk().nodes[node_];
      if (++files_.flushes_ != files_.leftOutFlush) flushed = content;
      return {};
    }
    Toutcome close() override { return files_.run("close", path_); }

   private:
    TsimulatedFiles& files_;
    Tpath path_;
    std::size_t node_;
  };

  TsimulatedDisk& disk() { return history.back(); }

  /// Counts an operation, and fails it if it is to fail.
  Toutcome run(const QByteArray& operation, const Tpath& path) {
    history.push_back(disk());
    const QByteArray name = operation + ' ' + QByteArray::fromStdString(path.filename().string());
    operations << name;
    const QByteArray numbered = name + ' ' + QByteArray::number(operations.count(name));
    const auto number = operations.size();
    const bool fails = (number >= firstFailing && number <= lastFailing) || failing.contains(numbered);
    return fails ? Toutcome({operation.toStdString(), path.generic_string(), "told to fail"}) : Toutcome();
  }

  std::map<Tpath, Tpath> links_;
  int flushes_ = 0;
};
