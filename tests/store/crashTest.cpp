#include <QByteArrayList>
#include <QTest>

#include "store/testRecords.h"
#include "tools/simulatedFiles.h"
#include "tools/testList.h"

namespace {

using Thistory = std::vector<TsimulatedDisk>;

/// Where the two record files lie: in DATA, or behind links in folders of their own.
struct Tplace {
  bool linked = false;

  TsimulatedFiles filesOn(const TsimulatedDisk& disk) const {
    TsimulatedFiles files(disk);
    if (linked) files.link("/DATA/eq.dat", "/one/eq.dat");
    if (linked) files.link("/DATA/eqinfo.dat", "/two/eqinfo.dat");
    return files;
  }
  QByteArray load(TsimulatedFiles& files) const { return loadText("/DATA", files); }
  QByteArray load(const TsimulatedDisk& disk) const {
    TsimulatedFiles files = filesOn(disk);
    return load(files);
  }
  QByteArray save(const TequipRecTable& table, TsimulatedFiles& files) const { return saveText(table, "/DATA", files); }
};

TequipRecTable oldTable() {
  return tableOf({{"A1", 1, "old"}, {"B2", 2, "old"}});
}
TequipRecTable newTable() {
  return tableOf({{"A1", 11, "new"}, {"C3", 13, "new"}});
}
TequipRecTable nextTable() {
  return tableOf({{"A1", 21, "next"}});
}
constexpr const char* oldText = "0: A1 1 old, B2 2 old";
constexpr const char* newText = "0: A1 11 new, C3 13 new";
constexpr const char* nextText = "0: A1 21 next";

/// Everything that a loss of power at any time of `history` may leave.
std::set<TfileMap> survivorsOf(const Thistory& history) {
  std::set<TfileMap> survivors;
  for (const TsimulatedDisk& disk : history) survivors.merge(disk.afterPowerLoss());
  return survivors;
}

/// What loads tell of these disks, each text once, but for those that are allowed.
QByteArray wrongLoads(const Tplace& place, const std::set<TfileMap>& survivors, const QByteArrayList& allowed) {
  QByteArrayList wrong;
  for (const TfileMap& survivor : survivors) {
    const QByteArray text = place.load(TsimulatedDisk(survivor));
    if (!allowed.contains(text) && !wrong.contains(text)) wrong << text;
  }
  return wrong.join("; ");
}

}  // namespace

/// Interrupts saves and loads at every operation, on a disk that may then have lost anything that was not flushed, and
/// looks whether a load sees one whole pair of record files.
class TcrashTest : public QObject {
  Q_OBJECT
 private slots:
  void powerLostInSave_data();
  void powerLostInSave();
  void powerLostInFirstSave();
  void powerLostInLoadAfterPowerLoss_data() { powerLostInSave_data(); }
  void powerLostInLoadAfterPowerLoss();
  void powerLostInLoadAfterKill_data() { powerLostInSave_data(); }
  void powerLostInLoadAfterKill();
  void powerLostInSaveAfterKill_data() { powerLostInSave_data(); }
  void powerLostInSaveAfterKill();
  void flushLeftOutIsNoticed_data();
  void flushLeftOutIsNoticed();

 private:
  /// The disk before, during and after a save of the new records over the old ones.
  static Thistory historyOfSave(const Tplace& place, int leftOutFlush = 0);
};
EQREC_TEST(TcrashTest);

Thistory TcrashTest::historyOfSave(const Tplace& place, int leftOutFlush) {
  TsimulatedFiles before = place.filesOn(TsimulatedDisk());
  if (place.save(oldTable(), before) != "0") QTest::qFail("not saved", __FILE__, __LINE__);
  const std::set<TfileMap> settled = before.history().back().afterPowerLoss();
  TsimulatedFiles files = place.filesOn(TsimulatedDisk(*settled.begin()));
  files.leaveOutFlush(leftOutFlush);
  if (place.save(newTable(), files) != "0") QTest::qFail("not saved", __FILE__, __LINE__);
  return files.history();
}

void TcrashTest::powerLostInSave_data() {
  QTest::addColumn<bool>("linked");
  QTest::newRow("files in one folder") << false;
  QTest::newRow("files behind links in other folders") << true;
}

void TcrashTest::powerLostInSave() {
  QFETCH(bool, linked);
  const Tplace place{linked};
  const Thistory history = historyOfSave(place);
  QCOMPARE(wrongLoads(place, survivorsOf(history), {oldText, newText}), "");
  QCOMPARE(wrongLoads(place, history.back().afterPowerLoss(), {newText}), "");
}

void TcrashTest::powerLostInFirstSave() {
  const Tplace place;
  TsimulatedFiles files = place.filesOn(TsimulatedDisk());
  QCOMPARE(place.save(newTable(), files), "0");
  QCOMPARE(wrongLoads(place, survivorsOf(files.history()), {"2: ", newText}), "");
}

void TcrashTest::powerLostInLoadAfterPowerLoss() {
  QFETCH(bool, linked);
  const Tplace place{linked};
  for (const TfileMap& survivor : survivorsOf(historyOfSave(place))) {
    TsimulatedFiles files = place.filesOn(TsimulatedDisk(survivor));
    const QByteArray told = place.load(files);
    QCOMPARE(wrongLoads(place, survivorsOf(files.history()), {told}), "");
  }
}

void TcrashTest::powerLostInLoadAfterKill() {
  QFETCH(bool, linked);
  const Tplace place{linked};
  QByteArray wrong;
  for (const TsimulatedDisk& killed : historyOfSave(place)) {
    TsimulatedFiles files = place.filesOn(killed);
    const QByteArray told = place.load(files);
    wrong += wrongLoads(place, survivorsOf(files.history()), {oldText, newText});
    wrong += wrongLoads(place, files.history().back().afterPowerLoss(), {told});
  }
  QCOMPARE(wrong, "");
}

void TcrashTest::powerLostInSaveAfterKill() {
  QFETCH(bool, linked);
  const Tplace place{linked};
  QByteArray wrong;
  for (const TsimulatedDisk& killed : historyOfSave(place)) {
    TsimulatedFiles files = place.filesOn(killed);
    QCOMPARE(place.save(nextTable(), files), "0");
    wrong += wrongLoads(place, survivorsOf(files.history()), {oldText, newText, nextText});
    wrong += wrongLoads(place, files.history().back().afterPowerLoss(), {nextText});
  }
  QCOMPARE(wrong, "");
}

/// The proof that the checks above can fail.
void TcrashTest::flushLeftOutIsNoticed_data() {
  QTest::addColumn<bool>("linked");
  QTest::addColumn<int>("flush");
  QTest::addColumn<bool>("safe");
  QTest::newRow("data file, mixed") << false << 1 << false;
  QTest::newRow("information file, mixed") << false << 2 << false;
  QTest::newRow("marker, mixed") << false << 3 << false;
  QTest::newRow("folder before the marker's rename, made good by the next") << false << 4 << true;
  QTest::newRow("folder after the marker's rename, mixed") << false << 5 << false;
  QTest::newRow("folder after the files' renames, mixed") << false << 6 << false;
  QTest::newRow("folder after the marker's removal, finished again") << false << 7 << true;
  QTest::newRow("data file's other folder before the marker's rename, mixed") << true << 5 << false;
  QTest::newRow("information file's other folder before it, mixed") << true << 6 << false;
  QTest::newRow("data file's other folder after the renames, mixed") << true << 9 << false;
  QTest::newRow("information file's other folder after them, mixed") << true << 10 << false;
}

void TcrashTest::flushLeftOutIsNoticed() {
  QFETCH(bool, linked);
  QFETCH(int, flush);
  const Tplace place{linked};
  const QByteArray wrong = wrongLoads(place, survivorsOf(historyOfSave(place, flush)), {oldText, newText});
  QTEST(wrong.isEmpty(), "safe");
}

#include "crashTest.moc"
