#include <QTest>
#include <array>
#include <malloc.h>

#include "store/datastructs.h"
#include "store/erException.h"
#include "store/testRecords.h"
#include "tools/testList.h"

class TrecordTest : public QObject {
  Q_OBJECT
 private slots:
  void blankAndClearedAreAlike();
  void textIsCutToField();
  void testProcIsChecked();
  void invalidFieldThrows();
  void copiesAreIndependent();
  void tableKeepsOrder();
  void fullTableIsSmall();
};
EQREC_TEST(TrecordTest);

void TrecordTest::blankAndClearedAreAlike() {
  TequipRec cleared = tableOf({{"A1", 500, "Pump"}}).at(0);
  cleared.clear();
  for (const TequipRec& record : {TequipRec(), cleared}) {
    for (int id = 0; id < fieldCount; ++id) QCOMPARE(record.text(id), "");
    QCOMPARE(record.testProc(), 1U);
  }
}

void TrecordTest::textIsCutToField() {
  constexpr std::array<int, fieldCount> longest = {17, 63, 21, 21, 63, 63, 63};
  TequipRec record;
  for (int id = 0; id < fieldCount; ++id) QVERIFY(record.setText(id, QByteArray(200, char('a' + id)).constData()));
  for (int id = 0; id < fieldCount; ++id) {
    const int length = longest[static_cast<std::size_t>(id)];
    QCOMPARE(QByteArray(record.text(id)), QByteArray(length, char('a' + id)));
    QVERIFY(!record.setText(id, static_cast<const char*>(nullptr)));
    QVERIFY(record.setText(id, "y"));
    QCOMPARE(QByteArray(record.text(id), length + 1), QByteArray("y").leftJustified(length + 1, '\0'));
  }
}

void TrecordTest::testProcIsChecked() {
  TequipRec record;
  for (const unsigned number : {1U, 9U, 500U}) QVERIFY(record.setTestProc(number) && record.testProc() == number);
  for (const unsigned number : {0U, 501U, 65537U}) QVERIFY(!record.setTestProc(number) && record.testProc() == 500);
}

void TrecordTest::invalidFieldThrows() {
  TequipRec record;
  const auto check = [](const auto& access) {
    try {
      access();
      return false;
    } catch (const TERException& exception) {
      return exception.code() == 11 && exception.line() > 0 &&
             exception.fileName() == "Plugins/Equipment Record Plugin/datastructs";
    }
  };
  for (const int id : {997, 998, 999, 11, -1, 7}) {
    QVERIFY(check([&] { record.setText(id, "x"); }));
    QVERIFY(check([&] { record.text(id); }));
  }
}

void TrecordTest::copiesAreIndependent() {
  TequipRec source = tableOf({{"A1", 2, "Pump"}}).at(0);
  TequipRec copy(source);
  TequipRec assigned;
  assigned = source;
  source.setText(fieldControlNum, "B2");
  source.setTestProc(3);
  copy.setText(fieldDescription, "Lamp");
  TequipRec& alias = assigned;
  assigned = alias;
  TequipRecTable table;
  for (const TequipRec& record : {source, copy, assigned}) table.append(record);
  QCOMPARE(textOf(table), "B2 3 Pump, A1 2 Lamp, A1 2 Pump");
}

void TrecordTest::tableKeepsOrder() {
  TequipRecTable table = tableOf({{"A", 1, ""}, {"B", 2, ""}, {"A", 1, ""}, {"C", 3, ""}});
  table.remove(1);
  QCOMPARE(textOf(table), "A 1 , A 1 , C 3 ");
  table.removeAll();
  QCOMPARE(table.count(), 0U);
}

void TrecordTest::fullTableIsSmall() {
  const auto bytesInUse = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; };
  const std::size_t before = bytesInUse();
  TequipRecTable table;
  for (std::size_t i = 0; i < equipRecLimit; ++i) table.append(TequipRec());
  const std::size_t each = (bytesInUse() - before) / equipRecLimit;
  if (each == 0) QSKIP("This allocator does not count");
  QVERIFY2(each > 317 && each <= 400, qPrintable(QString::number(each)));
}

#include "recordTest.moc"
