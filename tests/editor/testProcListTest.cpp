#include <QTest>

#include "editor/recordFields.h"
#include "editor/testProcList.h"
#include "support/gridLayout.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/testList.h"

/// The editor's rules that need no window: the list of test procedures, and how texts enter a record.
class TtestProcListTest : public QObject {
  Q_OBJECT
 private slots:
  void listsWhatMatches_data();
  void listsWhatMatches();
  void captionsNameProcedures();
  void recordTakesTexts();
};
EQREC_TEST(TtestProcListTest);

namespace {

TtestProcTable titles() {
  TtestProcTable table;
  const std::initializer_list<std::pair<unsigned, const char*>> entries = {
      {1, "b"},  {2, "(UNUSED)"},    {3, "B Pump"},     {4, " (UNUSED)\t"},
      {10, "b"}, {20, "\xC4rzte b"}, {300, "(unused)"}, {500, ""}};
  for (const auto& [number, title] : entries) table.set(number, title);
  return table;
}

QByteArray numbersIn(const TtestProcList& list) {
  QByteArrayList numbers;
  for (std::size_t row = 0; row < list.count(); ++row) numbers << QByteArray::number(list.at(row));
  return numbers.join(' ');
}

}  // namespace

void TtestProcListTest::listsWhatMatches_data() {
  QTest::addColumn<QByteArray>("sought");
  QTest::addColumn<int>("column");
  QTest::addColumn<bool>("ascending");
  QTest::addColumn<QByteArray>("numbers");
  const QByteArray all;
  QTest::newRow("all by number") << all << 0 << true << QByteArray("1 3 10 20 300 500");
  QTest::newRow("numbers descending") << all << 0 << false << QByteArray("500 300 20 10 3 1");
  QTest::newRow("by title: empty first, upper bytes last, ties by number")
      << all << 1 << true << QByteArray("500 300 3 1 10 20");
  QTest::newRow("titles descending: ties turned, too") << all << 1 << false << QByteArray("20 10 1 3 300 500");
  QTest::newRow("column equal to the count: numbers, direction kept")
      << all << 2 << false << QByteArray("500 300 20 10 3 1");
  QTest::newRow("negative column: numbers") << all << -7 << true << QByteArray("1 3 10 20 300 500");
  QTest::newRow("search without case or blanks around") << QByteArray(" PUMP\t") << 0 << true << QByteArray("3");
  QTest::newRow("search with umlaut") << QByteArray("\xE4RZ") << 0 << true << QByteArray("20");
  QTest::newRow("search is no pattern") << QByteArray("b.*") << 0 << true << QByteArray();
  QTest::newRow("unused slots are never found") << QByteArray("unused") << 0 << true << QByteArray("300");
  QTest::newRow("blanks alone find all") << QByteArray("  ") << 0 << true << QByteArray("1 3 10 20 300 500");
}

void TtestProcListTest::listsWhatMatches() {
  QFETCH(QByteArray, sought);
  QFETCH(int, column);
  QFETCH(bool, ascending);
  const TtestProcTable table = titles();
  TtestProcList list(table);
  list.search(sought.toStdString());
  TsortOrder order{column, ascending};
  list.sort(order);
  QTEST(numbersIn(list), "numbers");
  QCOMPARE(order.column, column == 1 ? 1 : 0);
  QCOMPARE(order.ascending, ascending);
}

void TtestProcListTest::captionsNameProcedures() {
  TtestProcTable table = titles();
  table.set(5, " lamp ");
  TtestProcList list(table);
  list.search("lamp");
  QCOMPARE(list.caption(5), "5 -  lamp ");
  QCOMPARE(list.rowOf(5), std::optional<std::size_t>(0));
  list.search("pump");
  QCOMPARE(list.caption(5), "5 - lamp");
  QCOMPARE(list.caption(4), "4 - (UNUSED)");
  QCOMPARE(list.caption(77), "77 - ");
  QVERIFY(!list.rowOf(5));
}

void TtestProcListTest::recordTakesTexts() {
  TrecordFields fields;
  for (std::size_t id = 0; id < fieldCount; ++id) fields.texts[id] = "\t x" + std::string(100, 'y');
  fields.texts[fieldModel] = " \xA0m\x01 ";
  fields.texts[fieldCustom2] = "";
  TequipRec record;
  record.setText(fieldCustom2, "old");
  record.setTestProc(9);
  fields.store(record);
  QCOMPARE(record.text(fieldControlNum), "x" + std::string(16, 'y'));
  QCOMPARE(record.text(fieldDescription), "x" + std::string(62, 'y'));
  QCOMPARE(record.text(fieldModel), "\xA0m");
  QCOMPARE(record.text(fieldCustom2), "");
  fields.accept(record, std::nullopt);
  QCOMPARE(record.text(fieldManufacturer), "x" + std::string(20, 'y'));
  QCOMPARE(record.testProc(), 9U);
  fields.accept(record, 500);
  QCOMPARE(record.testProc(), 500U);
}

#include "testProcListTest.moc"
