#include "tools/testFiles.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

void writeBytes(const std::filesystem::path& path, const QByteArray& bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary).write(bytes.constData(), bytes.size());
}

QByteArray bytesOf(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return {};
  return QByteArray("") + QByteArray::fromStdString({std::istreambuf_iterator<char>(in), {}});
}

QByteArray linesOf(const std::filesystem::path& path) {
  return bytesOf(path).replace("\r\n", "\n");
}

QByteArrayList namesIn(const std::filesystem::path& folder) {
  QByteArrayList names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names << QByteArray::fromStdString(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}
