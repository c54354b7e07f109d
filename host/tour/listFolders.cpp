#include "host/tour/listFolders.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace {

bool writeFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/// Repeats the lines of `content` up to `count` lines, and numbers their control numbers consecutively.
QByteArray repeatedLines(const QByteArray& content, int count) {
  QList<QByteArray> lines = content.split('\n');
  lines.removeLast();
  QByteArray result;
  for (int i = 0; i < count && !lines.isEmpty(); ++i) {
    const QByteArray& line = lines[i % lines.size()];
    const QByteArray number = QByteArray::number(i + 1).rightJustified(6, '0');
    result += "\"EQ-" + number + line.mid(line.indexOf('"', 1)) + '\n';
  }
  return result;
}

}  // namespace

bool copyFolder(const QString& from, const QString& to) {
  const QDir source(from);
  QDirIterator entries(from, QDir::Files, QDirIterator::Subdirectories);
  bool copied = source.exists() && QDir().mkpath(to);
  while (copied && entries.hasNext()) {
    const QString target = to + QLatin1Char('/') + source.relativeFilePath(entries.next());
    copied = QDir().mkpath(QFileInfo(target).path()) && QFile::copy(entries.filePath(), target);
  }
  return copied;
}

bool makeEmptyList(const QString& sample, const QString& folder) {
  return copyFolder(sample, folder) && writeFile(QDir(folder).filePath(dataFile), {}) &&
         writeFile(QDir(folder).filePath(infoFile), {});
}

bool makeLongList(const QString& sample, const QString& folder, int count) {
  return copyFolder(sample, folder) &&
         writeFile(QDir(folder).filePath(dataFile), repeatedLines(fileContent(sample, dataFile), count)) &&
         writeFile(QDir(folder).filePath(infoFile), repeatedLines(fileContent(sample, infoFile), count));
}

bool changeList(const QString& folder, const QByteArray& was, const QByteArray& became, const QByteArray& controlNum) {
  const QByteArray data = fileContent(folder, dataFile);
  QByteArray info = fileContent(folder, infoFile);
  return info.contains(was) && writeFile(QDir(folder).filePath(dataFile), data + '"' + controlNum + "\",1\n") &&
         writeFile(QDir(folder).filePath(infoFile),
                   info.replace(was, became) + '"' + controlNum + "\",\"\",\"\",\"\",\"\",\"\",\"\"\n");
}

QByteArray fileContent(const QString& folder, const QString& name) {
  QFile file(QDir(folder).filePath(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
