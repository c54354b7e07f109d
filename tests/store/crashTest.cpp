#include <QByteArrayList>
#include <QMap>
#include <QTest>

#include "store/testRecords.h"
#include "tools/openList.h"
#include "tools/simulatedFiles.h"
#include "tools/testList.h"

namespace {

using Thistory = std::vector<TsimulatedDisk>;

const QByteArray oldText("0: A1 1 old, B2 2 old");
const QByteArray newText("0: A1 11 new, C3 13 new");
const QByteArray nextText("0: A1 21 next");

/// Everything that a loss of power at any time of `history` may leave.
std::set<TfileMap> survivorsOf(const Thistory& history) {
  std::set<TfileMap> survivors;
  for (const TsimulatedDisk& disk : history) survivors.merge(disk.afterPowerLoss());
  return survivors;
}

}  // namespace

/// Interrupts saves and loads at every operation, on a disk that may then have lost anything that was not flushed, and
/// looks whether a load sees one whole pair of record files. Fails each operation in turn, and looks for the same.
class TcrashTest : public QObject {
  Q_OBJECT
 private slots:
  void initTestCase_data() {
    QTest::addColumn<bool>("linked");
    QTest::newRow("files in one folder") << false;
    QTest::newRow("files behind links in other folders") << true;
  }

  void init() {
    QFETCH_GLOBAL(bool, linked);
    links_.clear();
    if (linked) links_ = {{"/DATA/eq.dat", "/one/eq.dat"}, {"/DATA/eqinfo.dat", "/two/eqinfo.dat"}};
  }

  void powerLostInSave() {
    const Thistory history = historyOfSave();
    QCOMPARE(wrongLoads(survivorsOf(history), {oldText, newText}), "");
    QCOMPARE(wrongLoads(history.back().afterPowerLoss(), {newText}), "");
    QCOMPARE(wrongLoads(survivorsOf(historyOf(newText, TsimulatedDisk())), {"2: ", newText}), "");
  }

  void powerLostAfterCrash() {
    Thistory crashed = historyOfSave();
    for (const TfileMap& survivor : survivorsOf(crashed)) crashed.emplace_back(survivor);
    for (const TsimulatedDisk& disk : crashed) {
      TsimulatedFiles files(disk, links_);
      const QByteArray told = loadText("/DATA", files);
      QCOMPARE(wrongLoads(survivorsOf(files.history), {oldText, newText}), "");
      QCOMPARE(wrongLoads(files.history.back().afterPowerLoss(), {told}), "");
      const Thistory history = historyOf(nextText, disk);
      QCOMPARE(wrongLoads(survivorsOf(history), {oldText, newText, nextText}), "");
      QCOMPARE(wrongLoads(history.back().afterPowerLoss(), {nextText}), "");
    }
  }

  void failureIsNamedAndLeavesOldFiles() {
    const QMap<QByteArray, QByteArray> texts = {
        {"checkWritable eq.dat 1", "2"},
        {"create eqinfo.dat.new 1", "3"},
        {"flush eqinfo.dat.new 1", "exception 8: fclose() failed on eq info file"},
        {"write eqinfo.dat.new 1,close eqinfo.dat.new 1",
         "exception 1: fprintf() returned EOF on eq info file where i=1. And fclose failed"},
        {"close eqinfo.dat.new 1", "exception 8: fclose() failed on eq info file"},
        {"rename eq.dat.new 1", "exception 1: The new eq file could not be put into place"}};
    for (const QByteArray& failing : texts.keys()) {
      TsimulatedFiles files(historyOfSave().front(), links_);
      files.failing = failing.split(',');
      QCOMPARE(failing + ": " + saveText(tableOf(newText.mid(3)), "/DATA", files), failing + ": " + texts[failing]);
      QCOMPARE(loadedFrom(files), oldText);
    }
  }

  void failureAtAnyStepLeavesOneWholePair() {
    for (qsizetype step = 0, count = 0; step <= count; ++step) {  // the very first run fails nowhere
      for (const qsizetype last : {step, qsizetype(1000)}) {
        TsimulatedFiles files(historyOfSave().front(), links_);
        files.firstFailing = step;
        files.lastFailing = last;
        const bool saved = saveText(tableOf(newText.mid(3)), "/DATA", files) == "0";
        if (last == 0) count = files.operations.size();
        const QByteArray found = loadedFrom(files);
        QVERIFY2(found == newText || (!saved && found == oldText), found);
        files.lastFailing = 0;
        QCOMPARE(saveText({}, "/DATA", files), "0");
        QCOMPARE(loadedFrom(files), "0: ");
      }
    }
  }

  /// One operation of a load fails, or all from there on. The save that was decided before is not lost.
  void failureWhileASaveIsFinishedLosesNothing() {
    for (const TfileMap& decided : survivorsOf(historyOfSave())) {
      if (!decided.contains("/DATA/eq.commit") || !wrongLoads({decided}, {newText}).isEmpty()) continue;
      for (qsizetype step = 0, count = 0; step <= count; ++step) {  // the very first run fails nowhere
        for (const qsizetype last : {step, qsizetype(1000)}) {
          TsimulatedFiles files(TsimulatedDisk(decided), links_);
          files.firstFailing = step;
          files.lastFailing = last;
          const QByteArray found = loadText("/DATA", files);
          if (last == 0) count = files.operations.size();
          QVERIFY2(found == newText || found == "2: " || found == "3: " || found.startsWith("exception"), found);
          QCOMPARE(loadedFrom(files), newText);
        }
      }
    }
  }

  /// A program is killed while it saves. Its changes are then in the list or offered, not both.
  void killedSaveIsInTheListOrOffered() {
    TsimulatedFiles files(historyOfSave().front(), links_);
    TopenList list("/", files);
    list.load();
    edit(list, 0, [](TequipRec& record) { record.setText(fieldDescription, "changed"); });
    const std::size_t changed = files.history.size();
    list.add(list.records().at(1));
    QCOMPARE(list.save(), "");
    int offered = 0;
    for (std::size_t i = changed; i < files.history.size(); ++i) {
      TsimulatedFiles afterwards(files.history[i], links_);
      TopenList next("/", afterwards);
      QCOMPARE(next.load(), "");
      const bool isSaved = textOf(next.records()) == "A1 1 changed, B2 2 old, B2 2 old";
      const TlistEdits unsaved = next.findUnsaved();
      QCOMPARE(unsaved.empty(), isSaved);
      next.restore(unsaved);
      offered += isSaved ? 0 : 1;
      QVERIFY(textOf(next.records()).startsWith("A1 1 changed, B2 2 old"));
    }
    QVERIFY(offered > 0);
  }

  void decidedSaveCountsBeforeItIsInPlace() {
    TsimulatedFiles files(historyOfSave().front(), links_);
    files.failing = {"rename eqinfo.dat.new 1", "rename eqinfo.dat.new 2", "rename eqinfo.dat.new 3"};
    QCOMPARE(saveText(tableOf(newText.mid(3)), "/DATA", files),
             "exception 1: The new eq info file could not be put into place yet");
    QCOMPARE(loadText("/DATA", files), newText);
    QCOMPARE(saveText(tableOf(oldText.mid(3)), "/DATA", files), "2");
    QCOMPARE(loadedFrom(files), newText);
  }

 private:
  /// The disk before, during and after a save.
  Thistory historyOf(const QByteArray& text, const TsimulatedDisk& disk) const {
    TsimulatedFiles files(disk, links_);
    if (saveText(tableOf(text.mid(3)), "/DATA", files) != "0") QTest::qFail("not saved", __FILE__, __LINE__);
    return files.history;
  }
  /// That of a save of the new records over the old ones.
  Thistory historyOfSave() const {
    const Thistory before = historyOf(oldText, TsimulatedDisk());
    return historyOf(newText, TsimulatedDisk(*before.back().afterPowerLoss().begin()));
  }

  /// What a load tells of the files as they are, unless a save has left others beside them.
  QByteArray loadedFrom(const TsimulatedFiles& files) const {
    TsimulatedFiles loading(files.history.back(), links_);
    const QByteArray text = loadText("/DATA", loading);
    const auto& names = loading.history.back().names;
    return names.size() == 2 + names.count("/DATA/eq.lock") ? text : "too many files";
  }

  /// What loads tell of these disks, each text once, but for those that are allowed.
  QByteArray wrongLoads(const std::set<TfileMap>& survivors, const QByteArrayList& allowed) const {
    QByteArrayList wrong;
    for (const TfileMap& survivor : survivors) {
      TsimulatedFiles files(TsimulatedDisk(survivor), links_);
      const QByteArray text = loadText("/DATA", files);
      if (!allowed.contains(text) && !wrong.contains(text)) wrong << text;
    }
    return wrong.join("; ");
  }

  std::map<std::filesystem::path, std::filesystem::path> links_;
};
EQREC_TEST(TcrashTest);

#include "crashTest.moc"
