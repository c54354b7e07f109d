#include <QTest>

#include "store/recordLoad.h"
#include "store/testRecords.h"
#include "tools/faultyFiles.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// Loads a line of each file that stands between two good ones.
QByteArray loadBetweenGoodLines(const QByteArray& data, const QByteArray& info) {
  const TtestFolder folder;
  writeBytes(folder / "eq.dat", dataLine("first", 1) + data + '\n' + dataLine("last", 2));
  writeBytes(folder / "eqinfo.dat", infoLine("first", "1st") + info + '\n' + infoLine("last", "2nd"));
  return loadText(folder.path());
}

/// Rows of lines of the one file, with good lines of the other.
void addDataRow(const char* name, const QByteArray& line, const char* record = nullptr) {
  QTest::newRow(name) << line << infoLine("X", "d").chopped(1) << QByteArray(record);
}
void addInfoRow(const char* name, const QByteArray& line, const QByteArray& record = {}) {
  QTest::newRow(name) << dataLine("X", 12).chopped(1) << line << record;
}

void addDataRows() {
  addDataRow("plain data line, taken", "\"X\",12", "X 12 d");
  addDataRow("blanks between all tokens, taken", " \t\"X\" \t, \t12 \t", "X 12 d");
  addDataRow("carriage return, taken", "\"X\",12\r", "X 12 d");
  addDataRow("comma and blanks inside the quotes, taken", "\" X,1 \",12", " X,1  12 d");
  addDataRow("empty control number, taken", "\"\",12", " 12 d");
  addDataRow("leading zeros, taken", "\"X\",00012", "X 12 d");
  addDataRow("number 1, taken", "\"X\",1", "X 1 d");
  addDataRow("number 500, taken", "\"X\",500", "X 500 d");
  addDataRow("number 0, dropped", "\"X\",0");
  addDataRow("number 501, dropped", "\"X\",501");
  addDataRow("number 65537, dropped", "\"X\",65537");
  addDataRow("number beyond 32 bits, dropped", "\"X\",99999999999");
  addDataRow("number 2 to the power of 32 and 1, dropped", "\"X\",4294967297");
  addDataRow("minus sign, dropped", "\"X\",-1");
  addDataRow("plus sign, dropped", "\"X\",+5");
  addDataRow("no number, dropped", "\"X\",");
  addDataRow("number with fraction, dropped", "\"X\",1.5");
  addDataRow("word behind the number, dropped", "\"X\",12 x");
  addDataRow("third field, dropped", "\"X\",12,13");
  addDataRow("opening quote missing, dropped", "X\",12");
  addDataRow("closing quote missing, dropped", "\"X,12");
  addDataRow("quote inside the text, dropped", "\"X\"Y\",12");
  addDataRow("semicolon for comma, dropped", "\"X\";12");
  addDataRow("zero byte inside the quotes, dropped", QByteArray("\"X\0\",12", 7));
  addDataRow("zero byte behind the number, dropped", QByteArray("\"X\",12\0", 7));
}

void addInfoRows() {
  const QByteArray tail("\"\",\"\",\"\",\"\",\"\"");
  addInfoRow("plain information line, taken", "\"X\",\"d\"," + tail, "X 12 d");
  addInfoRow("blanks and carriage return between tokens, taken", " \"X\"\t,\v\"d\" ,\f" + tail + " \r", "X 12 d");
  addInfoRow("comma and blanks inside a text, kept", "\"X\",\" d,e \"," + tail, "X 12  d,e ");
  addInfoRow("undefined and high bytes, kept", "\"X\",\"\x81\xA0\xFF\x01\"," + tail, "X 12 \x81\xA0\xFF\x01");
  addInfoRow("six texts, dropped", "\"X\"," + tail);
  addInfoRow("eight texts, dropped", "\"X\",\"d\",\"e\"," + tail);
  addInfoRow("comma at the end, dropped", "\"X\",\"d\"," + tail + ",");
  addInfoRow("text without quotes, dropped", "\"X\",d," + tail);
  addInfoRow("last quote missing, dropped", ("\"X\",\"d\"," + tail).chopped(1));
  addInfoRow("zero byte inside a text, dropped", "\"X\",\"d" + QByteArray(1, '\0') + "\"," + tail);
}

void addLongInfoRows() {
  const auto filled = [](int length) {
    const QByteArray rest = ",\"\",\"\",\"\",\"\",\"\"";
    return "\"X\",\"" + QByteArray(length - rest.size() - 6, 'd') + '"' + rest;
  };
  const QByteArray cut = "X 12 " + QByteArray(63, 'd');
  const QByteArray blanks(5000, ' ');
  const QByteArray plain = infoLine("X", "d").chopped(1);
  addInfoRow("text to 4094 characters, taken", filled(4094), cut);
  addInfoRow("text to 4095 characters, taken", filled(4095), cut);
  addInfoRow("text to 4096 characters, dropped", filled(4096));
  addInfoRow("text to 5000 characters, dropped", filled(5000));
  addInfoRow("blanks to 5000 characters, taken", (plain + blanks).left(5000), "X 12 d");
  addInfoRow("5000 blanks before it, taken", blanks + plain, "X 12 d");
}

}  // namespace

class TloadTest : public QObject {
  Q_OBJECT
 private slots:
  void line_data();
  void line();
  void blankLinesArePassedOver();
  void recordLimit_data();
  void recordLimit();
  void status_data();
  void status();
  void invalidArguments();
  void failingFile();
};
EQREC_TEST(TloadTest);

void TloadTest::line_data() {
  QTest::addColumn<QByteArray>("data");
  QTest::addColumn<QByteArray>("info");
  QTest::addColumn<QByteArray>("record");
  addDataRows();
  addInfoRows();
  addLongInfoRows();
}

void TloadTest::line() {
  QFETCH(QByteArray, data);
  QFETCH(QByteArray, info);
  QFETCH(QByteArray, record);
  const QByteArray text = loadBetweenGoodLines(data, info);
  QCOMPARE(text,
           record.isNull() ? QByteArray("9: first 1 1st, last 2 2nd") : "0: first 1 1st, " + record + ", last 2 2nd");
}

void TloadTest::blankLinesArePassedOver() {
  const TtestFolder folder;
  writeBytes(folder / "eq.dat", "\n \t\r\n" + dataLine("A1", 1) + "\n\n\"B2\",2");
  writeBytes(folder / "eqinfo.dat", infoLine("A1", "a") + infoLine("B2", "b") + QByteArray(9000, ' ') + "\n\v\f");
  QCOMPARE(loadText(folder.path()), "0: A1 1 a, B2 2 b");
}

void TloadTest::recordLimit_data() {
  QTest::addColumn<int>("dataLines");
  QTest::addColumn<int>("infoLines");
  QTest::addColumn<int>("status");
  QTest::addColumn<int>("count");
  QTest::newRow("the limit, all loaded") << 18432 << 18432 << 0 << 18432;
  QTest::newRow("one more, all loaded") << 18433 << 18433 << 0 << 18433;
  QTest::newRow("two more, reported") << 18434 << 18434 << 7 << 18433;
  QTest::newRow("two more in the data file, reported") << 18434 << 18433 << 7 << 18433;
  QTest::newRow("two more in the information file, reported") << 18433 << 18434 << 7 << 18433;
}

void TloadTest::recordLimit() {
  QFETCH(int, dataLines);
  QFETCH(int, infoLines);
  const TtestFolder folder;
  writeBytes(folder / "eq.dat", dataLine("A1", 1).repeated(dataLines));
  writeBytes(folder / "eqinfo.dat", infoLine("A1", "").repeated(infoLines) + " \n");
  TequipRecTable table;
  QTEST(int(TequipRecFromFile(&table, 18432, folder / "eq.dat", folder / "eqinfo.dat", diskFileSystem())), "status");
  QTEST(int(table.count()), "count");
}

void TloadTest::status_data() {
  QTest::addColumn<QByteArrayList>("entries");
  QTest::addColumn<QByteArray>("text");
  QTest::newRow("both missing, 2") << QByteArrayList{} << QByteArray("2: ");
  QTest::newRow("data file missing, 2") << QByteArrayList{"eqinfo.dat"} << QByteArray("2: ");
  QTest::newRow("folder in the data file's place, 2") << QByteArrayList{"eq.dat/x", "eqinfo.dat"} << QByteArray("2: ");
  QTest::newRow("information file missing, 3") << QByteArrayList{"eq.dat"} << QByteArray("3: ");
  QTest::newRow("folder in the information file's place, 3")
      << QByteArrayList{"eq.dat", "eqinfo.dat/x"} << QByteArray("3: ");
  QTest::newRow("both empty, 0") << QByteArrayList{"eq.dat", "eqinfo.dat"} << QByteArray("0: ");
}

void TloadTest::status() {
  QFETCH(QByteArrayList, entries);
  const TtestFolder folder;
  for (const QByteArray& entry : entries) writeBytes(folder / entry.toStdString(), "");
  QTEST(loadText(folder.path()), "text");
}

void TloadTest::invalidArguments() {
  TequipRecTable table;
  QCOMPARE(TequipRecFromFile(nullptr, 1, "eq.dat", "eqinfo.dat", diskFileSystem()), ERINVALIDINPUT);
  QCOMPARE(TequipRecFromFile(&table, 1, "", "eqinfo.dat", diskFileSystem()), ERINVALIDINPUT);
  QCOMPARE(TequipRecFromFile(&table, 1, "eq.dat", "", diskFileSystem()), ERINVALIDINPUT);
}

void TloadTest::failingFile() {
  const TtestFolder folder;
  QCOMPARE(saveText(tableOf({{"A1", 1, "a"}}), folder.path()), "0");
  for (const QByteArray file : {"eq.dat", "eqinfo.dat"}) {
    TfaultyFiles files;
    files.fail({"read " + file + " 1", "closeRead " + file + " 1"});
    QCOMPARE(loadText(folder.path(), files), "exception 1: fgets() failed");
    QCOMPARE(loadText(folder.path(), files), "exception 8: fclose() failed");
  }
}

#include "loadTest.moc"
