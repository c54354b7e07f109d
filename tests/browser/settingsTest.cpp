#include <QTest>

#include "browser/columnLayout.h"
#include "browser/settings.h"
#include "support/iniFile.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// The column codes that a settings file leads to, as text.
QByteArray columnsFor(const QByteArray& iniText) {
  const TtestFolder folder;
  if (!iniText.isNull()) writeBytes(folder / "e.ini", iniText);
  TcolumnLayout columns;
  columns.build(TbrowserSettings::load(TiniFile(folder / "e.ini")));
  QByteArrayList ids;
  for (int i = 0; i < columns.count(); ++i) ids << QByteArray::number(columns.id(i));
  return ids.join(' ');
}

}  // namespace

class TsettingsTest : public QObject {
  Q_OBJECT
 private slots:
  void displayFlagsMakeColumns_data();
  void displayFlagsMakeColumns();
};
EQREC_TEST(TsettingsTest);

void TsettingsTest::displayFlagsMakeColumns_data() {
  QTest::addColumn<QByteArray>("ini");
  QTest::addColumn<QByteArray>("columns");
  QTest::newRow("no file: defaults") << QByteArray() << QByteArray("997 0 1 2 3 998 999");
  QTest::newRow("all off: three columns")
      << QByteArray("[DISPLAY]\nDESCRIPTION=0\nMANUFACTURER=0\nMODEL=0\nTITLE=0\n") << QByteArray("997 0 998");
  QTest::newRow("all on: ten columns") << QByteArray("[DISPLAY]\nCUSTOM1=1\nCUSTOM2=1\nCUSTOM3=1\n")
                                       << QByteArray("997 0 1 2 3 998 999 4 5 6");
  QTest::newRow("2 is not 1: hidden") << QByteArray("[DISPLAY]\nDESCRIPTION=2\nMODEL=-1\n")
                                      << QByteArray("997 0 2 998 999");
  QTest::newRow("no number: default") << QByteArray("[DISPLAY]\nTITLE=yes\nCUSTOM2=yes\n")
                                      << QByteArray("997 0 1 2 3 998 999");
}

void TsettingsTest::displayFlagsMakeColumns() {
  QFETCH(QByteArray, ini);
  QTEST(columnsFor(ini), "columns");
}

#include "settingsTest.moc"
