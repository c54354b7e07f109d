#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTest>

#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

constexpr int patience = 120000;  // milliseconds; sanitizers are slow

struct Tended {
  int status = -1;
  QByteArray printed;
};

Tended runHost(const QStringList& arguments) {
  QProcess host;
  host.start(QStringLiteral(EQREC_HOST), arguments);
  if (!host.waitForFinished(patience)) return {};
  return {host.exitStatus() == QProcess::NormalExit ? host.exitCode() : -1, host.readAllStandardOutput()};
}

QString name(const std::filesystem::path& path) {
  return QString::fromStdString(path.generic_string());
}

}  // namespace

class ThostProgramTest : public QObject {
  Q_OBJECT
 private slots:
  void tourPassesWithPictures();
};
EQREC_TEST(ThostProgramTest);

void ThostProgramTest::tourPassesWithPictures() {
  const TtestFolder folder;
  const Tended ended = runHost({QStringLiteral("--tour"), name(folder / "pictures")});
  QVERIFY2(ended.status == 0, ended.printed.constData());
  QVERIFY2(ended.printed.contains("\nok ") && !ended.printed.contains("FAILED"), ended.printed.constData());
  QVERIFY(ended.printed.contains(name(folder / "pictures").toUtf8()));
  const QByteArrayList pictures = namesIn(folder / "pictures");
  QVERIFY(pictures.size() >= 8);
  QVERIFY(!QImage(name(folder / "pictures" / pictures.first().constData())).isNull());
}

#include "hostProgramTest.moc"
