#pragma once

#include <filesystem>
#include <optional>

#include "store/commitMarker.h"
#include "support/failure.h"

class TfileSystem;

/// The two record files on the disk, replaced together or not at all.
///
/// A save writes both new files beside the old ones and flushes them. Then a commit marker with the fingerprints of
/// both is renamed into place: from here on the save is decided. Then both files are renamed into place, and the marker
/// is removed. After a killed process or a loss of power in between, `recover` brings either the whole old pair or the
/// whole new one.
class TsavedPair {
 public:
  /// Follows symbolic links in both paths, so that a link goes on leading to the file that is replaced.
  TsavedPair(TfileSystem& files, const std::filesystem::path& dataPath, const std::filesystem::path& infoPath);

  /// One of the two files: its path, and that of its successor while that is written.
  struct Tfile {
    std::filesystem::path target;
    std::filesystem::path temporary;
  };
  const Tfile& data() const { return data_; }
  const Tfile& info() const { return info_; }

  /// Finishes an interrupted save that was decided, and drops one that was not. False: a decided save could not be put
  /// into place yet. It stays decided, nothing is lost, and `current` says where its files are.
  bool recover();

  /// Where the file's valid content is after `recover`.
  std::filesystem::path current(const Tfile& file) const;

  /// Puts both temporaries, which have these fingerprints and are on the disk, into the place of the files. Throws
  /// `TERException` with code 1 when that fails: then either both old files are unchanged, or `recover` will bring both
  /// new ones.
  void commit(const TpairSums& sums);

  /// Removes the temporaries.
  void discard();

 private:
  enum class Tmarker { none, whole, unreadable };

  Tmarker readMarker(TcommitMarker& marker);
  bool holds(const std::filesystem::path& path, const TfileSum& sum);
  bool isAnywhere(const Tfile& file, const TfileSum& sum);
  bool putInPlace(const Tfile& file, const TfileSum& sum);
  Toutcome decide(const TcommitMarker& marker);
  void withdraw();
  Toutcome flushFolders();

  TfileSystem& files_;
  Tfile data_;
  Tfile info_;
  Tfile marker_;
  bool pending_ = false;  ///< a decided save waits for `recover`
};
