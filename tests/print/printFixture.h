#pragma once

#include <QStringList>
#include <filesystem>

#include "print/printSettings.h"
#include "print/reportTable.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/childProcess.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"

/// Records with the control numbers ID00000, ID00001, ...; all other texts are `text`, cut to the fields' lengths.
class TprintFixture {
 public:
  explicit TprintFixture(int count, const std::string& text = "x") {
    titles.set(1, text.substr(0, 41));
    for (int i = 0; i < count; ++i) {
      TequipRec record;
      for (int field = 0; field < fieldCount; ++field) record.setText(field, std::string_view(text));
      record.setText(fieldControlNum, QStringLiteral("ID%1").arg(i, 5, 10, QLatin1Char('0')).toLatin1().constData());
      append(records, std::move(record));
    }
  }

  /// Shows all records in reverse order; the second and third row are selected.
  TprintJob job() const {
    TprintJob result{records, titles, {}, {}, captions};
    for (auto i = records.count(); i > 0; --i) result.shown.push_back(static_cast<TrecordIndex>(i - 1));
    if (records.count() > 2) result.selected = {result.shown[1], result.shown[2]};
    return result;
  }
  QStringList shownControlNums() const {
    QStringList texts;
    for (const TrecordIndex index : job().shown) texts << QLatin1String(records.at(index).text(fieldControlNum));
    return texts;
  }
  /// All records with their first `fields` columns.
  TreportTable table(std::size_t fields = printColumnCount) const {
    TprintSettings settings;
    for (std::size_t i = 0; i < printColumnCount; ++i) settings.printed[i] = i < fields;
    return {job(), job().shown, settings};
  }

  TequipRecTable records;
  TtestProcTable titles;
  Tcaptions captions = {"Location", "R&D", ""};
};

/// What one of poppler's tools prints about a PDF file.
inline QString poppler(const char* tool, const QStringList& options, const std::filesystem::path& pdf) {
  TchildProcess process(QString::fromLatin1(tool), options + QStringList{nameOf(pdf), QStringLiteral("-")});
  return QString::fromUtf8(process.readAll());
}
