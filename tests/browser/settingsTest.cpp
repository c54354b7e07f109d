#include <QTest>

#include "browser/columnLayout.h"
#include "browser/settings.h"
#include "support/iniFile.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class TsettingsTest : public QObject {
  Q_OBJECT
 private slots:
  void displayFlagsMakeColumns() {
    const std::initializer_list<std::pair<QByteArray, const char*>> cases = {
        {"", "997 0 1 2 3 998 999"},
        {"DESCRIPTION=0\nMANUFACTURER=0\nMODEL=0\nTITLE=0\n", "997 0 998"},
        {"CUSTOM1=1\nCUSTOM2=1\nCUSTOM3=1\n", "997 0 1 2 3 998 999 4 5 6"},
        {"DESCRIPTION=2\nMODEL=-1\n", "997 0 2 998 999"},      // neither 0 nor 1: hidden
        {"TITLE=yes\nCUSTOM2=yes\n", "997 0 1 2 3 998 999"}};  // not a number: the default
    for (const auto& [ini, ids] : cases) {
      const TtestFolder folder;
      if (!ini.isEmpty()) writeBytes(folder / "e.ini", "[DISPLAY]\n" + ini);
      TcolumnLayout columns;
      columns.build(TbrowserSettings::load(TiniFile(folder / "e.ini")));
      QByteArrayList found;
      for (int i = 0; i < columns.count(); ++i) found << QByteArray::number(columns.id(i));
      QCOMPARE(found.join(' '), ids);
    }
  }
};
EQREC_TEST(TsettingsTest);

#include "settingsTest.moc"
