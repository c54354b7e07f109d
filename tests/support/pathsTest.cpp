#include <QTest>

#include "support/paths.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class TpathsTest : public QObject {
  Q_OBJECT
 private slots:
  void findsPathWithoutRegardToCase_data();
  void findsPathWithoutRegardToCase();
};
EQREC_TEST(TpathsTest);

void TpathsTest::findsPathWithoutRegardToCase_data() {
  QTest::addColumn<QByteArrayList>("files");
  QTest::addColumn<QByteArray>("name");
  QTest::addColumn<QByteArray>("found");
  const QByteArray name("DATA/eq.dat");
  QTest::newRow("exact names exist, taken")
      << QByteArrayList{"DATA/eq.dat", "Data/eq.dat", "DATA/EQ.DAT"} << name << name;
  QTest::newRow("folder and file in another case, taken")
      << QByteArrayList{"data/EQ.dat"} << name << QByteArray("data/EQ.dat");
  QTest::newRow("several other cases, first by byte order")
      << QByteArrayList{"data/eq.dat", "Data/eq.dat"} << name << QByteArray("Data/eq.dat");
  QTest::newRow("file missing, as given in the folder found")
      << QByteArrayList{"Data/x"} << name << QByteArray("Data/eq.dat");
  QTest::newRow("nothing there, as given") << QByteArrayList{"other/x"} << name << name;
  QTest::newRow("longer name, not mistaken") << QByteArrayList{"data2/eq.dat"} << name << name;
  QTest::newRow("letters beyond ASCII, case counts")
      << QByteArrayList{"\xC3\xA9.dat"} << QByteArray("\xC3\x89.dat") << QByteArray("\xC3\x89.dat");
}

void TpathsTest::findsPathWithoutRegardToCase() {
  QFETCH(QByteArrayList, files);
  QFETCH(QByteArray, name);
  QFETCH(QByteArray, found);
  const TtestFolder folder;
  for (const QByteArray& file : files) writeBytes(folder / file.toStdString(), "x");
  QCOMPARE(findPath(folder.path(), name.toStdString()).string(), (folder / found.toStdString()).string());
}

#include "pathsTest.moc"
