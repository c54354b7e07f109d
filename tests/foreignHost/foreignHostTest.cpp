#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

constexpr int patience = 60000;  // milliseconds; sanitizers are slow

QString beside(const char* program) {
  return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(program);
}

QString name(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

/// The host's two folders, with the sample list and without the settings of the editor.
class ThostFolders {
 public:
  ThostFolders() {
    std::filesystem::create_directories(program());
    std::filesystem::create_directories(working());
    std::filesystem::copy(std::filesystem::path(SAMPLE_FOLDER) / "DATA", working() / "DATA");
  }
  std::filesystem::path program() const { return folder_ / "program"; }
  std::filesystem::path working() const { return folder_ / "working"; }
  QByteArray data() const { return bytesOf(working() / "DATA/eq.dat"); }
  QByteArray info() const { return bytesOf(working() / "DATA/eqinfo.dat"); }

 private:
  TtestFolder folder_;
};

struct Tended {
  int status = -1;
  QByteArray printed;
};

Tended runHost(const ThostFolders& folders) {
  QProcess host;
  host.setProcessChannelMode(QProcess::MergedChannels);
  host.start(beside(EQREC_FOREIGN_HOST), {beside(EQREC_MODULE), name(folders.program()), name(folders.working())});
  if (!host.waitForFinished(patience)) {
    host.kill();
    host.waitForFinished();
  }
  return {host.exitStatus() == QProcess::NormalExit ? host.exitCode() : -1, host.readAll()};
}

}  // namespace

class TforeignHostTest : public QObject {
  Q_OBJECT
 private slots:
  void visitsAreSavedAsTheInterfaceSays();
  void boxOnTheWayIsTold();
};
EQREC_TEST(TforeignHostTest);

/// Each of the two visits copies the first record: one is saved by the exit button, the other by the host's closing.
void TforeignHostTest::visitsAreSavedAsTheInterfaceSays() {
  const ThostFolders folders;
  const QByteArray data = folders.data();
  const QByteArray info = folders.info();
  const Tended ended = runHost(folders);
  QVERIFY2(ended.status == 0, ended.printed.constData());
  QVERIFY(!data.isEmpty() && folders.data().startsWith(data) && folders.info().startsWith(info));
  QCOMPARE(folders.data().count('\n'), data.count('\n') + 2);
  QCOMPARE(folders.info().count('\n'), info.count('\n') + 2);
  const QByteArray settings = bytesOf(folders.program() / "EquipmentRecord.ini");
  QVERIFY2(settings.contains("COL_1_WIDTH=177"), settings.constData());
}

/// What the run above relies on: a message box fails the host, and does not hold it up.
void TforeignHostTest::boxOnTheWayIsTold() {
  const ThostFolders folders;
  std::filesystem::remove(folders.working() / "DATA/eqinfo.dat");
  const Tended ended = runHost(folders);
  QCOMPARE(ended.status, 1);
  QVERIFY2(ended.printed.contains("NOT without a box: ER2NDFILENOTFOUND"), ended.printed.constData());
}

#include "foreignHostTest.moc"
