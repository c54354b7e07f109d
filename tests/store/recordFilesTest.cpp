#include <QTest>

#include "store/equipRecFiles.h"
#include "store/testRecords.h"
#include "tools/faultyFiles.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

QByteArray captionOf(const std::optional<TmessageText>& message) {
  return message ? message->caption : "";
}

TequipRecTable anyTable() {
  return tableOf({{"N", 5, "new"}});
}

/// The names of the kept copies in a working folder's DATA.
QByteArrayList keptIn(const TtestFolder& folder) {
  QByteArrayList kept = namesIn(folder / "DATA");
  kept.removeIf([](const QByteArray& name) { return !name.contains(".kept-"); });
  return kept;
}

/// One good record in each file.
void writeGoodFiles(const TtestFolder& folder) {
  writeBytes(folder / "DATA/eq.dat", dataLine("A", 1));
  writeBytes(folder / "DATA/eqinfo.dat", infoLine("A", "old"));
}

/// Loads, saves, saves once more. Returns the captions of the messages on the way.
QByteArray loadAndSaveTwice(TequipRecFiles& files) {
  TequipRecTable table;
  QByteArray captions = captionOf(files.load(table));
  captions += captionOf(files.save(anyTable()));
  captions += captionOf(files.save({}));
  return captions;
}

}  // namespace

class TrecordFilesTest : public QObject {
  Q_OBJECT
 private slots:
  void keepsWhatWasNotRead_data();
  void keepsWhatWasNotRead();
  void keepsWhatCouldNotBeRead();
  void keptCopyIsNeverOverwritten();
  void keepsForeignFiles();
  void keepsNothingTwice_data();
  void keepsNothingTwice();
  void ownSaveFinishedLateIsNotKept();
  void failedCopyFailsSave();
  void findsFolderInAnotherCase();
  void missingFolderIsReported();
};
EQREC_TEST(TrecordFilesTest);

void TrecordFilesTest::keepsWhatWasNotRead_data() {
  QTest::addColumn<QByteArray>("data");
  QTest::addColumn<QByteArray>("info");
  QTest::addColumn<QByteArray>("caption");
  QTest::addColumn<QByteArrayList>("kept");
  const QByteArray none;
  const QByteArray data = dataLine("A", 1);
  const QByteArray info = infoLine("A", "a");
  const QByteArrayList both{"eq.dat.kept-1", "eqinfo.dat.kept-1"};
  const auto row = [](const char* name, const QByteArray& eq, const QByteArray& eqinfo, const char* caption,
                      const QByteArrayList& kept) {
    QTest::newRow(name) << eq << eqinfo << QByteArray(caption) << kept;
  };
  row("all read, none kept", data, info, "", {});
  row("corrupt line, both kept", data + "!\n", info, "ERINVALIDRECORDS", both);
  row("too many records, both kept", data.repeated(18434), info.repeated(18434), "ERDATAOVERFLOW", both);
  row("data file missing, other kept", none, info, "ER1STFILENOTFOUND", {"eqinfo.dat.kept-1"});
  row("information file missing, other kept", data, none, "ER2NDFILENOTFOUND", {"eq.dat.kept-1"});
  row("both missing, none kept", none, none, "ER1STFILENOTFOUND", {});
  row("text cut to its field, both kept", data, infoLine("A", QByteArray(64, 'x')), "", both);
  row("control number cut, both kept", dataLine(QByteArray(18, 'x'), 1), infoLine(QByteArray(18, 'x'), ""), "", both);
  row("control numbers differ, both kept", data, infoLine("B", "a"), "", both);
}

void TrecordFilesTest::keepsWhatWasNotRead() {
  QFETCH(QByteArray, data);
  QFETCH(QByteArray, info);
  QFETCH(QByteArrayList, kept);
  const TtestFolder folder;
  std::filesystem::create_directory(folder / "DATA");
  if (!data.isNull()) writeBytes(folder / "DATA/eq.dat", data);
  if (!info.isNull()) writeBytes(folder / "DATA/eqinfo.dat", info);
  TequipRecFiles files(folder.path());
  QTEST(loadAndSaveTwice(files), "caption");
  QCOMPARE(keptIn(folder), kept);
  for (const QByteArray& name : kept) {
    QCOMPARE(bytesOf(folder / "DATA" / name.toStdString()), name.startsWith("eq.") ? data : info);
  }
}

void TrecordFilesTest::keepsWhatCouldNotBeRead() {
  const TtestFolder folder;
  writeGoodFiles(folder);
  TfaultyFiles faulty;
  faulty.fail({"read eqinfo.dat 1"});
  TequipRecFiles files(folder.path(), faulty);
  QCOMPARE(loadAndSaveTwice(files), "General EREXCEPTION");
  QCOMPARE(keptIn(folder), QByteArrayList({"eq.dat.kept-1", "eqinfo.dat.kept-1"}));
}

void TrecordFilesTest::keptCopyIsNeverOverwritten() {
  const TtestFolder folder;
  writeGoodFiles(folder);
  writeBytes(folder / "DATA/eq.dat.kept-1", "1");
  writeBytes(folder / "DATA/eqinfo.dat.kept-2", "2");
  TequipRecFiles files(folder.path());
  QCOMPARE(captionOf(files.save(anyTable())), "");
  QCOMPARE(bytesOf(folder / "DATA/eq.dat.kept-1") + bytesOf(folder / "DATA/eqinfo.dat.kept-2"), "12");
  QCOMPARE(bytesOf(folder / "DATA/eq.dat.kept-3"), dataLine("A", 1));
  QCOMPARE(keptIn(folder).size(), 4);
}

void TrecordFilesTest::keepsForeignFiles() {
  const TtestFolder folder;
  writeGoodFiles(folder);
  TequipRecTable table;
  TequipRecFiles one(folder.path());
  TequipRecFiles other(folder.path());
  QCOMPARE(captionOf(one.load(table)) + captionOf(other.load(table)), "");
  QCOMPARE(captionOf(other.save(anyTable())), "");
  QCOMPARE(keptIn(folder), QByteArrayList());
  QCOMPARE(captionOf(one.save({})), "");
  QCOMPARE(bytesOf(folder / "DATA/eq.dat.kept-1"), dataLine("N", 5));
  std::filesystem::remove(folder / "DATA/eq.dat");
  QCOMPARE(captionOf(one.save({})), "");
  QCOMPARE(keptIn(folder), QByteArrayList({"eq.dat.kept-1", "eqinfo.dat.kept-1", "eqinfo.dat.kept-2"}));
}

void TrecordFilesTest::keepsNothingTwice_data() {
  QTest::addColumn<QByteArray>("failing");
  QTest::newRow("save fails before the copies") << QByteArray("write eqinfo.dat.new 1");
  QTest::newRow("save fails after the copies") << QByteArray("rename eq.dat.new 1");
}

void TrecordFilesTest::keepsNothingTwice() {
  QFETCH(QByteArray, failing);
  const TtestFolder folder;
  writeGoodFiles(folder);
  writeBytes(folder / "DATA/eq.dat", "!\n");
  TfaultyFiles faulty;
  faulty.fail({failing});
  TequipRecFiles files(folder.path(), faulty);
  QCOMPARE(loadAndSaveTwice(files), "ERINVALIDRECORDSGeneral EREXCEPTION");
  QCOMPARE(keptIn(folder), QByteArrayList({"eq.dat.kept-1", "eqinfo.dat.kept-1"}));
  QCOMPARE(bytesOf(folder / "DATA/eq.dat.kept-1"), "!\n");
}

void TrecordFilesTest::ownSaveFinishedLateIsNotKept() {
  const TtestFolder folder;
  writeGoodFiles(folder);
  TfaultyFiles faulty;
  faulty.fail({"rename eqinfo.dat.new 1"});
  TequipRecFiles files(folder.path(), faulty);
  QCOMPARE(loadAndSaveTwice(files), "General EREXCEPTION");
  QCOMPARE(keptIn(folder).join(' '), "");
}

void TrecordFilesTest::failedCopyFailsSave() {
  const TtestFolder folder;
  writeGoodFiles(folder);
  TfaultyFiles faulty;
  faulty.fail({"write eqinfo.dat.kept-1 1"});
  TequipRecFiles files(folder.path(), faulty);
  QCOMPARE(captionOf(files.save(anyTable())), "General EREXCEPTION");
  QCOMPARE(loadText(folder / "DATA"), "0: A 1 old");
  QCOMPARE(keptIn(folder).join(' '), "");
}

void TrecordFilesTest::findsFolderInAnotherCase() {
  const TtestFolder folder;
  writeBytes(folder / "data/EQ.DAT", dataLine("A", 1));
  writeBytes(folder / "data/EqInfo.dat", infoLine("A", "old"));
  TequipRecFiles files(folder.path());
  QCOMPARE(loadAndSaveTwice(files), "");
  QCOMPARE(namesIn(folder.path()) + namesIn(folder / "data"), QByteArrayList({"data", "EQ.DAT", "EqInfo.dat"}));
  QCOMPARE(bytesOf(folder / "data/EQ.DAT"), "");
}

void TrecordFilesTest::missingFolderIsReported() {
  const TtestFolder folder;
  TequipRecFiles files(folder.path());
  const QByteArray caption("ER1STFILENOTFOUND");
  QCOMPARE(loadAndSaveTwice(files), caption.repeated(3));
  QCOMPARE(namesIn(folder.path()), QByteArrayList());
}

#include "recordFilesTest.moc"
