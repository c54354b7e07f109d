#include <QDir>
#include <QImage>
#include <QTest>

#include "tools/runProgram.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class ThostProgramTest : public QObject {
  Q_OBJECT
 private slots:
  /// The tour also checks that each window fits its screen, and each text its control.
  void tourPassesWithPictures() {
    const QByteArray small = "offscreen:configfile=screen.json";
    tour("1", "offscreen", {});
    tour("1", small, "--points 24");
    tour("2", small, "--points 12 --dark --keyboard");
  }

 private:
  static void tour(const QByteArray& scale, const QByteArray& platform, const QByteArray& look) {
    const TtestFolder folder;
    writeBytes(folder / "screen.json", R"({"screens": [{"name": "small", "x": 0, "y": 0, "width": 1024, "height": 600,
        "logicalDpi": 96, "dpr": 1}]})");
    QDir::setCurrent(nameOf(folder.path()));
    qputenv("QT_SCALE_FACTOR", scale);
    qputenv("QT_QPA_PLATFORM", platform);
    const Tended ended = runProgram(QCoreApplication::applicationDirPath() + QStringLiteral("/qt484-host"),
                                    QStringList{QStringLiteral("--tour"), nameOf(folder / "pictures")} +
                                        QString::fromLatin1(look).split(u' ', Qt::SkipEmptyParts));
    QDir::setCurrent(QDir::rootPath());
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
