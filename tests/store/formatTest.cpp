#include <QTest>
#include <algorithm>

#include "store/testRecords.h"
#include "tools/recordChanges.h"
#include "tools/simulatedFiles.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

QByteArray loadOf(const QByteArray& data, const QByteArray& info) {
  const TtestFolder folder;
  writeBytes(folder / "eq.dat", data);
  writeBytes(folder / "eqinfo.dat", info);
  return loadText(folder.path());
}

/// Loads a line of each file that stands between two good ones; null for a record that it must not make.
void checkLines(const QByteArray& data, const QByteArray& info, const QByteArray& record) {
  const QByteArray text = loadOf(dataLine("first", 1) + data + '\n' + dataLine("last", 2),
                                 infoLine("first", "1st") + info + '\n' + infoLine("last", "2nd"));
  QCOMPARE(text, record.isNull() ? "9: first 1 1st, last 2 2nd" : "0: first 1 1st, " + record + ", last 2 2nd");
}
void checkDataLine(const QByteArray& line, const QByteArray& record = {}) {
  checkLines(line, infoLine("X", "d").chopped(1), record);
}
void checkInfoLine(const QByteArray& line, const QByteArray& record = {}) {
  checkLines(dataLine("X", 12).chopped(1), line, record);
}

/// A line for each of the control numbers, made from it and its number, and a corrupt line for each "!".
QByteArray fileOf(const char* controlNums, bool info) {
  QByteArray content;
  unsigned number = 0;
  for (const QByteArray& name : QByteArray(controlNums).split(',')) {
    ++number;
    const QByteArray line = info ? infoLine(name, QByteArray::number(number)) : dataLine(name, number);
    content += name == "!" ? "!\n" : line;
  }
  return content;
}

}  // namespace

class TformatTest : public QObject {
  Q_OBJECT
 private slots:
  void takesAndDropsDataLines() {
    for (const QByteArray number : {"1", "12", "500"}) checkDataLine("\"X\"," + number, "X " + number + " d");
    checkDataLine(" \t\"X\" \t, \t00012 \r", "X 12 d");
    checkDataLine("\" X,1 \",12", " X,1  12 d");
    checkDataLine("\n \t\r\n\"\",12\n\n", " 12 d");
    for (const char* number :
         {"0", "501", "65537", "99999999999", "4294967297", "-1", "+5", "", "1.5", "12 x", "12,13"}) {
      checkDataLine(QByteArray("\"X\",") + number);
    }
    for (const char* line : {"X\",12", "\"X,12", "\"X\"Y\",12", "\"X\";12"}) checkDataLine(line);
    checkDataLine(QByteArray("\"X\0\",12", 7));
    checkDataLine(QByteArray("\"X\",12\0", 7));
  }

  void takesAndDropsInfoLines() {
    const QByteArray tail("\"\",\"\",\"\",\"\",\"\"");
    checkInfoLine(" \"X\"\t,\v\"d\" ,\f" + tail + " \r", "X 12 d");
    checkInfoLine("\"X\",\" d,\x81\xA0\xFF\x01 \"," + tail, "X 12  d,\x81\xA0\xFF\x01 ");
    checkInfoLine("\"X\"," + tail);
    checkInfoLine("\"X\",\"d\",\"e\"," + tail);
    checkInfoLine("\"X\",\"d\"," + tail + ",");
    checkInfoLine(("\"X\",\"d\"," + tail).chopped(1));
    checkInfoLine("\"X\",\"d" + QByteArray(1, '\0') + "\"," + tail);
    const QByteArray plain = infoLine("X", "d").chopped(1);
    for (const int length : {4094, 4095, 4096, 5000}) {
      const QByteArray filled = infoLine("X", QByteArray(length - plain.size() + 1, 'd')).chopped(1);
      checkInfoLine(filled, length < 4096 ? "X 12 " + QByteArray(63, 'd') : QByteArray());
    }
    checkInfoLine(plain + '\n' + QByteArray(9000, ' '), "X 12 d");
    checkInfoLine(plain.leftJustified(5000), "X 12 d");
    checkInfoLine(plain.rightJustified(5000), "X 12 d");
  }

  void recordLimit() {
    using Tcounts = std::pair<int, int>;
    for (const auto& [data, info] : {Tcounts(18432, 18432), {18433, 18433}, {18434, 18433}, {18433, 18434}}) {
      const QByteArray text = loadOf(dataLine("A1", 1).repeated(data), infoLine("A1", "").repeated(info) + " \n");
      QCOMPARE(text.left(1), std::max(data, info) > 18433 ? "7" : "0");
      QCOMPARE(text.count("A1"), std::min(data, info));
    }
  }

  /// Each line holds its number, as test procedure or description: that tells which lines make a record.
  void pairsLines() {
    const std::vector<std::array<const char*, 3>> cases = {{"A,B", "B,Y", "0: A 1 1, B 2 2"},
                                                           {"A,B,C", "A,!,C", "9: A 1 1, C 3 3"},
                                                           {"A,!,C", "A,B,C", "9: A 1 1, C 3 3"},
                                                           {"B,C", "A,B,C", "9: B 1 2, C 2 3"},
                                                           {"A,B,C,D,E", "A,C,!,E", "9: A 1 1, C 3 2, E 5 4"},
                                                           {"A,A,B,A", "A,A,!,A", "9: A 1 1, A 2 2, A 4 4"},
                                                           {"A,A,B", "X,A,A,B", "9: A 1 2, A 2 3, B 3 4"},
                                                           {"A,B,C", "A,X,!", "9: A 1 1, B 2 2"},
                                                           {"B,A,C,A", "C,A", "9: C 3 1, A 4 2"},
                                                           {"X,Y,A,A", "A,A,!,Z", "9: A 3 1, A 4 2"},
                                                           {"A,B,C", "B,A,!", "9: A 1 2, B 2 1"},
                                                           {"!,A,B,A", "A,!,B,A", "9: B 3 3, A 4 4"},
                                                           {"!,A,B", "A,!,B", "9: A 2 1, B 3 3"},
                                                           {"A,!,A,B", "!,A,B,A", "9: A 3 4, B 4 3"}};
    for (const auto& [data, info, text] : cases) QCOMPARE(loadOf(fileOf(data, false), fileOf(info, true)), text);
  }

  void formatIsToTheByte() {
    const TequipRecTable table({makeRecord({"A1", "", "\xC4\x81", "", "4", "5", "6"}, 500),
                                makeRecord({"B2", "a;b", "", " m, "}), makeRecord({"C3"})});
    const TtestFolder folder;
    QCOMPARE(saveText(table, folder / "none"), "2");
    TequipRecTable unread;
    const TERResult missing = TequipRecFromFile(&unread, 1, folder / "eq.dat", folder / "eqinfo.dat", diskFileSystem());
    QVERIFY(missing.status == ER1STFILENOTFOUND && missing.reason.find("eq.dat: ") != std::string::npos);
    QCOMPARE(TequipRecToFile(table, 2, folder / "eq.dat", folder / "eqinfo.dat", diskFileSystem()).status, ERSUCCESS);
    QCOMPARE(bytesOf(folder / "eq.dat"), "\"A1\",500\n\"B2\",1\n");
    QCOMPARE(bytesOf(folder / "eqinfo.dat"),
             "\"A1\",\"\",\"\xC4\x81\",\"\",\"4\",\"5\",\"6\"\n\"B2\",\"a;b\",\"\",\" m, \",\"\",\"\",\"\"\n");
  }

  /// Also over a save of several pieces that the next load has to finish.
  void everyByteComesBack() {
    QByteArray bytes;
    for (int byte = 1; byte < 256; ++byte) bytes.append(byte == '"' || byte == '\n' ? "" : QByteArray(1, char(byte)));
    TequipRec record;
    for (int id = 0, at = 0; id < fieldCount; at += int(textField(id++).size) - 1) {
      record.setText(id, bytes.mid(at, qsizetype(textField(id).size) - 1).constData());
    }
    const TequipRecTable table(std::vector<TequipRec>(5000, record));
    const TtestFolder folder;
    QCOMPARE(saveText(table, folder.path()), "0");
    QVERIFY(loadText(folder.path()) == "0: " + textOf(table));
    QVERIFY(bytesOf(folder / "eqinfo.dat").contains(bytes.mid(185, 63) + '"'));
    TsimulatedFiles files{TsimulatedDisk()};
    files.failing = {"rename eqinfo.dat.new 1"};
    QVERIFY(saveText(table, "/", files).startsWith("exception 1"));
    QVERIFY(loadText("/", files) == "0: " + textOf(table));
  }
};
EQREC_TEST(TformatTest);

#include "formatTest.moc"
