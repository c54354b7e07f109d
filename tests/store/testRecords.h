#pragma once

#include <QByteArrayList>
#include <filesystem>

#include "store/datastructs.h"
#include "store/recordLoad.h"
#include "store/recordSave.h"
#include "support/fileSystem.h"
#include "tools/recordChanges.h"

/// Records by control number, test procedure and description, told as "A1 7 Pump, B2 1 Lamp".
inline TequipRecTable tableOf(const QByteArray& text) {
  std::vector<TequipRec> records;
  for (const QByteArray& told : QByteArray(text).replace(", ", ",").split(',')) {
    const QByteArrayList parts = told.split(' ');
    records.push_back(makeRecord({parts[0].toStdString(), parts[2].toStdString()}, parts[1].toUInt()));
  }
  return TequipRecTable(std::move(records));
}

inline QByteArray textOf(const TequipRecTable& table) {
  QByteArrayList records;
  for (TrecordIndex i = 0; i < table.count(); ++i) {
    const TequipRec& record = table.at(i);
    records << QByteArray(record.text(fieldControlNum)) + ' ' + QByteArray::number(record.testProc()) + ' ' +
                   record.text(fieldDescription);
  }
  return records.join(", ");
}

/// A line of each file, with its line feed.
inline QByteArray dataLine(const QByteArray& controlNum, unsigned testProc) {
  return '"' + controlNum + "\"," + QByteArray::number(testProc) + '\n';
}
inline QByteArray infoLine(const QByteArray& controlNum, const QByteArray& description) {
  return '"' + controlNum + "\",\"" + description + "\",\"\",\"\",\"\",\"\",\"\"\n";
}

/// How a load or a save of eq.dat and eqinfo.dat in `folder` ends: "9: A1 7 Pump" for a status (a save has no records
/// to tell), "exception 8: fclose() failed" for an exception.
inline QByteArray loadText(const std::filesystem::path& folder, TfileSystem& files = diskFileSystem()) {
  TequipRecTable table = tableOf("stale 1 ");
  try {
    const TERResult result = TequipRecFromFile(&table, equipRecLimit, folder / "eq.dat", folder / "eqinfo.dat", files);
    return QByteArray::number(result.status) + ": " + textOf(table);
  } catch (const TERException& exception) {
    return "exception " + QByteArray::number(exception.code()) + ": " + exception.what() + textOf(table);
  }
}
inline QByteArray saveText(const TequipRecTable& table, const std::filesystem::path& folder,
                           TfileSystem& files = diskFileSystem()) {
  try {
    const TERResult result = TequipRecToFile(table, table.count(), folder / "eq.dat", folder / "eqinfo.dat", files);
    return QByteArray::number(result.status);
  } catch (const TERException& exception) {
    return "exception " + QByteArray::number(exception.code()) + ": " + exception.what();
  }
}
