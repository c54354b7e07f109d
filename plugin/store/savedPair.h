#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <set>

#include "store/commitMarker.h"
#include "support/failure.h"
#include "support/fileSystem.h"

/// Record files longer than this are not read: no list of 18432 records is a tenth as long.
inline constexpr std::uint64_t recordFileLimit = 64U << 20U;

/// The answer to a question about a file that may be impossible to read just now.
enum class Tanswer { same, other, unknown };

/// The two record files on the disk, replaced together or not at all.
///
/// A save writes both new files beside the old ones and flushes them. Then a commit marker with the fingerprints of
/// both is renamed into place: from here on the save is decided. Then both files are renamed into place, and the marker
/// is removed. After a killed process or a loss of power in between, `recover` brings either the whole old pair or the
/// whole new one. What cannot be told at the moment (a file that cannot be read) changes nothing: marker and
/// temporaries stay, and the next `recover` tries again.
///
/// One program at a time: `lock` comes first, then `recover`, and the lock is held until the pair is destroyed.
class TsavedPair {
 public:
  /// Follows symbolic links in both paths, so that a link goes on leading to the file that is replaced.
  TsavedPair(TfileSystem& files, const std::filesystem::path& dataPath, const std::filesystem::path& infoPath);

  /// One of the two files: its path, and a name of this writer's own for its successor while that is written.
  struct Tfile {
    std::filesystem::path target;
    std::filesystem::path temporary;
    std::filesystem::path current;  ///< where the valid content is after `recover`
    TfileStamp written;             ///< of the temporary, see `noteWritten`
  };
  const Tfile& data() const { return data_; }
  const Tfile& info() const { return info_; }

  /// Locks `eq.lock` beside the data file. Fails if another program or window holds the lock for 5 seconds. Where there
  /// can be no lock, work goes on without, and the log says so.
  Toutcome lock();

  /// `waiting`: a decided save could not be put into place yet. It stays decided, and `current` says where its files
  /// are. `unknown`: it cannot be told whether there is one, or where its files are.
  enum class Trecovery { done, waiting, unknown };

  /// Finishes an interrupted save that was decided, and drops one that was not.
  Trecovery recover();

  /// Both temporaries are written and closed. Without a lock, they are put into place only as they are now.
  void noteWritten();

  /// Puts both temporaries, which have these fingerprints and are on the disk, into the place of the files. Throws
  /// `TERException` with code 1 when that fails: then either both old files are unchanged, or `recover` will bring both
  /// new ones.
  void commit(const TpairSums& sums);

  /// Removes the temporaries.
  void discard();

  /// Whether a file has this fingerprint.
  Tanswer holds(const std::filesystem::path& path, const TfileSum& sum);

 private:
  enum class Tmarker { none, whole, unknown };
  enum class Tplace { temporary, target, nowhere, unknown };

  Tmarker readMarker(TcommitMarker& marker);
  Tplace placeOf(const Tfile& file, const TfileSum& sum);
  bool finish(Tfile& file);
  Toutcome putInPlace(const Tfile& file);
  Toutcome decide(const TcommitMarker& marker);
  void withdraw();
  void removeRemains();
  Toutcome flushFolders();
  std::set<std::filesystem::path> folders() const;

  TfileSystem& files_;
  Tfile data_;
  Tfile info_;
  Tfile marker_;
  std::unique_ptr<TfileLock> lock_;
};
