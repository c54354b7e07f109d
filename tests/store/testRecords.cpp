#include "store/testRecords.h"

#include <QByteArrayList>

#include "store/recordLoad.h"
#include "store/recordSave.h"

namespace {

QByteArray textOf(const TERException& exception) {
  return "exception " + QByteArray::number(exception.code()) + ": " + exception.what();
}

}  // namespace

TequipRecTable tableOf(std::initializer_list<TtestRecord> records) {
  TequipRecTable table;
  for (const TtestRecord& from : records) {
    TequipRec record;
    record.setText(fieldControlNum, from.controlNum);
    record.setText(fieldDescription, from.description);
    record.setTestProc(from.testProc);
    table.append(record);
  }
  return table;
}

QByteArray textOf(const TequipRecTable& table) {
  QByteArrayList records;
  for (TrecordIndex i = 0; i < table.count(); ++i) {
    const TequipRec& record = table.at(i);
    records << QByteArray(record.text(fieldControlNum)) + ' ' + QByteArray::number(record.testProc()) + ' ' +
                   record.text(fieldDescription);
  }
  return records.join(", ");
}

QByteArray dataLine(const QByteArray& controlNum, unsigned testProc) {
  return '"' + controlNum + "\"," + QByteArray::number(testProc) + '\n';
}

QByteArray infoLine(const QByteArray& controlNum, const QByteArray& description) {
  return '"' + controlNum + "\",\"" + description + "\",\"\",\"\",\"\",\"\",\"\"\n";
}

QByteArray loadText(const std::filesystem::path& folder, TfileSystem& files, std::size_t recordLimit) {
  TequipRecTable table = tableOf({{"stale", 1, ""}});
  try {
    const TERStatus status = TequipRecFromFile(&table, recordLimit, folder / "eq.dat", folder / "eqinfo.dat", files);
    return QByteArray::number(status) + ": " + textOf(table);
  } catch (const TERException& exception) {
    return textOf(exception) + textOf(table);
  }
}

QByteArray saveText(const TequipRecTable& table, const std::filesystem::path& folder, TfileSystem& files) {
  try {
    return QByteArray::number(TequipRecToFile(table, table.count(), folder / "eq.dat", folder / "eqinfo.dat", files));
  } catch (const TERException& exception) {
    return textOf(exception);
  }
}
