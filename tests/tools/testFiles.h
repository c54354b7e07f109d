#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QTemporaryDir>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A new folder, removed with this object.
class TtestFolder {
 public:
  std::filesystem::path path() const { return folder_.path().toStdString(); }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return path() / name; }

 private:
  QTemporaryDir folder_;
};

/// A path as Qt names it.
inline QString nameOf(const std::filesystem::path& path) {
  return QString::fromStdString(path.generic_string());
}

/// Writes a file and creates the folders it needs.
inline void writeBytes(const std::filesystem::path& path, const QByteArray& bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary).write(bytes.constData(), bytes.size());
}

/// A file's bytes; null where it cannot be read.
inline QByteArray bytesOf(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return {};
  return QByteArray("") + QByteArray::fromStdString({std::istreambuf_iterator<char>(in), {}});
}

/// A text file's bytes, with every line end a single line feed.
inline QByteArray linesOf(const std::filesystem::path& path) {
  return bytesOf(path).replace("\r\n", "\n");
}

/// The names in a folder, sorted.
inline QByteArrayList namesIn(const std::filesystem::path& folder) {
  QByteArrayList names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names << QByteArray::fromStdString(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}
