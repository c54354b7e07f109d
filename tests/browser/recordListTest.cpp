#include <QTest>

#include "browser/csvExport.h"
#include "browser/recordList.h"
#include "browser/settings.h"
#include "support/log.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// The control numbers shown, without anything between them.
QByteArray shown(const TrecordList& list) {
  QByteArray text;
  for (std::size_t i = 0; i < list.view().count(); ++i) text += list.view().cellText(i, fieldControlNum).c_str();
  return text;
}

void add(TrecordList& list, const char* controlNum, const char* description, const char* manufacturer,
         unsigned testProc) {
  edit(list, list.addBlank(), [&](TequipRec& record) {
    record.setText(fieldControlNum, controlNum);
    record.setText(fieldDescription, description);
    record.setText(fieldManufacturer, manufacturer);
    record.setTestProc(testProc);
  });
}

void fill(TrecordList& list) {
  list.titles().set(123, "Lamp, class 9");
  add(list, "a", "Cable", "Nord", 1);
  add(list, "b", "ABC pump",
      "S\xDC"
      "D",
      123);
  add(list, "c", "",
      "s\xFC"
      "d & co",
      2);
  add(list, "d", "Bed", "Lampe AG", 123);
  edit(list, 2, [](TequipRec& record) { record.setText(fieldCustom3, "near 123"); });
}

}  // namespace

class TrecordListTest : public QObject {
  Q_OBJECT
 private slots:
  void searchShowsUnion_data();
  void searchShowsUnion();
  void removeKeepsSearchInForce();
  void copiesGoToTheEndWithoutControlNumber();
  void sortColumnFollowsItsMeaning();
  void exportIsWrittenToTheLetter();
};
EQREC_TEST(TrecordListTest);

void TrecordListTest::searchShowsUnion_data() {
  QTest::addColumn<QByteArrayList>("texts");  // description, manufacturer, model, general
  QTest::addColumn<QByteArray>("found");
  QTest::newRow("inside a word, any case") << QByteArrayList{"aB", "", "", ""} << QByteArray("ab");
  QTest::newRow("letters beyond ASCII, any case") << QByteArrayList{"",
                                                                    "\xFC"
                                                                    "D",
                                                                    "", ""}
                                                  << QByteArray("bc");
  QTest::newRow("two boxes are alternatives, first box's records first")
      << QByteArrayList{"bed", "nord", "", ""} << QByteArray("da");
  QTest::newRow("general: title and custom field, not the number")
      << QByteArrayList{"", "", "", "123"} << QByteArray("c");
  QTest::newRow("general: manufacturer, then titles") << QByteArrayList{"", "", "", "lamp"} << QByteArray("db");
  QTest::newRow("general leaves out the field with a text of its own")
      << QByteArrayList{"zzz", "", "", "bed"} << QByteArray("");
  QTest::newRow("all empty: unchanged") << QByteArrayList{"", "", "", ""} << QByteArray("abcd");
}

void TrecordListTest::searchShowsUnion() {
  QFETCH(QByteArrayList, texts);
  TrecordList list;
  fill(list);
  QVERIFY(
      list.search({texts[0].toStdString(), texts[1].toStdString(), texts[2].toStdString(), texts[3].toStdString()}));
  QTEST(shown(list), "found");
}

void TrecordListTest::removeKeepsSearchInForce() {
  TrecordList list;
  fill(list);
  list.search({"",
               "s\xFC"
               "d",
               "", "lamp"});
  QCOMPARE(shown(list), "bcd");  // d by its title
  list.remove({0, 0});
  QCOMPARE(shown(list), "cd");
  list.removeAdded(list.addBlank());
  QCOMPARE(shown(list), "acd");
  list.search({"nowhere", "", "", ""});
  QVERIFY(!list.search({"bed", "", "", ""}));  // nothing is shown: nothing happens until the search is cleared
  list.clearSearch();
  QCOMPARE(shown(list), "acd");
}

void TrecordListTest::copiesGoToTheEndWithoutControlNumber() {
  TrecordList list;
  fill(list);
  const TrowRange copies = list.copy({1, 3});
  QCOMPARE(copies.top, 4U);
  QCOMPARE(copies.bottom, 6U);
  QCOMPARE(shown(list), "abcd");
  QCOMPARE(list.view().cellText(4, fieldDescription), "ABC pump");
  QCOMPARE(list.view().cellText(4, columnTestProc), "123");
  edit(list, 4, [](TequipRec& record) { record.setText(fieldDescription, "changed"); });
  QCOMPARE(list.view().cellText(1, fieldDescription), "ABC pump");
}

void TrecordListTest::sortColumnFollowsItsMeaning() {
  TbrowserSettings settings;
  TrecordList list;
  list.buildColumns(settings);
  TsortOrder byTitle{6, false};
  TsortOrder byDescription{2, false};
  settings.shown[2] = false;  // the description
  TrecordList same;
  same.buildColumns(TbrowserSettings());
  list.changeColumns(settings, byTitle);
  same.changeColumns(settings, byDescription);
  QVERIFY(byTitle.column == 5 && !byTitle.ascending);
  QVERIFY(byDescription.column == 0 && byDescription.ascending);  // its column is gone
}

void TrecordListTest::exportIsWrittenToTheLetter() {
  const TtestFolder folder;
  TrecordList list;
  fill(list);
  list.search({"", "", "", "near"});
  add(list, "x,1", "\"q\" \xE4", "", 500);
  QVERIFY(exportRecords(list.view(), list.titles(), folder / "e.csv") == TexportResult::done);
  QCOMPARE(linesOf(folder / "e.csv"),
           "<index>,<control nun>,<description>,<manufacturer>,<model>,<test procedure num>,<test procedure title>,"
           "<custom1>,<custom2>,<custom3>\n2,c,,s\xFC"
           "d & co,,2,,,,near 123\n4,x,1,\"q\" \xE4,,,500,,,,\n");
  list.search({"nowhere", "", "", ""});
  QVERIFY(exportRecords(list.view(), list.titles(), folder / "e.csv") == TexportResult::nothingShown);
  QCOMPARE(linesOf(folder / "e.csv"), "");
  openLog(folder.path());
  QVERIFY(exportRecords(list.view(), list.titles(), folder.path()) == TexportResult::notOpened);
  closeLog();
  QVERIFY(bytesOf(folder / "EquipmentRecord.log").contains("open " + folder.path().string()));
}

#include "recordListTest.moc"
