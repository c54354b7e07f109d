#include <QTest>

#include "store/commitMarker.h"
#include "store/recordSave.h"
#include "store/testRecords.h"
#include "tools/faultyFiles.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

const QByteArrayList bothFiles{"eq.dat", "eqinfo.dat"};
constexpr const char* oldText = "0: A1 1 old, B2 2 old";
constexpr const char* newText = "0: A1 11 new, B2 12 new";

TequipRecTable oldTable() {
  return tableOf({{"A1", 1, "old"}, {"B2", 2, "old"}});
}
TequipRecTable newTable() {
  return tableOf({{"A1", 11, "new"}, {"B2", 12, "new"}});
}

}  // namespace

class TsaveTest : public QObject {
  Q_OBJECT
 private slots:
  void formatIsToTheByte();
  void noRecordsLeaveEmptyFiles();
  void everyByteComesBack();
  void linksAndPermissionsStay();
  void missingPathThrows();
  void impossibleTargetIsReported_data();
  void impossibleTargetIsReported();
  void failureIsNamedAndLeavesOldFiles_data();
  void failureIsNamedAndLeavesOldFiles();
  void failureAtAnyStepLeavesOneWholePair_data();
  void failureAtAnyStepLeavesOneWholePair();
  void decidedSaveCountsBeforeItIsInPlace();
  void changedMarkerCountsForNothing();
};
EQREC_TEST(TsaveTest);

void TsaveTest::formatIsToTheByte() {
  TequipRecTable table = tableOf({{"A1", 500, ""}, {"", 1, "a, b"}, {"C3", 3, ""}});
  table.at(0).setText(fieldManufacturer, "\xC4\x81");
  table.at(1).setText(fieldModel, " m ");
  for (const int id : {fieldCustom1, fieldCustom2, fieldCustom3}) {
    table.at(0).setText(id, QByteArray::number(id).constData());
  }
  const TtestFolder folder;
  QCOMPARE(TequipRecToFile(table, 2, folder / "eq.dat", folder / "eqinfo.dat", diskFileSystem()), ERSUCCESS);
  QCOMPARE(bytesOf(folder / "eq.dat"), "\"A1\",500\n\"\",1\n");
  QCOMPARE(bytesOf(folder / "eqinfo.dat"),
           "\"A1\",\"\",\"\xC4\x81\",\"\",\"4\",\"5\",\"6\"\n\"\",\"a, b\",\"\",\" m \",\"\",\"\",\"\"\n");
}

void TsaveTest::noRecordsLeaveEmptyFiles() {
  const TtestFolder folder;
  QCOMPARE(saveText(oldTable(), folder.path()), "0");
  QCOMPARE(saveText({}, folder.path()), "0");
  QCOMPARE(bytesOf(folder / "eq.dat") + bytesOf(folder / "eqinfo.dat"), QByteArray(""));
  QCOMPARE(namesIn(folder.path()), bothFiles);
  QCOMPARE(loadText(folder.path()), "0: ");
}

void TsaveTest::everyByteComesBack() {
  QByteArray bytes;
  for (int byte = 1; byte < 256; ++byte) bytes.append(byte == '"' || byte == '\n' ? "" : QByteArray(1, char(byte)));
  TequipRec record;
  record.setText(fieldControlNum, bytes.left(17).constData());
  record.setText(fieldDescription, bytes.mid(17, 63).constData());
  for (int i = 0; i < 3; ++i) record.setText(fieldCustom1 + i, bytes.mid(80 + 63 * i, 63).constData());
  TequipRecTable table;
  for (int i = 0; i < 400; ++i) table.append(record);  // more than a writer's buffer
  const TtestFolder folder;
  QCOMPARE(saveText(table, folder.path()), "0");
  QCOMPARE(loadText(folder.path()), "0: " + textOf(table));
  QVERIFY(bytesOf(folder / "eqinfo.dat").contains(bytes.mid(206) + '"'));
}

void TsaveTest::linksAndPermissionsStay() {
  const TtestFolder folder;
  writeBytes(folder / "one/data", "");
  writeBytes(folder / "two/info", "");
  std::filesystem::permissions(folder / "two/info", std::filesystem::perms(0604));
  std::filesystem::create_directory(folder / "DATA");
  std::filesystem::create_symlink("../one/data", folder / "DATA/eq.dat");
  std::filesystem::create_symlink(folder / "two/info", folder / "DATA/eqinfo.dat");
  QCOMPARE(saveText(newTable(), folder / "DATA"), "0");
  QVERIFY(std::filesystem::is_symlink(folder / "DATA/eq.dat"));
  QVERIFY(std::filesystem::is_symlink(folder / "DATA/eqinfo.dat"));
  QCOMPARE(std::filesystem::status(folder / "two/info").permissions(), std::filesystem::perms(0604));
  QCOMPARE(namesIn(folder / "one") + namesIn(folder / "two") + namesIn(folder / "DATA"),
           QByteArrayList({"data", "info"}) + bothFiles);
  QCOMPARE(loadText(folder / "DATA"), newText);
}

void TsaveTest::missingPathThrows() {
  const auto message = [](const char* data, const char* info) -> QByteArray {
    try {
      TequipRecToFile({}, 0, data, info, diskFileSystem());
      return "none";
    } catch (const TERException& exception) {
      return QByteArray::number(exception.code()) + exception.what();
    }
  };
  QCOMPARE(message("", "eqinfo.dat"), "4 Equipment Data Filename is NULL");
  QCOMPARE(message("eq.dat", ""), "4Equipment Info Filename is NULL");
}

void TsaveTest::impossibleTargetIsReported_data() {
  QTest::addColumn<QByteArray>("file");
  QTest::addColumn<QByteArray>("text");
  QTest::newRow("folder in the data file's place, 2") << QByteArray("DATA/eq.dat/x") << QByteArray("2");
  QTest::newRow("folder in the information file's place, 3") << QByteArray("DATA/eqinfo.dat/x") << QByteArray("3");
  QTest::newRow("folder missing, 2") << QByteArray("x") << QByteArray("2");
  QTest::newRow("file in the folder's place, 2") << QByteArray("DATA") << QByteArray("2");
}

void TsaveTest::impossibleTargetIsReported() {
  QFETCH(QByteArray, file);
  const TtestFolder folder;
  writeBytes(folder / file.toStdString(), "x");
  QTEST(saveText(newTable(), folder / "DATA"), "text");
  QCOMPARE(bytesOf(folder / file.toStdString()), "x");
  const bool isFolder = std::filesystem::is_directory(folder / "DATA");
  QCOMPARE(isFolder ? namesIn(folder / "DATA").size() : 1, 1);
}

void TsaveTest::failureIsNamedAndLeavesOldFiles_data() {
  QTest::addColumn<QByteArrayList>("failing");
  QTest::addColumn<QByteArray>("text");
  const auto row = [](const char* name, const QByteArrayList& failing, const char* text) {
    QTest::newRow(name) << failing << QByteArray(text);
  };
  row("data file not writable", {"isWritable eq.dat 1"}, "2");
  row("data file not opened", {"create eq.dat.new 1"}, "2");
  row("information file not writable", {"isWritable eqinfo.dat 1"}, "3");
  row("information file not opened", {"create eqinfo.dat.new 1"}, "3");
  row("data write", {"write eq.dat.new 1"}, "exception 1: fprintf returned EOF on eq file where i=1");
  row("data write and close", {"write eq.dat.new 1", "close eq.dat.new 1"},
      "exception 1: fprintf() returned EOF on eq file where i=1. And fclose failed");
  row("data flush", {"flush eq.dat.new 1"}, "exception 8: fclose() failed on eq file");
  row("data close", {"close eq.dat.new 1"}, "exception 8: fclose() failed on eq file");
  row("information write", {"write eqinfo.dat.new 1"}, "exception 1: fprintf returned EOF on eq file where i=1");
  row("information write and close", {"write eqinfo.dat.new 1", "close eqinfo.dat.new 1"},
      "exception 1: fprintf() returned EOF on eq info file where i=1. And fclose failed");
  row("information flush", {"flush eqinfo.dat.new 1"}, "exception 8: fclose() failed on eq info file");
  row("information close", {"close eqinfo.dat.new 1"}, "exception 8: fclose() failed on eq info file");
  row("marker write", {"write eq.commit.new 1"}, "exception 1: The commit marker could not be written");
  row("marker rename", {"rename eq.commit.new 1"}, "exception 1: The commit marker could not be written");
  row("data rename", {"rename eq.dat.new 1"}, "exception 1: The new eq file could not be put into place");
}

void TsaveTest::failureIsNamedAndLeavesOldFiles() {
  QFETCH(QByteArrayList, failing);
  const TtestFolder folder;
  QCOMPARE(saveText(oldTable(), folder.path()), "0");
  TfaultyFiles files;
  files.fail(failing);
  QTEST(saveText(newTable(), folder.path(), files), "text");
  QCOMPARE(namesIn(folder.path()), bothFiles);
  QCOMPARE(loadText(folder.path()), oldText);
}

void TsaveTest::failureAtAnyStepLeavesOneWholePair_data() {
  QTest::addColumn<bool>("onwards");
  QTest::newRow("one operation fails") << false;
  QTest::newRow("all operations from one on fail") << true;
}

void TsaveTest::failureAtAnyStepLeavesOneWholePair() {
  QFETCH(bool, onwards);
  bool failed = true;
  for (int step = 1; failed; ++step) {
    const TtestFolder folder;
    QCOMPARE(saveText(oldTable(), folder.path()), "0");
    TfaultyFiles files;
    files.failFrom(step, onwards ? 1000 : step);
    const bool saved = saveText(newTable(), folder.path(), files) == "0";
    failed = files.count() >= step;
    const QByteArray found = loadText(folder.path());
    QVERIFY2(found == newText || (!saved && found == oldText), found);
    QCOMPARE(saveText({}, folder.path()), "0");
    QCOMPARE(namesIn(folder.path()), bothFiles);
    QCOMPARE(loadText(folder.path()), "0: ");
  }
}

void TsaveTest::decidedSaveCountsBeforeItIsInPlace() {
  const TtestFolder folder;
  QCOMPARE(saveText(oldTable(), folder.path()), "0");
  const auto withFailingRename = [&](const auto& work) {
    TfaultyFiles files;
    files.fail({"rename eqinfo.dat.new 1"});
    return work(files);
  };
  const auto save = [&](TfaultyFiles& files) { return saveText(newTable(), folder.path(), files); };
  const auto load = [&](TfaultyFiles& files) { return loadText(folder.path(), files); };
  QCOMPARE(withFailingRename(save), "exception 1: The new eq info file could not be put into place yet");
  QCOMPARE(withFailingRename(load), newText);
  QCOMPARE(withFailingRename(save), "2");
  QCOMPARE(loadText(folder.path()), newText);
  QCOMPARE(namesIn(folder.path()), bothFiles);
}

void TsaveTest::changedMarkerCountsForNothing() {
  const TcommitMarker marker{"eq.dat", sumOf("data"), "eq info.dat", sumOf("")};
  const std::string text = marker.toText();
  const auto read = TcommitMarker::fromText(text);
  QVERIFY(read && read->dataName == "eq.dat" && read->data == sumOf("data"));
  QVERIFY(read->infoName == "eq info.dat" && read->info == sumOf(""));
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::string changed = text;
    changed[i] = static_cast<char>(changed[i] ^ 1);
    QVERIFY(!TcommitMarker::fromText(changed));
    QVERIFY(!TcommitMarker::fromText(text.substr(0, i)));
  }
  QVERIFY(!TcommitMarker::fromText(text + '\n'));
}

#include "saveTest.moc"
