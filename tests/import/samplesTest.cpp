#include <QTest>
#include <numeric>

#include "browser/csvExport.h"
#include "browser/spreadsheetExport.h"
#include "browser/view.h"
#include "import/columnMapping.h"
#include "import/headings.h"
#include "import/importFile.h"
#include "import/importRun.h"
#include "import/suggestion.h"
#include "support/windows1252.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

const Tcaptions captions = {"Room", "Raum", "Notes"};

/// Imports a file as a user does who presses Use, Continue and Import.
struct TsuggestedImport : public TimportObserver {
  explicit TsuggestedImport(const std::filesystem::path& file) {
    const QByteArray start = bytesOf(file).left(65536);
    const auto found = TimportSuggestion::of({start.constData(), static_cast<std::size_t>(start.size())}, captions);
    if (!found) return;
    suggestion = found->text();
    TimportChoices choices;
    found->setIn(choices);
    const TimportOptions options{file,
                                 delimiterCharacter(choices.delimiter, choices.userDelimiter),
                                 choices.startRow,
                                 choices.quotes,
                                 choices.spreadsheet,
                                 charsetOf(choices.charset)};
    const auto sample = TimportSample::read(options);
    const auto rowBefore = sample->headings.row();
    const auto firstRow = sample->first.row();
    const auto mapping = startMapping({}, headingRow(rowBefore.fields, firstRow.fields, captions), captions);
    run = runImport(options, mapping, sample->columnCount(), TequipRecTable(), *this);
  }
  bool goOn(int /*percent*/) override { return true; }
  Tduplicate duplicate(std::string& /*deviceId*/) override { return Tduplicate::stop; }

  std::string suggestion = "nothing";
  TimportRun run;
};

QByteArray lineOf(const TequipRec& record) {
  QString texts;
  for (int field = 0; field < fieldCount; ++field) texts += fromRecordText(record.text(field)) + u'|';
  return texts.toUtf8() + QByteArray::number(record.testProc()) + '\n';
}

/// A record for each byte that a text can hold but the double quote and the line ends, at the ends of its texts and
/// within them.
TequipRecTable everyByte(const std::string& between) {
  TequipRecTable table;
  for (unsigned byte = ' '; byte < 256; ++byte) {
    if (byte == '"' || byte == 0x7F) continue;  // what no dialog lets in
    const std::string text(3, static_cast<char>(byte));
    const std::string within = std::string(text).append(between).append(text);
    TequipRec record = makeRecord({"ID " + std::to_string(byte), within, 'x' + text, text + 'x'}, byte);
    record.setText(fieldCustom3, std::string_view(text));
    append(table, std::move(record));
  }
  return table;
}

}  // namespace

/// Files of other programs and our own, read as the suggestion says.
class TsamplesTest : public QObject {
  Q_OBJECT
 private slots:
  void samplesArrive() {
    int count = 0;
    for (const QByteArray& name : namesIn(SAMPLE_FOLDER)) {
      if (!name.endsWith(".expected")) continue;
      const auto expected = std::filesystem::path(SAMPLE_FOLDER) / name.toStdString();
      auto sample = expected;
      const TsuggestedImport import(sample.replace_extension());
      QByteArray arrived = QByteArray::fromStdString(import.suggestion) + '\n';
      for (const TequipRec& record : import.run.records) arrived += lineOf(record);
      QCOMPARE(arrived, linesOf(expected));
      const bool isPlain = name != "excel-utf8.csv.expected";  // has letters that Windows-1252 lacks
      QVERIFY2(!import.run.malformed && import.run.withoutDeviceId == 0 && (import.run.withRemarks == 0) == isPlain,
               name);
      ++count;
    }
    QCOMPARE(count, 17);
  }

  void exportsComeBack() {
    const TtestFolder folder;
    const TtestProcTable titles;
    TequipRecTable table = everyByte(" \x93,\x94; ");
    std::vector<TrecordIndex> all(table.count());
    std::iota(all.begin(), all.end(), 0U);
    QVERIFY(writeSpreadsheet(diskFileSystem(), folder / "as.csv", table, all, captions));
    const TsuggestedImport spreadsheet(folder / "as.csv");
    QCOMPARE(spreadsheet.run.records.size(), table.count());
    for (TrecordIndex i = 0; i < table.count(); ++i) QCOMPARE(lineOf(spreadsheet.run.records[i]), lineOf(table.at(i)));

    table = everyByte(" - ");
    Tview view(table, titles);
    view.showAll();
    exportRecords(view, titles, folder / "export.csv");
    const TsuggestedImport plain(folder / "export.csv");
    QCOMPARE(plain.suggestion, "Comma, Windows-1252, headings in row 1");
    for (TrecordIndex i = 0; i < table.count(); ++i) {
      if (table.at(i).testProc() != ',') QCOMPARE(lineOf(plain.run.records.at(i)), lineOf(table.at(i)));
    }
  }
};
EQREC_TEST(TsamplesTest);

#include "samplesTest.moc"
