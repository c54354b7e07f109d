#include <QImage>
#include <QTest>

#include "tools/runProgram.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class ThostProgramTest : public QObject {
  Q_OBJECT
 private slots:
  void tourPassesWithPictures() {
    const TtestFolder folder;
    const Tended ended =
        runProgram(QStringLiteral(EQREC_HOST), {QStringLiteral("--tour"), nameOf(folder / "pictures")});
    QVERIFY2(ended.status == 0, ended.printed.constData());
    QVERIFY2(ended.printed.contains("\nok ") && !ended.printed.contains("FAILED"), ended.printed.constData());
    QVERIFY(ended.printed.contains(nameOf(folder / "pictures").toUtf8()));
    const QByteArrayList pictures = namesIn(folder / "pictures");
    QVERIFY(pictures.size() >= 8);
    QVERIFY(!QImage(nameOf(folder / "pictures" / pictures.first().constData())).isNull());
  }
};
EQREC_TEST(ThostProgramTest);

#include "hostProgramTest.moc"
