#pragma once

#include <QByteArray>
#include <QString>

/// Folders with lists for the tour to work on.

// A list's two files.
inline const QString dataFile = QStringLiteral("DATA/eq.dat");
inline const QString infoFile = QStringLiteral("DATA/eqinfo.dat");

/// Copies a folder with all that lies in it. False: something could not be copied.
bool copyFolder(const QString& from, const QString& to);

/// A list without records.
bool makeEmptyList(const QString& sample, const QString& folder);

/// A list of so many records, the sample's over and over with control numbers of their own.
bool makeLongList(const QString& sample, const QString& folder, int count);

/// The content of one of a folder's files.
QByteArray fileContent(const QString& folder, const QString& name);
