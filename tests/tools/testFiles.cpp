#include "tools/testFiles.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

void writeBytes(const std::filesystem::path& path, const QByteArray& bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.constData(), bytes.size());
}

QByteArray bytesOf(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return {};
  const std::string bytes{std::istreambuf_iterator<char>(in), {}};
  return QByteArray("").append(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

QByteArrayList namesIn(const std::filesystem::path& folder) {
  QByteArrayList names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names << QByteArray::fromStdString(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}
