#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QMap>

#include "support/fileSystem.h"

/// A file system whose operations fail as scripted. A failing operation does nothing, but that a close still closes.
///
/// An operation is named by what it does, the file's name and which one of that name it is: "write eq.dat.new 2". The
/// operations are `read`, `closeRead`, `isWritable`, `create`, `write`, `flush`, `close`, `rename`, `remove`,
/// `flushFolder`. Looking up stamps and links always works.
class TfaultyFiles final : public TfileSystem {
 public:
  explicit TfaultyFiles(TfileSystem& files = diskFileSystem()) : files_(files) {}

  /// Fails the operations with the numbers `first` to `last`, counted from 1 over all of them.
  void failFrom(int first, int last) { first_ = first, last_ = last; }
  /// Fails the operations with these names.
  void fail(const QByteArrayList& names) { failing_ = names; }
  /// How many operations there were.
  int count() const { return count_; }

  /// Counts an operation in, and tells whether it is to fail.
  bool fails(const char* operation, const std::filesystem::path& path);

  TreadResult read(const std::filesystem::path& path, std::string& content) override;
  std::optional<TfileStamp> stamp(const std::filesystem::path& path) override { return files_.stamp(path); }
  bool isWritable(const std::filesystem::path& path) override;
  std::unique_ptr<TfileWriter> create(const std::filesystem::path& path, const std::filesystem::path& like) override;
  bool rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
  bool remove(const std::filesystem::path& path) override;
  bool flushFolder(const std::filesystem::path& folder) override;
  std::filesystem::path resolve(const std::filesystem::path& path) override { return files_.resolve(path); }

 private:
  TfileSystem& files_;
  QByteArrayList failing_;
  QMap<QByteArray, int> occurrences_;
  int first_ = 0;
  int last_ = 0;
  int count_ = 0;
};
