#include <QTest>
#include <QtEndian>
#include <boost/crc.hpp>

#include "support/fileSystem.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

template <typename Number>
QByteArray littleEndian(Number number) {
  QByteArray bytes(sizeof number, '\0');
  qToLittleEndian(number, bytes.data());
  return bytes;
}

QByteArray entry(quint16 number, const QByteArray& title) {
  return littleEndian(number) + title.leftJustified(42, '\0');
}

/// A list of these entries under a header that says right things about them.
QByteArray list(const QByteArray& entries) {
  boost::crc_32_type crc;
  crc.process_bytes(entries.constData(), static_cast<std::size_t>(entries.size()));
  const auto count = static_cast<quint16>(entries.size() / 44);
  return QByteArray("ASQ1") + littleEndian(quint16{44}) + littleEndian(count) + littleEndian(quint32{crc.checksum()}) +
         littleEndian(quint32{0}) + entries;
}

TtestProcLoad load(const std::filesystem::path& path, TtestProcTable& table) {
  return loadTestProcTable(diskFileSystem(), path, table);
}

}  // namespace

class TtestProcTableTest : public QObject {
  Q_OBJECT
 private slots:
  void goodListLoads();
  void emptyListLoads();
  void sampleListLoads();
  void missingListIsMissing();
  void folderInItsPlaceIsDamaged();
  void damagedListLeavesNothing_data();
  void damagedListLeavesNothing();
};
EQREC_TEST(TtestProcTableTest);

void TtestProcTableTest::goodListLoads() {
  const TtestFolder folder;
  const QByteArray longest(41, '\xE4');
  writeBytes(folder / "a.asq", list(entry(500, longest) + entry(1, "Class I") + entry(7, "(UNUSED)") + entry(8, "")));
  TtestProcTable table;
  QCOMPARE(load(folder / "a.asq", table), TtestProcLoad::loaded);
  QCOMPARE(table.count(), 4U);
  QCOMPARE(table.title(500), longest.toStdString());
  QCOMPARE(table.title(1), "Class I");
  QCOMPARE(table.title(7), "(UNUSED)");
  QVERIFY(table.hasEntry(8) && table.title(8).empty());
  for (const unsigned number : {0U, 2U, 501U, 4294967295U})
    QVERIFY(!table.hasEntry(number) && table.title(number).empty());
}

void TtestProcTableTest::emptyListLoads() {
  const TtestFolder folder;
  writeBytes(folder / "a.asq", list({}));
  TtestProcTable table;
  table.set(3, "old");
  QCOMPARE(load(folder / "a.asq", table), TtestProcLoad::loaded);
  QCOMPARE(table.count(), 0U);
}

void TtestProcTableTest::sampleListLoads() {
  TtestProcTable table;
  QCOMPARE(load(SAMPLE_FOLDER "/testProc.asq", table), TtestProcLoad::loaded);
  QCOMPARE(table.count(), 76U);
  QCOMPARE(table.title(1), "Class I general 62353");
}

void TtestProcTableTest::missingListIsMissing() {
  const TtestFolder folder;
  TtestProcTable table;
  table.set(3, "old");
  QCOMPARE(load(folder / "a.asq", table), TtestProcLoad::missing);
  QCOMPARE(load(folder / "none/a.asq", table), TtestProcLoad::missing);
  QCOMPARE(table.count(), 0U);
}

void TtestProcTableTest::folderInItsPlaceIsDamaged() {
  const TtestFolder folder;
  TtestProcTable table;
  QCOMPARE(load(folder.path(), table), TtestProcLoad::damaged);
}

void TtestProcTableTest::damagedListLeavesNothing_data() {
  QTest::addColumn<QByteArray>("content");
  const QByteArray one = entry(1, "One");
  const QByteArray good = list(one + entry(2, "Two"));
  const auto changed = [&good](qsizetype at, const QByteArray& bytes) {
    return QByteArray(good).replace(at, bytes.size(), bytes);
  };
  QTest::newRow("empty file") << QByteArray("");
  QTest::newRow("cut in the header") << good.left(15);
  QTest::newRow("cut in an entry") << good.chopped(1);
  QTest::newRow("one entry less than told") << good.chopped(44);
  QTest::newRow("bytes behind the last entry") << good + '\0';
  QTest::newRow("one entry more than told") << good + entry(3, "Three");
  QTest::newRow("other first bytes") << changed(0, "ASQ2");
  QTest::newRow("other entry size") << changed(4, littleEndian(quint16{43}));
  QTest::newRow("other checksum") << changed(8, QByteArray(1, char(good[8] ^ 1)));
  QTest::newRow("reserved bytes used") << changed(12, "\x01");
  QTest::newRow("one bit of a title changed") << changed(20, "m");
  QTest::newRow("number 0") << list(one + entry(0, "Zero"));
  QTest::newRow("number 501") << list(one + entry(501, "Many"));
  QTest::newRow("number twice") << list(one + entry(1, "Again"));
  QTest::newRow("title without end") << list(one + entry(2, QByteArray(42, 'x')));
}

void TtestProcTableTest::damagedListLeavesNothing() {
  QFETCH(QByteArray, content);
  const TtestFolder folder;
  writeBytes(folder / "a.asq", content);
  TtestProcTable table;
  table.set(3, "old");
  QCOMPARE(load(folder / "a.asq", table), TtestProcLoad::damaged);
  QCOMPARE(table.count(), 0U);
}

#include "testProcTableTest.moc"
