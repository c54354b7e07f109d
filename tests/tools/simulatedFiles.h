#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/fileSystem.h"

/// Files by path, with their content.
using TfileMap = std::map<std::string, std::string>;

/// A disk with what has reached it for good and what has not. Values: a copy is a disk of its own.
///
/// Of a file that was written since it was last flushed, a loss of power leaves the bytes of then, none, half or all of
/// the new ones. Of the names made, changed and removed since their folder was last flushed, each lasts or is lost
/// independently of the others; a rename is one such change.
class TsimulatedDisk {
 public:
  explicit TsimulatedDisk(const TfileMap& files = {});

  /// Everything that a loss of power now may leave.
  std::set<TfileMap> afterPowerLoss() const;

  bool exists(const std::string& path) const { return names_.contains(path); }
  const std::string& content(const std::string& path) const { return nodes_[names_.at(path)].content; }
  std::size_t node(const std::string& path) const { return names_.at(path); }

  std::size_t create(const std::string& path);
  void append(std::size_t node, std::string_view bytes) { nodes_[node].content += bytes; }
  void flush(std::size_t node) { nodes_[node].flushed = nodes_[node].content; }
  void rename(const std::string& from, const std::string& to);
  void remove(const std::string& path);
  void flushFolder(const std::string& folder);

 private:
  using Tnames = std::map<std::string, std::size_t>;

  struct Tnode {
    std::string content;
    std::string flushed;
  };
  /// One change of names; an empty name is none.
  struct Tchange {
    std::string removed;
    std::string added;
    std::size_t node;
  };

  static void apply(const Tchange& change, Tnames& names);
  void change(const Tchange& change);
  void addContents(const Tnames& names, Tnames::const_iterator next, TfileMap files, std::set<TfileMap>& result) const;

  std::vector<Tnode> nodes_;
  Tnames names_;                  ///< as programs see them
  Tnames flushedNames_;           ///< as they are on the disk for good
  std::vector<Tchange> changes_;  ///< from the latter to the former
};

/// A file system on a simulated disk that remembers the disk before and after each operation.
class TsimulatedFiles final : public TfileSystem {
 public:
  explicit TsimulatedFiles(const TsimulatedDisk& disk) : disk_(disk), history_{disk} {}

  /// Makes a symbolic link.
  void link(const std::filesystem::path& path, const std::filesystem::path& target) { links_[path] = target; }
  /// Makes the flush with this number, counted from 1, of a file or a folder, do nothing.
  void leaveOutFlush(int number) { leftOut_ = number; }

  const std::vector<TsimulatedDisk>& history() const { return history_; }

  TreadResult read(const std::filesystem::path& path, std::string& content) override;
  std::optional<TfileStamp> stamp(const std::filesystem::path& path) override;
  bool isWritable(const std::filesystem::path&) override { return true; }
  std::unique_ptr<TfileWriter> create(const std::filesystem::path& path, const std::filesystem::path& like) override;
  bool rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
  bool remove(const std::filesystem::path& path) override;
  bool flushFolder(const std::filesystem::path& folder) override;
  std::filesystem::path resolve(const std::filesystem::path& path) override;

 private:
  class Twriter;

  bool isFlushLeftOut() { return ++flushes_ == leftOut_; }
  void remember() { history_.push_back(disk_); }

  TsimulatedDisk disk_;
  std::vector<TsimulatedDisk> history_;
  std::map<std::filesystem::path, std::filesystem::path> links_;
  int flushes_ = 0;
  int leftOut_ = 0;
};
