#include <QTest>
#include <sstream>

#include "import/columnMapping.h"
#include "import/importFile.h"
#include "import/importLine.h"
#include "import/importRun.h"
#include "import/lineReader.h"
#include "import/remarkText.h"
#include "support/iniFile.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// Columns 1 to 4: device ID, description, model, test procedure.
constexpr TcolumnMapping fourColumns = {{1, 2, 0, 3, 0, 0, 0, 4}};

TfieldList split(const QByteArray& line, char delimiter = ',', bool quotes = false) {
  return tokenise({line.constData(), static_cast<std::size_t>(line.size())}, delimiter, quotes);
}

QByteArray textsOf(const TequipRec& record) {
  QByteArray texts;
  for (int field = 0; field < fieldCount; ++field) texts += QByteArray(record.text(field)) + '|';
  return texts + QByteArray::number(record.testProc());
}

QByteArray textsOf(const std::vector<TimportFinding>& findings) {
  QByteArray texts;
  for (const TimportFinding& finding : findings) {
    texts += QByteArray::number(int(finding.kind)) + '/' + QByteArray::number(qulonglong(finding.field)) + '/' +
             QByteArray::fromStdString(finding.was) + QString::fromStdU32String(finding.characters).toUtf8() + '|';
  }
  return texts;
}

/// Imports `f.csv` and skips duplicates.
struct TrunFixture : public TimportObserver {
  TimportRun run(const QByteArray& file, int startRow = 1, TknownChoice known = TknownChoice::ask) {
    writeBytes(folder / "f.csv", file);
    TimportOptions options{folder / "f.csv", ',', startRow};
    options.known = known;
    return runImport(options, fourColumns, 4, table, *this);
  }
  /// "1 noDeviceId ..." would be long: the rows and kinds of all remarks, "3:0 5:1".
  static QByteArray remarks(const TimportRun& run) {
    QByteArrayList texts;
    for (const TimportRemark& remark : run.report.kept()) {
      texts << QByteArray::number(qulonglong(remark.row)) + ':' + QByteArray::number(int(remark.finding.kind));
    }
    return texts.join(' ');
  }
  static QByteArray ids(const TimportRun& run) {
    QByteArrayList ids;
    for (const TequipRec& record : run.records) ids << record.text(fieldControlNum);
    return ids.join(' ');
  }
  bool goOn(int percent) override { return shares << percent, --pollsUntilStop != 0; }
  Tduplicate duplicate(std::string& /*deviceId*/) override { return Tduplicate::skipped; }

  TtestFolder folder;
  TequipRecTable table;
  int pollsUntilStop = 0;
  QList<int> shares;
};

}  // namespace

/// Reading a file into records, without windows.
class TengineTest : public QObject {
  Q_OBJECT
 private slots:
  void linesEnd() {
    const QByteArray most(4095, 'x');
    const QByteArray nearEnd(65536 - 4000, '\n');  // of the first block that the reader reads
    const QByteArrayList blanks(65536 - 4000, "");
    const QByteArray mark = "\xEF\xBB\xBF";
    const std::initializer_list<std::pair<QByteArray, QByteArrayList>> rows = {
        {"", {}},
        {"a\r\nb\n\nc", {"a", "b", "", "c"}},
        {"a\n", {"a"}},
        {"a\rb\r\r\n\r", {"a\rb\r", ""}},
        {mark + "a\n" + mark, {"a", mark}},
        {mark, {}},
        {QByteArray("a\0b\n", 4), {QByteArray("a\0b", 3)}},
        {most + "\r\n" + most + "\n", {most, most}},
        {most + "y\r\n" + most + "\rz\nb", {most, most, "b"}},
        {nearEnd + most + "\r\nb", blanks + QByteArrayList{most, "b"}},
        {nearEnd + most.left(3999) + "\r\nb", blanks + QByteArrayList{most.left(3999), "b"}},
        {QByteArray(3000000, 'x') + "\nb", {most, "b"}}};
    for (const auto& [text, lines] : rows) {
      std::istringstream stream(text.toStdString());
      TlineReader reader(stream);
      QByteArrayList read;
      while (const auto line = reader.next()) read << QByteArray::fromStdString(std::string(*line));
      QCOMPARE(read, lines);
      QCOMPARE(reader.position(), static_cast<std::uint64_t>(text.size()));
    }
  }

  void linesAreSplit() {
    // delimiter (" where fields are quoted), line, fields
    for (const char* row : {",~~", ",~a,,b~[a][][b]", ",~a,b,~[a][b]", ",~,a~[][a]", ",~\"a,b\" ~[\"a][b\" ]",
                            "\t~\t~[]", "\t~a\tb, c~[a][b, c]", "\"~\"a\",\"\",\" b\"~[a][][ b]",
                            "\"~\"a\",b,\"c\"~[a][c]", "\"~\"x\"\"y\"~[x][y]", "\"~\"a\",\"b,c~[a]", "\"~a,b~"}) {
      const QByteArrayList cells = QByteArray(row).split('~');
      QByteArray found;
      for (const std::string_view field : split(cells[1], *row, *row == '"')) {
        found += '[' + QByteArray::fromStdString(std::string(field)) + ']';
      }
      QCOMPARE(found, "[]" + cells[2]);
    }
  }

  void rowBecomesRecord() {
    using enum TremarkKind;
    // line (a zero byte is written 0x01), record, findings: each kind with its field and what was there
    const std::initializer_list<std::tuple<const char*, const char*, std::vector<TimportFinding>>> rows = {
        {"i,d,m, 500 ", "i|d||m||||500", {}},
        {"", "|||||||1", {}},
        {" \t ,d,m,1", "|||||||1", {{noDeviceId, importFieldCount, {}, {}}}},
        {"\1i,d,m,1", "|||||||1", {{noDeviceId, importFieldCount, {}, {}}}},
        {"\t i j ,d,m,500,y", "i j|d||m||||500", {{otherFieldCount, importFieldCount, "5 instead of 4", {}}}},
        {"i,d", "i|d||||||1", {{otherFieldCount, importFieldCount, "2 instead of 4", {}}}},
        {"i,d,m,0", "i|d||m||||1", {{procedureUnreadable, importTestProc, "0", {}}}},
        {"i,d,m,501", "i|d||m||||1", {{procedureUnreadable, importTestProc, "501", {}}}},
        {"i,d,m,1x", "i|d||m||||1", {{procedureUnreadable, importTestProc, "1x", {}}}},
        {"i,d\1x,m,1", "i|d||m||||1", {{cutAtZero, fieldDescription, "d", {}}}},
        {" 12345678901234567 ,d,m,1", "12345678901234567|d||m||||1", {}},
        {"123456789012345678,d,m,1", "12345678901234567|d||m||||1", {{deviceIdCut, 0, "123456789012345678", {}}}},
        {"i,d,1234567890123456789012,1",
         "i|d||123456789012345678901||||1",
         {{fieldCut, fieldModel, "1234567890123456789012", {}}}},
        {"\x1B\ti\x1F,\x7F d\te\r\n\n\x02\nf\rg\x81,\v,1", "i| d e f g\x81||||||1", {}},
        {"i,d,m,1\x02"
         "2",
         "i|d||m||||1",
         {{procedureUnreadable,
           importTestProc,
           "1\x02"
           "2",
           {}}}},
        {"\"i\",d\",m,1", "\x94i\x94|d\x94||m||||1", {}}};
    for (const auto& [line, record, findings] : rows) {
      const QByteArray bytes = QByteArray(line).replace('\1', '\0');
      TimportRow row;
      row.fields = split(bytes);
      const TimportedRow made = recordInRow(row, fourColumns, 4);
      QCOMPARE(textsOf(made.record), QByteArray(record));
      QCOMPARE(textsOf(made.findings), textsOf(findings));
    }
  }

  void rowsAreDoubtedAndReplacementsFound() {
    using enum TremarkKind;
    TimportRow row;
    const QByteArray line = "i,d,m,1";
    row.fields = split(line);
    row.replaced = {{2, U'\u03A9'}, {2, U'\u0142'}, {2, U'\u03A9'}, {3, U'x'}, {9, U'y'}};
    row.isCut = row.isQuoteOpen = row.hasOtherBreak = true;
    const std::vector<TimportFinding> findings = {{characterReplaced, fieldDescription, {}, U"\u03A9\u0142"},
                                                  {otherBreak, importFieldCount, {}, {}},
                                                  {rowCut, importFieldCount, {}, {}},
                                                  {quoteNotClosed, importFieldCount, {}, {}}};
    const TcolumnMapping withoutModel = {{1, 2, 0, 0, 0, 0, 0, 4}};
    QCOMPARE(textsOf(recordInRow(row, withoutModel, 4).findings), textsOf(findings));
    const QString text = remarkText(findings[0], defaultCaptions());
    QCOMPARE(text, QStringLiteral("Device Description: the record cannot hold \u03A9 (U+03A9), \u0142 (U+0142). It was "
                                  "replaced."));
    const TimportFinding cut = {fieldCut, fieldCustom2, "100% %1", {}};
    QCOMPARE(remarkText(cut, {"", "Ward", ""}), QStringLiteral("Ward cut to 63 characters, from \"100% %1\"."));
  }

  void mappingIsRemembered() {
    const TtestFolder folder;
    const TiniFile ini(folder / "e.ini");
    QVERIFY(!TcolumnMapping::load(ini, 9));
    TcolumnMapping{{3, 0, 1, 2, 0, 9, 0, 10}}.save(ini);
    QCOMPARE(linesOf(folder / "e.ini"),
             "[Import]\nDeviceID=3\nDesc=0\nMake=1\nModel=2\nCustom1=0\nCustom2=9\nCustom3=0\nTestProc=10\n");
    QVERIFY(TcolumnMapping::load(ini, 9)->columns == (std::array{3, 0, 1, 2, 0, 9, 0, 0}));
    QByteArray characters;
    for (int index = -1; index < 7; ++index) characters += delimiterCharacter(index, "x");
    QCOMPARE(characters, ",, \t|;x,");
  }

  void headingsAreUnderstood() {
    // headings, caption of custom field 2, columns
    for (const char* row : {"<index>,<control nun>,<description>,<manufacturer>,<model>,<test procedure num>,<test "
                            "procedure title>,<custom1>"
                            ",<custom2>~Custom 2~2 3 4 5 8 9 0 6 ",
                            "ID,Brand,Asset No.,model,Custom 1~MODEL~3 0 2 0 5 4 0 0 ",
                            "MODEL,Device_ID,Device Description,Stra\xDF"
                            "e,Test Procedure Number~STRA\xDF"
                            "E~2 3 0 1 0 4 0 5 ",
                            ",-,4711~-~0 0 0 0 0 0 0 0 "}) {
      const QByteArrayList cells = QByteArray(row).split('~');
      const auto mapping = TcolumnMapping::fromHeadings(split(cells[0]), {"", cells[1].toStdString(), "-"});
      QByteArray found;
      for (const int column : mapping.columns) found += QByteArray::number(column) + ' ';
      QCOMPARE(found, cells[2]);
    }
  }

  void filesOfOtherPrograms() {
    const std::initializer_list<std::tuple<const char*, char, bool>> files = {
        {"python-excel.csv", ',', false},     {"python-excel-tab.txt", '\t', false}, {"python-unix.csv", ',', true},
        {"python-semicolon.csv", ';', false}, {"sqlite-list.txt", '|', false},       {"sqlite-tabs.txt", '\t', false},
        {"spreadsheet-tab.txt", '\t', false}, {"spreadsheet-quoted.csv", ',', true}};
    for (const auto& [name, delimiter, quotes] : files) {
      TrunFixture f;
      const TimportOptions options{std::filesystem::path(SAMPLE_FOLDER) / name, delimiter, 2, quotes};
      const auto sample = TimportSample::read(options);
      const TfieldList headings = sample->headings.fields();
      const TimportRun run = runImport(options, TcolumnMapping::fromHeadings(headings, {}), 5, f.table, f);
      // That program does not quote an empty cell, so it is no field, and the cells after it move up.
      const bool emptyCellLost = std::string_view(name) == "spreadsheet-quoted.csv";
      QVERIFY(run.malformed == emptyCellLost && run.records.size() == 3);
      QCOMPARE(textsOf(run.records[0]), "BME 2019/0068|D\351fibrillateur|Oderwald Meditec|OM 300||||31");
      const QByteArray bed = "0004139|Bed \226 bariatric|Nordhalm Pflege|";
      QCOMPARE(textsOf(run.records[1]), bed + (emptyCellLost ? "63||||1" : "||||63"));
      QVERIFY(textsOf(run.records[2]).endsWith(" \xB1" + QByteArray("5 %|Halvorsby|Nefrolva RO 12||||500")));
    }
  }

  void runTakesWhatIsUsable() {
    TrunFixture f;
    const TimportRun run = f.run("Headings\n\nb,B,m,2\n,none,m,3\nb,B,m,2\na,A\n", 2);
    QCOMPARE(TrunFixture::ids(run), "b a");
    QVERIFY(run.malformed && !run.truncated && !run.limitReached && f.table.count() == 0);
    QVERIFY(f.run("").end == TimportRun::Tend::done);
    // The last one is opened, but cannot be read.
    using Tpath = std::filesystem::path;
    for (const Tpath& path : {f.folder / "none", f.folder.path(), Tpath("/dev/zero"), Tpath("/proc/self/mem")}) {
      QVERIFY(runImport({path}, fourColumns, 4, f.table, f).end == TimportRun::Tend::unreadable);
      QVERIFY(!TimportSample::read({path}));
    }
  }

  void knownDevicesAreSkippedOrUpdated() {
    TrunFixture f;
    const TequipRec known = makeRecord({"a", "old", "make", "model"}, 7);
    for (const TequipRec& record : {known, makeRecord({" b\t"}), makeRecord({"c"}), makeRecord({"c"})}) {
      append(f.table, record);
    }
    const QByteArray file = "a,new\n\"\"\n\nb,B,,x\nc,C,m,1\nd,D,m,2\nd,,m2,3\n ,none,m,3\n";
    TimportRun run = f.run(file, 1, TknownChoice::skip);
    QCOMPARE(TrunFixture::ids(run), "\x94\x94 d");
    QCOMPARE(importSummary(run), QStringLiteral("2 added, 4 skipped, 1 without Device ID, 1 with remarks"));
    run = f.run(file.mid(file.indexOf("\n\n") + 2).prepend("a,new\n"), 1, TknownChoice::update);
    QCOMPARE(importSummary(run), QStringLiteral("1 added, 3 updated, 1 skipped, 1 without Device ID, 2 with remarks"));
    QCOMPARE(TrunFixture::remarks(run), "1:7 2:12 3:2 6:0");
    applyChange(f.table, changeOf(run, f.table));
    QByteArrayList texts;
    for (TrecordIndex i = 0; i < f.table.count(); ++i) texts << textsOf(f.table.at(i));
    QCOMPARE(texts,
             QByteArrayList({"a|new|make|model||||7", " b\t|B||||||1", "c|||||||1", "c|||||||1", "d|||m2||||3"}));
    run = f.run("a,new\n", 1, TknownChoice::update);
    QVERIFY(run.updated == 1 && changeOf(run, f.table).isEmpty());
    QCOMPARE(importSummary(f.run(",x\n")), QStringLiteral("Nothing added, 1 without Device ID"));
  }

  void remarksAreKeptUpToALimit() {
    TrunFixture f;
    const TimportRun run = f.run(QByteArray(",x\n").repeated(20001) + "a,,,1\n");
    QCOMPARE(run.report.kept().size(), std::size_t{20000});
    QVERIFY(run.report.count() == 20001 && run.withoutDeviceId == 20001 && run.report.kept().back().row == 20000);
  }

  void runStopsAtTheLimitAndWhenTold() {
    TrunFixture f;
    QByteArray lines;
    for (int i = 0; i < 18433; ++i) lines += QByteArray::number(i) + ",,,1\n";
    TimportRun run = f.run(lines);
    QVERIFY(run.limitReached && run.records.size() == 18432);
    QCOMPARE(TrunFixture::remarks(run), "18433:3");
    QVERIFY(f.shares.first() == 0 && f.shares.last() < 100 && std::is_sorted(f.shares.begin(), f.shares.end()));
    f.pollsUntilStop = 1;
    run = f.run(lines);
    QVERIFY(run.end == TimportRun::Tend::cancelled && run.records.empty());
    f.table = TequipRecTable(std::vector<TequipRec>(18431));
    run = f.run("a,,,1\nb,,,x\n");
    QVERIFY(run.limitReached && !run.malformed && run.records.size() == 1);
    for (int i = 0; i < 2; ++i) {  // a load may bring one record more
      append(f.table, TequipRec());
      run = f.run("a,,,1\n");
      QVERIFY(run.limitReached && run.records.empty() && run.end == TimportRun::Tend::done);
    }
    QVERIFY(!f.run("\n", 1, TknownChoice::update).limitReached);
    run = f.run("a,,,1\nb,,,1\n", 1, TknownChoice::update);
    QVERIFY(run.limitReached && TrunFixture::remarks(run) == "1:3 2:3");
  }
};
EQREC_TEST(TengineTest);

#include "engineTest.moc"
