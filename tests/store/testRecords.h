#pragma once

#include <QByteArray>
#include <filesystem>
#include <initializer_list>

#include "store/datastructs.h"
#include "support/fileSystem.h"

struct TtestRecord {
  const char* controlNum;
  unsigned testProc;
  const char* description;
};

TequipRecTable tableOf(std::initializer_list<TtestRecord> records);

/// The records as "A1 7 Pump, B2 1 Lamp".
QByteArray textOf(const TequipRecTable& table);

/// A line of each file, with its line feed.
QByteArray dataLine(const QByteArray& controlNum, unsigned testProc);
QByteArray infoLine(const QByteArray& controlNum, const QByteArray& description);

/// How a load or a save of eq.dat and eqinfo.dat in `folder` ends: "9: A1 7 Pump" for a status (a save has no records
/// to tell), "exception 8: fclose() failed" for an exception.
QByteArray loadText(const std::filesystem::path& folder, TfileSystem& files = diskFileSystem(),
                    std::size_t recordLimit = equipRecLimit);
QByteArray saveText(const TequipRecTable& table, const std::filesystem::path& folder,
                    TfileSystem& files = diskFileSystem());
