#pragma once

#include <QDirIterator>
#include <filesystem>

inline const std::filesystem::path guide = GUIDE_FOLDER;

/// The guide's files with one of these endings, relative to its folder.
inline QStringList guideFiles(const QStringList& endings) {
  QStringList names;
  QDirIterator files(QStringLiteral(GUIDE_FOLDER), endings, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) names << QDir(QStringLiteral(GUIDE_FOLDER)).relativeFilePath(files.next());
  return names;
}
