#pragma once

#include <QByteArray>
#include <QString>

// Prepares folders with lists for the tour.

/// A list's two files.
inline const QString dataFile = QStringLiteral("DATA/eq.dat");
inline const QString infoFile = QStringLiteral("DATA/eqinfo.dat");

/// Copies a folder with everything in it. False if something could not be copied.
bool copyFolder(const QString& from, const QString& to);

/// Makes a list without records.
bool makeEmptyList(const QString& sample, const QString& folder);

/// Makes a list of `count` records: the sample's records repeated, with new control numbers.
bool makeLongList(const QString& sample, const QString& folder, int count);

/// Changes a list as another program would: `was` becomes `became` in the information file, and a record is added.
bool changeList(const QString& folder, const QByteArray& was, const QByteArray& became, const QByteArray& controlNum);

/// The content of a file in the folder.
QByteArray fileContent(const QString& folder, const QString& name);
