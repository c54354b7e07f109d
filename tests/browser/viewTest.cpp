#include <QTest>

#include "browser/view.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/recordChanges.h"
#include "tools/testList.h"

namespace {

struct Tlist {
  TequipRecTable records;
  TtestProcTable titles;
  Tview view{records, titles};

  void add(const char* controlNum, const char* description, unsigned testProc) {
    TequipRec record;
    record.setText(fieldControlNum, controlNum);
    record.setText(fieldDescription, description);
    record.setTestProc(testProc);
    append(records, record);
    view.showAll();
  }

  /// The control numbers as they are shown, without anything between them.
  QByteArray order() const {
    QByteArray shown;
    for (std::size_t i = 0; i < view.count(); ++i) shown += view.cellText(i, fieldControlNum).c_str();
    return shown;
  }
};

/// Records a to f, whose other columns have ties, different cases, empty texts and long equal beginnings.
void addRecords(Tlist& list) {
  list.titles.set(2, "Beta");
  list.titles.set(3, "alpha");
  list.titles.set(4, "Beta");
  list.add("a", "pump", 10);
  list.add("b", "Zoom", 3);
  list.add("c", "", 4);
  list.add("d", "Defibrillator B", 2);
  list.add("e", "Defibrillator A", 256);
  list.add("f", "pump", 10);
}

}  // namespace

class TviewTest : public QObject {
  Q_OBJECT
 private slots:
  void sortsStably_data();
  void sortsStably();
  void sortsUpperBytesLast();
  void cellsShowWhatColumnsSay();
};
EQREC_TEST(TviewTest);

void TviewTest::sortsStably_data() {
  QTest::addColumn<int>("column");
  QTest::addColumn<QByteArray>("ascending");
  QTest::newRow("record number") << 997 << QByteArray("abcdef");
  QTest::newRow("control number") << 0 << QByteArray("abcdef");
  QTest::newRow("text: empty first, upper case before lower, ties in table order") << 1 << QByteArray("cedbaf");
  QTest::newRow("test procedure: by value") << 998 << QByteArray("dbcafe");
  QTest::newRow("title: no entry first, equal titles tie") << 999 << QByteArray("aefcdb");
  QTest::newRow("code that is none: record number") << 1000 << QByteArray("abcdef");
}

void TviewTest::sortsStably() {
  QFETCH(int, column);
  QFETCH(QByteArray, ascending);
  Tlist list;
  addRecords(list);
  list.view.sort(static_cast<TcolumnId>(column), true);
  QCOMPARE(list.order(), ascending);
  list.view.showAll();
  list.view.sort(static_cast<TcolumnId>(column), false);
  std::reverse(ascending.begin(), ascending.end());
  QCOMPARE(list.order(), ascending);
}

void TviewTest::sortsUpperBytesLast() {
  Tlist list;
  list.add("x", "\xC4rztezimmer", 1);
  list.add("y", "zoom", 1);
  list.add("z", "12345678\xFF", 1);
  list.add("w", "12345678a", 1);
  list.view.sort(fieldDescription, true);
  QCOMPARE(list.order(), "wzyx");
}

void TviewTest::cellsShowWhatColumnsSay() {
  Tlist list;
  list.titles.set(7, " \tLamp\xA0 ");
  list.add("\x01 A\xA0 1 \r", "\"quoted\"", 7);
  const std::array<std::pair<int, const char*>, 7> expected = {
      {{997, "1"}, {0, "A\xA0 1"}, {1, "\"quoted\""}, {2, ""}, {998, "7"}, {999, "Lamp\xA0"}, {1001, "INVALID DATA"}}};
  for (const auto& [column, text] : expected) {
    QCOMPARE(list.view.cellText(0, static_cast<TcolumnId>(column)), text);
  }
}

#include "viewTest.moc"
