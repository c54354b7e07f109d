#include <QDate>
#include <QTest>
#include <locale>

#include "store/commitMarker.h"
#include "store/testRecords.h"
#include "tools/openList.h"
#include "tools/simulatedFiles.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

const QByteArrayList bothKept{"eq.dat.kept-1", "eqinfo.dat.kept-1"};

/// Loads, makes a change and saves it, with an operation that fails, makes another one and saves again. Looks for
/// messages and kept copies; null for no file.
void checkKept(const QByteArray& data, const QByteArray& info, const char* failing, const char* captions,
               const QByteArrayList& kept) {
  TfileMap before;
  if (!data.isNull()) before["/DATA/eq.dat"] = data.toStdString();
  if (!info.isNull()) before["/DATA/eqinfo.dat"] = info.toStdString();
  TsimulatedFiles disk{TsimulatedDisk(before)};
  disk.failing = {failing};
  TopenList list("/", disk);
  QByteArray shown = list.load();
  for (const char* number : {"N", "M"}) {
    list.add(makeRecord({number, "new"}, 5));
    shown += list.save();
  }
  QCOMPARE(shown, captions);
  QByteArrayList found;
  for (const auto& [path, node] : disk.history.back().names) {
    const auto suffix = path.find(".kept-");
    if (suffix == std::string::npos) continue;
    found << path.c_str() + 6;
    QCOMPARE(disk.history.back().contentOf(path), before[path.substr(0, suffix)]);
  }
  QCOMPARE(found, kept);
}

}  // namespace

class TrecordsTest : public QObject {
  Q_OBJECT
 private slots:
  void keepsWhatWasNotRead() {
    const QByteArray data = dataLine("A", 1);
    const QByteArray info = infoLine("A", "a");
    const QByteArray longName(18, 'x');
    checkKept(data, info, "", "", {});
    checkKept(data + "!\n", info, "", "ERINVALIDRECORDS", bothKept);
    checkKept(data.repeated(18434), info.repeated(18434), "", "ERDATAOVERFLOW", bothKept);
    checkKept({}, info, "", "ER1STFILENOTFOUND", {"eqinfo.dat.kept-1"});
    checkKept(data, {}, "", "ER2NDFILENOTFOUND", {"eq.dat.kept-1"});
    checkKept(data, infoLine("A", QByteArray(64, 'x')), "", "", bothKept);
    checkKept(dataLine(longName, 1), infoLine(longName, ""), "", "", bothKept);
    checkKept(data, infoLine("B", "a"), "", "", bothKept);
    checkKept(data, info, "read eqinfo.dat 1", "General EREXCEPTION", bothKept);
    checkKept(data, info, "closeRead eqinfo.dat 1", "Unknown Exception", bothKept);
    checkKept("!\n", info, "write eqinfo.dat.new 2", "ERINVALIDRECORDSGeneral EREXCEPTION", bothKept);
    checkKept("!\n", info, "rename eq.dat.new 2", "ERINVALIDRECORDSGeneral EREXCEPTION", bothKept);
    checkKept("!\n", info, "write eqinfo.dat.new 1", "ERINVALIDRECORDSGeneral EREXCEPTION", bothKept);
    checkKept(data, info, "rename eqinfo.dat.new 1", "General EREXCEPTION", {});  // the next save finishes this one
  }

  void oneFileWithoutTheOtherIsLeftAlone() {
    for (const char* path : {"/DATA/eq.dat", "/DATA/eqinfo.dat"}) {
      TsimulatedFiles disk(TsimulatedDisk(TfileMap{{path, "x"}}));
      TopenList list("/", disk);
      list.load();
      QCOMPARE(list.save(), "");
      QCOMPARE(disk.history.back().names.size(), std::size_t{2});  // with the lock
      QVERIFY(disk.history.back().contains(path));
    }
  }

  /// As release 0.1 left it.
  void decidedSaveOfTheFirstReleaseIsFinished() {
    TsimulatedFiles disk(TsimulatedDisk(
        TfileMap{{"/DATA/eq.dat.new", "\"N\",7\n"},
                 {"/DATA/eqinfo.dat.new", "\"N\",\"new\",\"\",\"\",\"\",\"\",\"\"\n"},
                 {"/DATA/eq.commit", "EQCOMMIT1\n6 57db72ad eq.dat\n25 5f272ec8 eqinfo.dat\n51 2eb04ced end\n"}}));
    QCOMPARE(loadText("/DATA", disk), "0: N 7 new");
    QCOMPARE(disk.history.back().names.size(), std::size_t{3});  // with the lock
  }

  void changeDuringALoadIsJoined() {
    const QByteArray info = infoLine("A", "a");
    TsimulatedFiles disk(TsimulatedDisk(
        TfileMap{{"/DATA/eq.dat", dataLine("A", 1).toStdString()}, {"/DATA/eqinfo.dat", info.toStdString()}}));
    disk.before = [&](const QByteArray& operation) {
      if (operation != "closeRead eqinfo.dat 1") return;
      auto& file = disk.history.back().nodeAt("/DATA/eqinfo.dat");
      file.content = infoLine("A", "theirs").toStdString();
      ++file.writes;
    };
    TopenList list("/", disk);
    list.load();
    list.add(makeRecord({"B", "b"}));
    QCOMPARE(list.save(), "List Changed Meanwhile");
    QCOMPARE(textOf(list.records()), "A 1 theirs, B 1 b");
  }

  void failureWhileJoiningLosesNothing() {
    for (qsizetype step = 1, count = 1; step <= count; ++step) {
      TsimulatedFiles disk{TsimulatedDisk()};
      TopenList theirs("/", disk);
      TopenList ours("/", disk);
      theirs.load();
      theirs.add(makeRecord({"A", "a"}));
      theirs.save();
      ours.load();
      theirs.add(makeRecord({"B", "b"}));
      ours.add(makeRecord({"C", "c"}));
      QCOMPARE(theirs.save(), "");
      const qsizetype before = disk.operations.size();
      disk.firstFailing = disk.lastFailing = before + step;
      const bool isJoined = ours.save() == "List Changed Meanwhile";
      count = disk.operations.size() - before;
      disk.lastFailing = 0;
      const QByteArray list = loadText("/DATA", disk);
      QVERIFY2(list == "0: A 1 a, B 1 b, C 1 c" || (!isJoined && list == "0: A 1 a, B 1 b"), list);
    }
  }

  void savesAreJoinedAndSayWhatCollided() {
    const TtestFolder folder;
    writeBytes(folder / "DATA/eq.dat", dataLine("A", 1) + dataLine("B", 1));
    writeBytes(folder / "DATA/eqinfo.dat", infoLine("A", "a") + infoLine("B", "b"));
    TopenList one(folder.path());
    TopenList other(folder.path());
    TopenList reader(folder.path());
    QCOMPARE(one.load() + other.load() + reader.load(), "");
    edit(other, 0, [](TequipRec& record) { record.setText(fieldDescription, "theirs"); });
    QCOMPARE(other.save(), "");
    edit(one, 0, [](TequipRec& record) { record.setText(fieldDescription, "ours"); });
    one.add(makeRecord({"C", "c"}, 3));
    QCOMPARE(one.save(), "List Changed Meanwhile");
    QVERIFY(one.report.details.starts_with("1 field was changed by both."));
    QVERIFY(one.report.details.ends_with("kept in eq.dat.kept-1 and eqinfo.dat.kept-1."));
    QCOMPARE(loadText(folder / "DATA"), "0: A 1 ours, B 1 b, C 3 c");
    QVERIFY(bytesOf(folder / "DATA/eqinfo.dat.kept-1").contains("theirs"));
    QCOMPARE(textOf(one.records()), "A 1 ours, B 1 b, C 3 c");
    QCOMPARE(reader.save(), "");  // nothing to save, so nothing is written
    QCOMPARE(loadText(folder / "DATA"), "0: A 1 ours, B 1 b, C 3 c");
  }

  void touchedFilesHaveNotChangedAndRemovedOnesAreTold() {
    const TtestFolder folder;
    TopenList list(folder.path());
    std::filesystem::create_directory(folder / "DATA");
    list.load();
    list.add(makeRecord({"A", "a"}));
    QCOMPARE(list.save(), "");
    writeBytes(folder / "DATA/eq.dat", bytesOf(folder / "DATA/eq.dat"));
    list.add(makeRecord({"B", "b"}));
    QCOMPARE(list.save(), "");
    for (int i = 0; i < 2; ++i) {
      std::filesystem::remove(folder / "DATA/eq.dat");
      QCOMPARE(list.save(), "List Changed Meanwhile");
      QCOMPARE(list.report.details, "What was left of them is kept as eqinfo.dat.kept-1.");  // one copy of equal files
    }
    QCOMPARE(loadText(folder / "DATA"), "0: A 1 a, B 1 b");
  }

  void listsThatCannotBeJoinedAreKept() {
    for (const QByteArray& theirs : {dataLine("X", 1).repeated(int(equipRecLimit)), QByteArray("!\n")}) {
      const TtestFolder folder;
      writeBytes(folder / "DATA/eq.dat", dataLine("A", 1));
      writeBytes(folder / "DATA/eqinfo.dat", infoLine("A", "a"));
      writeBytes(folder / "DATA/eq.dat.kept-1", "not overwritten");
      writeBytes(folder / "DATA/eqinfo.dat.kept-2", "");
      TopenList list(folder.path());
      list.load();
      list.add(makeRecord({"B", "b"}));
      writeBytes(folder / "DATA/eq.dat", theirs);
      writeBytes(folder / "DATA/eqinfo.dat", infoLine("X", "x").repeated(int(equipRecLimit)));
      QCOMPARE(list.save(), "List Changed Meanwhile");
      QVERIFY(list.report.details.ends_with("kept in eq.dat.kept-3 and eqinfo.dat.kept-3."));
      QCOMPARE(bytesOf(folder / "DATA/eq.dat.kept-3"), theirs);
      QCOMPARE(bytesOf(folder / "DATA/eq.dat.kept-1"), "not overwritten");
      QCOMPARE(loadText(folder / "DATA"), "0: A 1 a, B 1 b");
    }
  }

  void firstSaveOfADayKeepsThePairBefore() {
    const TtestFolder folder;
    const auto backups = folder / "DATA/BACKUP";
    const auto today = QDate::currentDate().toString(Qt::ISODate).toStdString();
    for (int day = 10; day < 30; ++day) writeBytes(backups / ("2020-01-" + std::to_string(day)) / "eq.dat", "x");
    writeBytes(backups / "2020-01-05.new-0123456789abcdef/eq.dat", "x");
    writeBytes(backups / "2020-01-10/mine", "x");
    writeBytes(folder / "DATA/eq.dat", dataLine("A", 1));
    writeBytes(folder / "DATA/eqinfo.dat", infoLine("A", "a"));
    TopenList list(folder.path());
    list.load();
    QCOMPARE(list.save(), "");
    QVERIFY(!std::filesystem::exists(backups / today));  // nothing has changed
    for (const char* number : {"B", "C"}) {
      list.add(makeRecord({number, ""}));
      QCOMPARE(list.save(), "");
    }
    QCOMPARE(loadText(backups / today), "0: A 1 a");
    const QByteArrayList left = namesIn(backups);
    QVERIFY(left.contains("2020-01-10") && left.contains("2020-01-17") && !left.contains("2020-01-16"));
    QCOMPARE(left.size(), 15);  // 14 days, and the one that holds something else
  }

  void lockOfAnotherOrAHugeFileEndsALoad() {
    TsimulatedFiles disk{TsimulatedDisk()};
    disk.locked.insert("/DATA/eq.lock");
    TopenList list("/", disk);
    QCOMPARE(list.load() + list.save(), "ER1STFILENOTFOUNDER1STFILENOTFOUND");
    const TtestFolder folder;
    writeBytes(folder / "DATA/eq.dat", "");
    std::filesystem::resize_file(folder / "DATA/eq.dat", (64U << 20U) + 1);
    QCOMPARE(TopenList(folder.path()).load(), "General EREXCEPTION");
  }

  void markerIsReadBackInAnyLocale() {
    struct Tgrouping : std::numpunct<char> {
      std::string do_grouping() const override { return "\3"; }
    };
    const TcommitMarker marker{"eq.dat.new-1", "eqinfo.dat.new-1", {{1234567, 0x1234}, {7654321, 0xABCDEF01}}};
    const std::locale before = std::locale::global(std::locale(std::locale(), new Tgrouping));
    const std::string text = marker.toText();
    const auto found = TcommitMarker::fromText(text);
    std::locale::global(before);
    QVERIFY(found && found->sums == marker.sums && text == marker.toText());
  }

  void recordTakesWhatFits() {
    constexpr std::array<int, fieldCount> longest = {17, 63, 21, 21, 63, 63, 63};
    TequipRec record;
    QVERIFY(record.setTestProc(9));
    for (int id = 0; id < fieldCount; ++id) QVERIFY(record.setText(id, QByteArray(200, char('a' + id)).constData()));
    for (int id = 0; id < fieldCount; ++id) {
      const int length = longest[static_cast<std::size_t>(id)];
      QCOMPARE(QByteArray(record.text(id)), QByteArray(length, char('a' + id)));
      QVERIFY(!record.setText(id, static_cast<const char*>(nullptr)));
      QVERIFY(record.setText(id, "y"));
      QCOMPARE(QByteArray(record.text(id), length + 1), QByteArray("y").leftJustified(length + 1, '\0'));
    }
    record.clear();
    for (int id = 0; id < fieldCount; ++id) QCOMPARE(record.text(id), "");
    QCOMPARE(record.testProc(), 1U);
    for (const unsigned number : {1U, 9U, 500U}) QVERIFY(record.setTestProc(number) && record.testProc() == number);
    for (const unsigned number : {0U, 501U, 65537U}) QVERIFY(!record.setTestProc(number) && record.testProc() == 500);
    for (const int id : {998, -1, 7}) {
      QVERIFY_THROWS_EXCEPTION(TERException, record.setText(id, "x"));
      QVERIFY_THROWS_EXCEPTION(TERException, record.text(id));
    }
  }

  void changeIsTakenBackByItsInverse() {
    TequipRecTable table = tableOf("A 1 a, B 2 b, C 3 c, D 4 d");
    const TequipRec x = makeRecord({"X", "x"}, 7);
    const TequipRec z = makeRecord({"Z", "z"}, 9);
    TlistChange change(TremoveRecords{{0, 2}});
    change.add(TinsertRecords{{0, 2, 4}, {x, makeRecord({"Y", "y"}, 8), z}});
    change.add(TreplaceRecord{1, z});
    change.add(TremoveRecords{{4}});
    const std::uint64_t revision = table.revision();
    TlistChange inverse = applyChange(table, std::move(change));
    QCOMPARE(textOf(table), "X 7 x, Z 9 z, Y 8 y, D 4 d");
    QVERIFY(table.revision() != revision);
    const TlistChange again = applyChange(table, std::move(inverse));
    QCOMPARE(textOf(table), "A 1 a, B 2 b, C 3 c, D 4 d");
    applyChange(table, again);
    QCOMPARE(textOf(table), "X 7 x, Z 9 z, Y 8 y, D 4 d");
    applyChange(table, TlistChange::append(4, {x}));
    QCOMPARE(textOf(table), "X 7 x, Z 9 z, Y 8 y, D 4 d, X 7 x");
  }

  void changeThatDoesNotFitChangesNothing() {
    TequipRecTable table = tableOf("A 1 a, B 2 b");
    const std::initializer_list<TlistStep> steps = {TremoveRecords{{2}},
                                                    TremoveRecords{{1, 0}},
                                                    TremoveRecords{{1, 1}},
                                                    TreplaceRecord{2, {}},
                                                    TinsertRecords{{3}, std::vector<TequipRec>(1)},
                                                    TinsertRecords{{2}, std::vector<TequipRec>(2)}};
    for (const TlistStep& step : steps) {
      QVERIFY_THROWS_EXCEPTION(std::out_of_range, applyChange(table, TlistChange(step)));
      QCOMPARE(textOf(table), "A 1 a, B 2 b");
    }
  }
};
EQREC_TEST(TrecordsTest);

#include "recordsTest.moc"
