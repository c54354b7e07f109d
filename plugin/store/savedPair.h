#pragma once

#include <filesystem>
#include <optional>

#include "store/commitMarker.h"

class TfileSystem;

/// The two record files on the disk, replaced together or not at all.
///
/// A save writes both new files beside the old ones and flushes them; then a commit marker that tells both goes into
/// place, and the save is decided; then both files are renamed into place, and the marker is removed. Whatever happens
/// in between, a killed process or lost power, `recover` brings either the whole old pair or the whole new one.
class TsavedPair {
 public:
  /// Of the two paths symbolic links are followed, so that a link goes on leading to the file that was replaced.
  TsavedPair(TfileSystem& files, const std::filesystem::path& dataPath, const std::filesystem::path& infoPath);

  /// One of the two files: where it stands, and where its successor is written.
  struct Tfile {
    std::filesystem::path target;
    std::filesystem::path temporary;
  };
  const Tfile& data() const { return data_; }
  const Tfile& info() const { return info_; }

  /// Finishes an interrupted save that was decided, and drops one that was not. False: a decided save could not be put
  /// into place yet; it stays decided, nothing was lost, and `current` tells where its files stand.
  bool recover();

  /// Where the file's valid content stands after `recover`.
  std::filesystem::path current(const Tfile& file) const;

  /// Puts both temporaries, written and flushed to the disk with this content, into the place of the files. Throws
  /// `TERException` with code 1 when that fails: then either both old files stand, or `recover` will bring both new
  /// ones.
  void commit(const TfileSum& data, const TfileSum& info);

  /// Removes the temporaries.
  void discard();

 private:
  enum class Tmarker { none, whole, unreadable };

  Tmarker readMarker(TcommitMarker& marker);
  bool holds(const std::filesystem::path& path, const TfileSum& sum);
  bool isAnywhere(const Tfile& file, const TfileSum& sum);
  bool putInPlace(const Tfile& file, const TfileSum& sum);
  bool decide(const TcommitMarker& marker);
  void withdraw();
  bool flushFolders();

  TfileSystem& files_;
  Tfile data_;
  Tfile info_;
  Tfile marker_;
  bool pending_ = false;  ///< a decided save waits for `recover`
};
