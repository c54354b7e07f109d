#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QTemporaryDir>
#include <filesystem>

/// A fresh folder that goes with the test.
class TtestFolder {
 public:
  std::filesystem::path path() const { return folder_.path().toStdString(); }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return path() / name; }

 private:
  QTemporaryDir folder_;
};

/// Makes a file of these bytes, and the folders on the way to it.
void writeBytes(const std::filesystem::path& path, const QByteArray& bytes);

/// A file's bytes; null where it cannot be read.
QByteArray bytesOf(const std::filesystem::path& path);

/// A text's lines, each ended by a line feed, whatever the system ends them with.
QByteArray linesOf(const std::filesystem::path& path);

/// The names in a folder, sorted.
QByteArrayList namesIn(const std::filesystem::path& folder);
