#include <QTest>
#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

#include "browser/columnLayout.h"
#include "browser/csvExport.h"
#include "browser/recordList.h"
#include "browser/settings.h"
#include "browser/undoSteps.h"
#include "browser/view.h"
#include "support/iniFile.h"
#include "support/log.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// The control numbers shown, joined.
QByteArray shown(const Tview& view) {
  QByteArray text;
  for (std::size_t i = 0; i < view.count(); ++i) text += view.cellText(i, fieldControlNum).c_str();
  return text;
}

struct Tlist {
  TequipRecTable records;
  TtestProcTable titles;
  Tview view{records, titles};

  void add(const char* controlNum, const char* description, unsigned testProc) {
    append(records, makeRecord({controlNum, description}, testProc));
    view.showAll();
  }
};

void add(TrecordList& list, const std::vector<std::string>& texts, unsigned testProc) {
  const TrecordIndex index = list.addBlank();
  edit(list, index, [&](TequipRec& record) { record = makeRecord(texts, testProc); });
  list.keepAdded(index);
}

using Trecords = std::vector<TequipRec>;

Trecords contentOf(const TrecordList& list) {
  Trecords records;
  for (TrecordIndex i = 0; i < list.records().count(); ++i) records.push_back(list.records().at(i));
  return records;
}

void fill(TrecordList& list) {
  list.titles().set(123, "Lamp, class 9");
  add(list, {"a", "Cable", "Nord"}, 1);
  add(list, {"b", "ABC pump", "S\xDC\x44"}, 123);
  add(list, {"c", "", "s\xFC\x64 & co"}, 2);
  add(list, {"d", "Bed", "Lampe AG"}, 123);
  edit(list, 2, [](TequipRec& record) { record.setText(fieldCustom3, "near 123"); });
}

}  // namespace

class TrecordListTest : public QObject {
  Q_OBJECT
 private slots:
  void sortsStably() {
    const std::initializer_list<std::tuple<const char*, const char*, unsigned>> records = {
        {"a", "pump", 10}, {"b", "Zoom", 3}, {"c", "", 4}, {"d", "Defibrillator B", 2}, {"e", "Defibrillator A", 256},
        {"f", "pump", 10}};
    const std::initializer_list<std::pair<int, QByteArray>> cases = {
        {997, "abcdef"},    // record number
        {0, "abcdef"},      // control number
        {1, "cedbaf"},      // text: empty first, upper case before lower, equal texts in table order
        {998, "dbcafe"},    // test procedure, by value
        {999, "aefcdb"},    // title: no entry first, equal titles in table order
        {1000, "abcdef"}};  // no such column: record number
    for (auto [column, order] : cases) {
      Tlist list;
      for (const unsigned number : {2U, 4U}) list.titles.set(number, "Beta");
      list.titles.set(3, "alpha");
      for (const auto& [controlNum, description, testProc] : records) list.add(controlNum, description, testProc);
      list.view.sort(static_cast<TcolumnId>(column), true);
      QCOMPARE(shown(list.view), order);
      list.view.showAll();
      list.view.sort(static_cast<TcolumnId>(column), false);
      std::reverse(order.begin(), order.end());
      QCOMPARE(shown(list.view), order);
    }
  }

  void sortsUpperBytesLast() {
    Tlist list;
    list.add("x", "\xC4rztezimmer", 1);
    list.add("y", "zoom", 1);
    list.add("z", "12345678\xFF", 1);
    list.add("w", "12345678a", 1);
    list.add("2", "Syringe pump of the second ward, east", 1);
    list.add("1", "Syringe pump of the second ward", 1);
    list.view.sort(fieldDescription, true);
    QCOMPARE(shown(list.view), "wz12yx");
  }

  /// Beyond 192 records the list is sorted in another way.
  void longListIsSortedLikeAShortOne() {
    Tlist list;
    std::vector<std::string> texts;
    std::minstd_rand random(1);
    for (int i = 0; i < 1000; ++i) {
      std::string text(random() % 30, 'm');
      if (!text.empty()) text[random() % text.size()] = static_cast<char>('a' + random() % 26);
      append(list.records, makeRecord({std::to_string(i), text}, static_cast<unsigned>(random() % 200 + 1)));
      texts.push_back(text);
    }
    for (const TcolumnId column : {TcolumnId(fieldDescription), columnTestProc}) {
      std::vector<TrecordIndex> expected(texts.size());
      std::iota(expected.begin(), expected.end(), TrecordIndex{0});
      std::stable_sort(expected.begin(), expected.end(), [&](TrecordIndex a, TrecordIndex b) {
        const auto& records = list.records;
        return column == columnTestProc ? records.at(a).testProc() < records.at(b).testProc() : texts[a] < texts[b];
      });
      list.view.showAll();
      list.view.sort(column, true);
      for (std::size_t row = 0; row < expected.size(); ++row) QCOMPARE(list.view.at(row), expected[row]);
    }
  }

  void cellsShowWhatColumnsSay() {
    Tlist list;
    list.titles.set(7, " \tLamp\xA0 ");
    list.add("\x01 A\xA0 1 \r", "\"quoted\"", 7);
    const std::array<std::pair<int, const char*>, 7> expected = {{{997, "1"},
                                                                  {0, "A\xA0 1"},
                                                                  {1, "\"quoted\""},
                                                                  {2, ""},
                                                                  {998, "7"},
                                                                  {999, "Lamp\xA0"},
                                                                  {1001, "INVALID DATA"}}};
    for (const auto& [column, text] : expected) {
      QCOMPARE(list.view.cellText(0, static_cast<TcolumnId>(column)), text);
    }
  }

  void searchShowsUnion() {
    const std::initializer_list<std::pair<TsearchTexts, const char*>> cases = {
        {{"aB", "", "", ""}, "ab"},        // inside a word, any case
        {{"", "\xFC\x44", "", ""}, "bc"},  // letters beyond ASCII, any case
        {{"bed", "nord", "", ""}, "da"},   // either box; the first box's records come first
        {{"", "", "", "123"}, "c"},        // general: title and custom field, not the number
        {{"", "", "", "lamp"}, "db"},      // general: manufacturer, then titles
        {{"zzz", "", "", "bed"}, ""},      // general leaves out a field that has a text of its own
        {{"", "", "", ""}, "abcd"}};       // all boxes empty: unchanged
    for (const auto& [texts, found] : cases) {
      TrecordList list;
      fill(list);
      QVERIFY(list.search(texts));
      QCOMPARE(shown(list.view()), found);
    }
  }

  void removeKeepsSearchInForce() {
    TrecordList list;
    fill(list);
    list.search({"", "s\xFC\x64", "", "lamp"});
    QCOMPARE(shown(list.view()), "bcd");  // d by its title
    QCOMPARE(list.searchInWords(), "Manufacturer \"s\xFC\x64\", General \"lamp\"");
    list.search({"e", "", "", ""});
    QCOMPARE(shown(list.view()), "ad");
    list.remove({0, 0});
    QCOMPARE(shown(list.view()), "d");
    list.removeAdded(list.addBlank());
    QCOMPARE(shown(list.view()), "bcd");
    edit(list, 0, [](TequipRec& record) { record.setText(fieldDescription, "Heated bed"); });
    list.search({"bed", "", "", ""});
    QCOMPARE(shown(list.view()), "bd");
    list.search({"nowhere", "", "", ""});
    QVERIFY(!list.search({"bed", "", "", ""}));  // nothing is shown: nothing happens until the search is cleared
    list.clearSearch();
    QCOMPARE(shown(list.view()), "bcd");
    QCOMPARE(list.searchInWords(), "");
  }

  void everyStepIsUndoneAndRedone() {
    TrecordList list;
    TsortOrder order;
    std::vector<Trecords> states = {contentOf(list)};
    const auto change = [&](const std::function<void()>& make) {
      make();
      states.push_back(contentOf(list));
    };
    const TundoSteps& steps = list.steps();
    list.buildColumns(TbrowserSettings());
    for (const char* text : {"a", "b", "c", "d"}) change([&] { add(list, {text, text}, 3); });
    change([&] { list.copy({1, 2}); });
    change([&] { list.remove({0, 3}); });
    change([&] { list.makeStep(TstepKind::change, TlistChange(TreplaceRecord{1, makeRecord({"e"})})); });
    change([&] { list.makeStep(TstepKind::import, TlistChange::append(2, {makeRecord({"f"}), makeRecord({"g"})})); });
    list.makeStep(TstepKind::import, TlistChange::append(4, {}));  // adds nothing, so it is no step
    for (int round = 0; round < 2; ++round) {
      for (std::size_t i = states.size() - 1; i-- > 0; list.goStep(TstepWay::undo, order)) {
        QVERIFY(contentOf(list) == states[i + 1]);
      }
      QVERIFY(!steps.can(TstepWay::undo) && contentOf(list).empty());
      for (std::size_t i = 1; i < states.size(); ++i) {
        list.goStep(TstepWay::redo, order);
        QVERIFY(contentOf(list) == states[i]);
      }
      QVERIFY(!steps.can(TstepWay::redo));
    }
    list.goStep(TstepWay::undo, order);
    list.removeAdded(list.addBlank());
    QVERIFY2(steps.can(TstepWay::redo), "a cancelled New is a step");
    list.remove({0, 0});
    QVERIFY2(!steps.can(TstepWay::redo), "redo after another change");
    list.setRecords(TequipRecTable());
    QVERIFY(!steps.can(TstepWay::undo));
  }

  void stepsShowTheirRecords() {
    TrecordList list;
    fill(list);
    list.buildColumns(TbrowserSettings());
    TsortOrder byDescription{2, true};
    list.clearSearch();
    list.sort(byDescription);  // c b d a
    list.remove({1, 2});
    const auto adjacent = list.goStep(TstepWay::undo, byDescription);
    QCOMPARE(shown(list.view()), "cbda");
    QVERIFY(adjacent.rows->top == 1 && adjacent.rows->bottom == 2);
    list.clearSearch();
    list.remove({0, 1});
    const auto apart = list.goStep(TstepWay::undo, byDescription);  // a and b, with d between them
    QVERIFY(apart.rows->top == 1 && apart.rows->bottom == 1);
    const auto removed = list.goStep(TstepWay::redo, byDescription);
    QVERIFY(removed.rows->top == 1 && removed.rows->bottom == 1);
    list.search({"", "s\xFC\x64", "", ""});  // finds c; of the step's records only b
    const auto found = list.goStep(TstepWay::undo, byDescription);
    QCOMPARE(shown(list.view()), "cb");
    QVERIFY(found.rows->top == 1 && found.rows->bottom == 1 && !found.searchCleared);
    list.goStep(TstepWay::redo, byDescription);
    list.search({"", "co", "", ""});
    QVERIFY(list.goStep(TstepWay::undo, byDescription).searchCleared);
    QCOMPARE(shown(list.view()), "cbda");
  }

  void changesAreFollowedRecordByRecord() {
    TlistChange change(TremoveRecords{{0, 2}});  // of 0 1 2 3
    change.add(TinsertRecords{{0, 3}, std::vector<TequipRec>(2)});
    change.add(TreplaceRecord{2, TequipRec()});
    change.add(TremoveRecords{{0, 1}});
    const TtouchedRecords touched = touchedBy(change, 4);
    QVERIFY(touched.removed == std::vector<bool>({true, true, true, false}));
    QVERIFY(touched.present == std::vector<bool>({true, true}));
  }

  void displayFlagsMakeColumns() {
    const std::initializer_list<std::pair<QByteArray, const char*>> cases = {
        {"", "997 0 1 2 3 998 999"},
        {"DESCRIPTION=0\nMANUFACTURER=0\nMODEL=0\nTITLE=0\n", "997 0 998"},
        {"CUSTOM1=1\nCUSTOM2=1\nCUSTOM3=1\n", "997 0 1 2 3 998 999 4 5 6"},
        {"DESCRIPTION=2\nMODEL=-1\n", "997 0 2 998 999"},      // neither 0 nor 1: hidden
        {"TITLE=yes\nCUSTOM2=yes\n", "997 0 1 2 3 998 999"}};  // not a number: the default
    for (const auto& [ini, ids] : cases) {
      const TtestFolder folder;
      if (!ini.isEmpty()) writeBytes(folder / "e.ini", "[DISPLAY]\n" + ini);
      TcolumnLayout columns;
      columns.build(TbrowserSettings::load(TiniFile(folder / "e.ini")));
      QByteArrayList found;
      for (int i = 0; i < columns.count(); ++i) found << QByteArray::number(columns.id(i));
      QCOMPARE(found.join(' '), ids);
    }
  }

  void sortColumnFollowsItsMeaning() {
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

  void exportIsWrittenToTheLetter() {
    const TtestFolder folder;
    TrecordList list;
    fill(list);
    list.search({"", "", "", "near"});
    add(list, {"x,1", "\"q\" \xE4"}, 500);
    QVERIFY(exportRecords(list.view(), list.titles(), folder / "e.csv") == TexportResult::done);
    QCOMPARE(linesOf(folder / "e.csv"),
             "<index>,<control nun>,<description>,<manufacturer>,<model>,<test procedure num>,<test procedure title>,"
             "<custom1>,<custom2>,<custom3>\n2,c,,s\xFC\x64 & co,,2,,,,near 123\n4,x,1,\"q\" \xE4,,,500,,,,\n");
    list.search({"nowhere", "", "", ""});
    QVERIFY(exportRecords(list.view(), list.titles(), folder / "e.csv") == TexportResult::nothingShown);
    QCOMPARE(linesOf(folder / "e.csv"), "");
    openLog(folder.path());
    QVERIFY(exportRecords(list.view(), list.titles(), folder.path()) == TexportResult::notOpened);
    closeLog();
    QVERIFY(bytesOf(folder / "EquipmentRecord.log").contains("open " + folder.path().string()));
  }
};
EQREC_TEST(TrecordListTest);

#include "recordListTest.moc"
