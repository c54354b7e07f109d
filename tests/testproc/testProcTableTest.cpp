#include <QTest>
#include <QtEndian>

#include "support/checksum.h"
#include "support/fileSystem.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

QByteArray littleEndian(quint32 number, int size) {
  return QByteArray::fromHex(QByteArray::number(qbswap(number), 16).rightJustified(8, '0')).left(size);
}

QByteArray entry(quint32 number, const QByteArray& title) {
  return littleEndian(number, 2) + title.leftJustified(42, '\0');
}

/// A file of these entries with a correct header.
QByteArray list(const QByteArray& entries) {
  return "ASQ1" + littleEndian(44, 2) + littleEndian(static_cast<quint32>(entries.size() / 44), 2) +
         littleEndian(crc32Of(entries.toStdString()), 4) + littleEndian(0, 4) + entries;
}

}  // namespace

class TtestProcTableTest : public QObject {
  Q_OBJECT
 private slots:
  void goodListLoads() {
    const QByteArray longest(41, '\xE4');
    QCOMPARE(load(list(entry(500, longest) + entry(1, "Class I") + entry(8, ""))), TtestProcLoad::loaded);
    QCOMPARE(table_.count(), 3U);
    QCOMPARE(table_.title(500), longest.toStdString());
    QCOMPARE(table_.title(1), "Class I");
    QVERIFY(table_.hasEntry(8) && table_.title(8).empty());
    for (const unsigned number : {0U, 2U, 501U, 4294967295U}) {
      QVERIFY(!table_.hasEntry(number) && table_.title(number).empty());
    }
    QCOMPARE(load(list({})), TtestProcLoad::loaded);
    QCOMPARE(table_.count(), 0U);
    QCOMPARE(loadTestProcTable(diskFileSystem(), SAMPLE_FOLDER "/testProc.asq", table_), TtestProcLoad::loaded);
    QCOMPARE(table_.count(), 76U);
    QCOMPARE(loadTestProcTable(diskFileSystem(), "none/a.asq", table_), TtestProcLoad::missing);
    QCOMPARE(table_.count(), 0U);
    QCOMPARE(loadTestProcTable(diskFileSystem(), SAMPLE_FOLDER, table_), TtestProcLoad::damaged);
  }

  void damagedListLeavesNothing() {
    const QByteArray one = entry(1, "One");
    const QByteArray good = list(one + entry(2, "Two"));
    QList<QByteArray> damaged = {good.left(15), good.chopped(1), good.chopped(44), good + '\0'};
    for (const qsizetype at : {3, 4, 8, 15, 20}) {
      damaged << QByteArray(good).replace(at, 1, QByteArray(1, char(good[at] ^ 1)));
    }
    for (const unsigned number : {0, 501, 1}) damaged << list(one + entry(number, "Two"));
    damaged << list(one + entry(2, QByteArray(42, 'x')));  // a title without its zero byte
    for (const QByteArray& content : damaged) {
      QVERIFY2(load(content) == TtestProcLoad::damaged, content.toHex());
      QCOMPARE(table_.count(), 0U);
    }
  }

 private:
  /// Loads a file of this content into a table that holds another entry.
  TtestProcLoad load(const QByteArray& content) {
    const TtestFolder folder;
    writeBytes(folder / "a.asq", content);
    table_.set(3, "old");
    return loadTestProcTable(diskFileSystem(), folder / "a.asq", table_);
  }

  TtestProcTable table_;
};
EQREC_TEST(TtestProcTableTest);

#include "testProcTableTest.moc"
