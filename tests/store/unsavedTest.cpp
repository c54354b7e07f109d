#include <QByteArrayList>
#include <QTest>
#include <algorithm>
#include <functional>

#include "store/unsavedChanges.h"
#include "store/unsavedFormat.h"
#include "tools/recordChanges.h"
#include "tools/simulatedFiles.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

const std::string firstName = "/one/EquipmentRecord.unsaved";
const TpairSums noSums{};
const TpairSums savedSums{{10, 1}, {20, 2}};
const TpairSums otherSums{{10, 1}, {20, 3}};

/// Edits, told as "+A1 A1>A2 -A2".
TlistEdits editsFrom(const QByteArray& text) {
  TlistEdits edits;
  for (const QByteArray& word : text.split(' ')) {
    if (word.isEmpty()) continue;
    TlistEdit& edit = edits.emplace_back();
    const auto record = [](const QByteArray& name) { return makeRecord({name.toStdString()}); };
    const QByteArrayList names = word.split('>');
    if (word[0] != '+') edit.was = record(word[0] == '-' ? word.mid(1) : names[0]);
    if (word[0] != '-') edit.became = record(word[0] == '+' ? word.mid(1) : names[1]);
  }
  return edits;
}

/// The same way, sorted.
QByteArray wordsOf(const TlistEdits& edits) {
  QByteArrayList words;
  for (const auto& [was, became, alike, sameNumber, sameContent] : edits) {
    const QByteArray before = was ? was->text(fieldControlNum) : "";
    const QByteArray after = became ? became->text(fieldControlNum) : "";
    words << (!was ? '+' + after : !became ? '-' + before : before + '>' + after);
  }
  std::sort(words.begin(), words.end());
  return words.join(' ');
}

QByteArray wordsOf(const std::vector<TlistEdits>& orphans) {
  TlistEdits all;
  for (const TlistEdits& edits : orphans) all.insert(all.end(), edits.begin(), edits.end());
  return wordsOf(netEdits(std::move(all)));
}

/// What a program that starts on this disk is offered.
QByteArray foundOn(const TsimulatedDisk& disk, const TpairSums& current) {
  TsimulatedFiles files(disk);
  TunsavedChanges changes({"/one", "/two"}, files);
  changes.begin("list");
  return wordsOf(changes.findOrphans(current));
}

/// A program on a simulated disk.
struct Tprogram {
  explicit Tprogram(const TsimulatedDisk& disk = TsimulatedDisk(), const std::string& list = "list") : files(disk) {
    changes.begin(list);
  }

  /// Does something, and looks at every state of the disk meanwhile, left by a killed program or a loss of power:
  /// exactly these changes may be offered.
  void step(const std::function<void()>& work, const QByteArrayList& allowed) {
    files.history = {files.history.back()};
    work();
    for (const TsimulatedDisk& disk : files.history) {
      check(disk, allowed);
      for (const TfileMap& survivor : disk.afterPowerLoss()) check(TsimulatedDisk(survivor), allowed);
    }
    // The work is done: only its own result counts.
    for (const TfileMap& survivor : files.history.back().afterPowerLoss()) {
      check(TsimulatedDisk(survivor), {allowed.back()});
      left.insert(survivor);
    }
  }
  void check(const TsimulatedDisk& disk, const QByteArrayList& allowed) {
    const QByteArray found = foundOn(disk, current);
    if (!allowed.contains(found))
      wrong << found + ", not " + allowed.join(" or ") + " after " + files.operations.join(", ");
  }
  void add(const QByteArray& edits, const QByteArrayList& allowed) {
    step([&] { changes.add(editsFrom(edits)); }, allowed);
  }
  void save() {
    const QByteArray net = wordsOf(changes.net());
    step([&] { changes.saving(savedSums); }, {net});
    current = savedSums;
    step([&] { changes.saved(); }, {""});
  }
  /// Changes, a save and more changes.
  void ordinaryDay() {
    add("+A1", {"", "+A1"});
    add("A1>A2 X1>X2", {"+A1", "+A2 X1>X2"});
    save();
    add("+C1", {"", "+C1"});
    add("-C1", {"+C1", ""});
  }

  TsimulatedFiles files;
  TpairSums current;
  TunsavedChanges changes{{"/one", "/two"}, files};
  std::set<TfileMap> left;
  QByteArrayList wrong;
};

/// A disk with the files of two killed programs, the second with two changes.
TsimulatedDisk twoOrphans() {
  TsimulatedFiles files{TsimulatedDisk()};
  TunsavedChanges one({"/one"}, files);
  TunsavedChanges other({"/one"}, files);
  for (TunsavedChanges* changes : {&one, &other}) changes->begin("list");
  one.add(editsFrom("+A1"));
  other.add(editsFrom("+B1"));
  other.add(editsFrom("B1>B2"));
  return files.history.back();
}

}  // namespace

/// The file of unsaved changes: what a killed program leaves is offered once.
class TunsavedTest : public QObject {
  Q_OBJECT
 private slots:
  void killedOrPowerLostAtAnyTime() {
    Tprogram program;
    program.ordinaryDay();
    QCOMPARE(program.wrong, QByteArrayList());
    // It happens again to the next program.
    for (const TfileMap& survivor : std::set(program.left)) {
      Tprogram next{TsimulatedDisk(survivor)};
      const QByteArray found = wordsOf(next.changes.findOrphans(noSums));
      next.step([&] { next.changes.adopt(editsFrom(found)); }, {found});
      next.add("Z1>Z2", {found, (found + " Z1>Z2").trimmed()});
      next.save();
      QCOMPARE(next.wrong, QByteArrayList());
    }
  }

  void killedOrPowerLostWhileOrphansAreTaken() {
    const QByteArray both = "+A1 +B2";
    for (const QByteArray& end : QByteArrayList{"adopted", "in the list", "set aside"}) {
      Tprogram program(twoOrphans());
      program.step([&] { QCOMPARE(wordsOf(program.changes.findOrphans(noSums)), both); }, {both});
      if (end == "adopted") {
        program.step([&] { program.changes.adopt(editsFrom(both)); }, {both});
        for (const TsimulatedDisk& killed : std::vector(program.files.history)) {
          Tprogram next(killed);
          next.step([&] { next.changes.findOrphans(noSums); }, {both});
          next.step([&] { next.changes.adopt(editsFrom(both)); }, {both});
          QCOMPARE(next.wrong, QByteArrayList());
        }
        program.add("-A1", {both, "+B2"});
        program.save();
      } else if (end == "in the list") {
        program.step([&] { program.changes.adopt({}); }, {both, "+A1", "+B2", ""});
      } else {
        program.step([&] { program.changes.setAside(); }, {both, "+A1", "+B2", ""});
      }
      QCOMPARE(program.wrong, QByteArrayList());
      QCOMPARE(program.files.history.back().names.size(), std::size_t(end == "set aside" ? 2 : 0));
    }
  }

  void operationsFail() {
    for (qsizetype step = 0, count = 0; step <= count; ++step) {
      for (const qsizetype last : {step, qsizetype(1000)}) {
        Tprogram program(twoOrphans());
        program.files.firstFailing = step;
        program.files.lastFailing = last;
        const QByteArray found = wordsOf(program.changes.findOrphans(noSums));
        if (!found.isEmpty()) program.changes.adopt(editsFrom(found));
        program.changes.add(editsFrom("+C1"));
        const QByteArrayList all = {"+A1 +B2 +C1"};
        const bool isSafe = program.changes.isSafe();
        program.check(program.files.history.back(), isSafe ? all : all + QByteArrayList{"+A1 +B2"});
        program.files.lastFailing = last == step ? last : 0;
        program.step([&] { QVERIFY(program.changes.isSafe()); }, all + QByteArrayList{"+A1 +B2"} + all);
        program.changes.saving(savedSums);
        program.changes.saved();
        // Only what was not found is offered now.
        QByteArrayList rest = {"+A1", "+B2"};
        for (const QByteArray& edit : found.split(' ')) rest.removeAll(edit);
        for (const TpairSums& sums : {savedSums, otherSums}) {
          program.current = sums;
          program.check(program.files.history.back(), {rest.join(' ')});
        }
        QCOMPARE(program.wrong, QByteArrayList());
        if (last == 0) count = program.files.operations.size();
      }
    }
  }

  void onlyWhatIsNotInTheFilesIsOffered() {
    Tprogram program;
    program.changes.add(editsFrom("+A1"));
    program.changes.saving(savedSums);
    program.changes.add(editsFrom("+B1"));
    program.changes.saving(otherSums);
    program.changes.add(editsFrom("+C1"));
    const TsimulatedDisk& disk = program.files.history.back();
    QCOMPARE(foundOn(disk, noSums), "+A1 +B1 +C1");
    QCOMPARE(foundOn(disk, savedSums), "+B1 +C1");
    QCOMPARE(foundOn(disk, otherSums), "+C1");
  }

  void tornEndCostsOnlyItself() {
    const std::string whole = unsavedHeader("0123456789abcdef", "list") + editsEntry(editsFrom("+A1"));
    const std::string more = whole + restartEntry({}, editsEntry(editsFrom("+A2")));
    for (std::size_t length = 0; length <= more.size(); ++length) {
      for (const std::size_t zeros : {0, 20}) {
        const std::string bytes = more.substr(0, length) + std::string(length < whole.size() ? 0 : zeros, '\0');
        const QByteArray found = length < whole.size() ? "" : bytes.starts_with(more) ? "+A2" : "+A1";
        QCOMPARE(foundOn(TsimulatedDisk(TfileMap{{firstName, bytes}}), noSums), found);
      }
    }
  }

  void otherFilesAreLeftAlone_data() {
    QTest::addColumn<std::string>("content");
    const std::string header = unsavedHeader("0123456789abcdef", "list");
    const std::string edits = editsEntry(editsFrom("+A1"));
    QTest::newRow("another list") << unsavedHeader("0123456789abcdef", "other") + edits;
    QTest::newRow("another version") << "EQUNSAVED2" + header.substr(10) + edits;
    QTest::newRow("damaged header") << std::string(header).replace(30, 1, "x") + edits;
    QTest::newRow("no header") << "EQUNSAVED1\n" + edits;
    QTest::newRow("header twice") << header + edits + header.substr(11);
    QTest::newRow("restart inside a restart") << header + edits + restartEntry({}, restartEntry({}, edits));
    QTest::newRow("a part of an entry inside a restart") << header + edits + restartEntry({}, edits.substr(1));
    QTest::newRow("wrong id inside a restart") << header + edits + restartEntry({"0123456789ABCDEF"}, edits);
  }

  void otherFilesAreLeftAlone() {
    QFETCH(std::string, content);
    Tprogram program(TsimulatedDisk(TfileMap{{firstName, content}}));
    QCOMPARE(wordsOf(program.changes.findOrphans(noSums)), "");
    program.changes.adopt({});
    program.changes.add(editsFrom("+A1"));
    QCOMPARE(program.changes.path().generic_string(), firstName + "-2");
    program.changes.saved();
    QCOMPARE(program.files.history.back().names.size(), 1U);
    QCOMPARE(program.files.history.back().contentOf(firstName), content);
  }

  void filesOfProgramsThatRunAreLeftAlone() {
    const std::string header = unsavedHeader("0123456789abcdef", "list");
    const std::string edits = editsEntry(editsFrom("+A1"));
    const std::string absorbing = restartEntry({"0123456789abcdef"}, edits);
    const auto headerOf = [](const char* digit) { return unsavedHeader(std::string(16, *digit), "list"); };
    TsimulatedFiles files(TsimulatedDisk(TfileMap{{firstName, header + edits},
                                                  {firstName + "-2", headerOf("2") + absorbing},
                                                  {firstName + "-3", headerOf("3")},
                                                  {firstName + "-4", headerOf("4")},
                                                  {firstName + "-5", headerOf("5") + editsEntry(editsFrom("+B1"))}}));
    files.locked = {firstName + "-2"};
    files.failing = {"lock EquipmentRecord.unsaved-3 1", "lock EquipmentRecord.unsaved-3 2"};
    TunsavedChanges changes({"/one"}, files);
    changes.begin("list");
    QCOMPARE(wordsOf(changes.findOrphans(noSums)), "+B1");
    // Whoever creates the last but one file must find it unchanged or gone, not absorbed.
    QVERIFY(!files.history.back().contains(firstName + "-4"));
    QCOMPARE(files.history.back().names.size(), 4U);
  }

  void withoutLocks() {
    Tprogram program;
    program.files.failing = {"lock EquipmentRecord.unsaved 1", "lock EquipmentRecord.unsaved 2"};
    program.changes.add(editsFrom("+A1"));
    TunsavedChanges neighbour({"/one"}, program.files);
    neighbour.begin("list");
    neighbour.adopt(editsFrom(wordsOf(neighbour.findOrphans(noSums))));
    QVERIFY(!program.files.history.back().contains(firstName));
    program.changes.add(editsFrom("+B1"));
    neighbour.saved();
    QCOMPARE(foundOn(program.files.history.back(), noSums), "+A1 +B1");
  }

  void programsOnOneDisk() {
    const TtestFolder folder;
    const auto place = folder / "new" / "deep";
    writeBytes(folder / "file", "");
    const auto program = [&] {
      auto changes = std::make_unique<TunsavedChanges>(std::vector{folder / "file", place}, diskFileSystem());
      changes->begin("list");
      return changes;
    };
    auto one = program();
    const auto other = program();
    const auto third = program();
    one->add(editsFrom("+A1"));
    other->add(editsFrom("+B1"));
    QCOMPARE(namesIn(place), QByteArrayList({"EquipmentRecord.unsaved", "EquipmentRecord.unsaved-2"}));
    QCOMPARE(wordsOf(third->findOrphans(noSums)), "");
    one.reset();
    QCOMPARE(wordsOf(third->findOrphans(noSums)), "+A1");
    QCOMPARE(wordsOf(program()->findOrphans(noSums)), "");
    third->setAside();
    other->add(editsFrom("B1>B2"));
    QVERIFY(other->isSafe());
    QCOMPARE(wordsOf(other->net()), "+B2");
    other->begin("list");
    QCOMPARE(wordsOf(other->findOrphans(noSums)), "+B2");
    other->adopt({});
    QCOMPARE(namesIn(place), QByteArrayList({"EquipmentRecord.unsaved.kept-1"}));
  }
};
EQREC_TEST(TunsavedTest);

#include "unsavedTest.moc"
