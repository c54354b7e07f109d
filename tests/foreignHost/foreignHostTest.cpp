#include <QCoreApplication>
#include <QTest>

#include "tools/runProgram.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

QString beside(const char* program) {
  return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(program);
}

}  // namespace

class TforeignHostTest : public QObject {
  Q_OBJECT
 private slots:
  /// Each of two visits copies the first record: the exit button saves one, closing the host saves the other.
  void visitsAreSavedAsTheInterfaceSays() {
    const TtestFolder working;
    const TtestFolder program;
    std::filesystem::copy(std::filesystem::path(SAMPLE_FOLDER) / "DATA", working / "DATA");
    const auto content = [&](const char* name) { return bytesOf(working / "DATA" / name); };
    const QByteArray data = content("eq.dat");
    const QByteArray info = content("eqinfo.dat");
    const Tended ended =
        runProgram(beside(EQREC_FOREIGN_HOST), {beside(EQREC_MODULE), nameOf(program.path()), nameOf(working.path())});
    QVERIFY2(ended.status == 0, ended.printed.constData());
    QVERIFY(!data.isEmpty() && content("eq.dat").startsWith(data) && content("eqinfo.dat").startsWith(info));
    QCOMPARE(content("eq.dat").count('\n'), data.count('\n') + 2);
    QCOMPARE(content("eqinfo.dat").count('\n'), info.count('\n') + 2);
    const QByteArray settings = bytesOf(program / "EquipmentRecord.ini");
    QVERIFY2(settings.contains("COL_1_WIDTH=177"), settings.constData());
  }
};
EQREC_TEST(TforeignHostTest);

#include "foreignHostTest.moc"
