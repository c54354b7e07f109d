#include <QTest>

#include "store/testRecords.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// A file with a line for each of the control numbers, made from it and its number, and a corrupt line for each "!".
template <typename MakeLine>
QByteArray fileOf(const QByteArray& controlNums, MakeLine makeLine) {
  QByteArray content;
  unsigned number = 0;
  for (const QByteArray& name : controlNums.split(',')) {
    ++number;
    content += name == "!" ? QByteArray("!\n") : makeLine(name, number);
  }
  return content;
}

QByteArray numberedInfoLine(const QByteArray& controlNum, unsigned number) {
  return infoLine(controlNum, QByteArray::number(number));
}

}  // namespace

class TpairingTest : public QObject {
  Q_OBJECT
 private slots:
  void pairsLines_data();
  void pairsLines();
  void longListsPair_data();
  void longListsPair();
};
EQREC_TEST(TpairingTest);

/// A line's number is the test procedure in the data file and the description in the information file, and so tells in
/// a record which lines it is made of.
void TpairingTest::pairsLines_data() {
  QTest::addColumn<QByteArray>("data");
  QTest::addColumn<QByteArray>("info");
  QTest::addColumn<QByteArray>("text");
  const auto row = [](const char* name, const char* data, const char* info, const char* text) {
    QTest::newRow(name) << QByteArray(data) << QByteArray(info) << QByteArray(text);
  };
  row("nothing dropped, by position", "A,B,C", "A,B,C", "0: A 1 1, B 2 2, C 3 3");
  row("other control numbers, by position", "A,B", "B,Y", "0: A 1 1, B 2 2");
  row("information line dropped, costs its record", "A,B,C", "A,!,C", "9: A 1 1, C 3 3");
  row("data line dropped, costs its record", "A,!,C", "A,B,C", "9: A 1 1, C 3 3");
  row("same line dropped in both", "A,!,C", "A,!,C", "9: A 1 1, C 3 3");
  row("another line dropped in each", "A,!,C,D", "A,B,!,D", "9: A 1 1, D 4 4");
  row("information line missing, the rest shifts", "A,B,C", "A,C", "9: A 1 1, C 3 2");
  row("first data line missing, the rest shifts", "B,C", "A,B,C", "9: B 1 2, C 2 3");
  row("last line missing", "A,B", "A,B,C", "9: A 1 1, B 2 2");
  row("line missing and line dropped", "A,B,C,D,E", "A,C,!,E", "9: A 1 1, C 3 2, E 5 4");
  row("equal control numbers, kept in order", "A,A,B,A", "A,A,!,A", "9: A 1 1, A 2 2, A 4 4");
  row("equal control numbers, one dropped", "A,A,A", "A,!,A", "9: A 1 1, A 3 3");
  row("equal control numbers, line before missing", "A,A,B", "X,A,A,B", "9: A 1 2, A 2 3, B 3 4");
  row("equal control numbers, first lines missing", "B,A,C,A", "C,A", "9: C 3 1, A 4 2");
  row("empty control numbers, one dropped", ",,C", ",!,C", "9:  1 1, C 3 3");
  row("other control number on the same line, kept", "A,B,C", "A,X,!", "9: A 1 1, B 2 2");
  row("lines changed about, found by control number", "A,B,C", "B,A,!", "9: A 1 2, B 2 1");
  row("nothing in common, unequal lengths", "A,B", "X", "9: ");
  row("one file empty", "A,B", "!", "9: ");
}

void TpairingTest::pairsLines() {
  QFETCH(QByteArray, data);
  QFETCH(QByteArray, info);
  const TtestFolder folder;
  writeBytes(folder / "eq.dat", fileOf(data, dataLine));
  writeBytes(folder / "eqinfo.dat", fileOf(info, numberedInfoLine));
  QTEST(loadText(folder.path()), "text");
}

void TpairingTest::longListsPair_data() {
  QTest::addColumn<QByteArray>("line");
  QTest::addColumn<int>("count");
  QTest::newRow("line dropped among equal control numbers") << QByteArray("!\n") << 18432;
  QTest::newRow("line missing among equal control numbers") << QByteArray() << 18432;
  QTest::newRow("foreign line among equal control numbers") << infoLine("X", "") << 18433;
}

void TpairingTest::longListsPair() {
  QFETCH(QByteArray, line);
  const TtestFolder folder;
  writeBytes(folder / "eq.dat", dataLine("A", 1).repeated(18433));
  writeBytes(folder / "eqinfo.dat", infoLine("A", "").repeated(9000) + line + infoLine("A", "").repeated(9432));
  QTEST(int(loadText(folder.path()).count("A 1")), "count");
}

#include "pairingTest.moc"
