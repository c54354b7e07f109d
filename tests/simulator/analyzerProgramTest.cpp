#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include "simulator/testHost.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

constexpr int blocks = 6;

/// The program, serving a TCP port, in a folder of its own. Killed with this object.
class Trunning {
 public:
  explicit Trunning(const QString& options) {
    program.setWorkingDirectory(nameOf(folder.path()));
    program.start(QStringLiteral(QT484_ANALYZER), (QStringLiteral("--tcp 0 --blocks 6 ") + options).split(u' '));
  }
  ~Trunning() {
    program.kill();
    program.waitForFinished(patience);
  }
  Trunning(const Trunning&) = delete;
  Trunning& operator=(const Trunning&) = delete;

  /// The port that its first line names.
  quint16 port() {
    while (!program.canReadLine() && program.waitForReadyRead(patience)) continue;
    return program.readLine().split(' ').last().trimmed().toUShort();
  }

  const TtestFolder folder;
  QProcess program;
};

QByteArray sampleImage() {
  return imageOf(imageEntry("A-1", 12) + imageEntry("T\xFCr 17 character!", 500), blocks);
}

}  // namespace

class TanalyzerProgramTest : public QObject {
  Q_OBJECT
 private slots:
  void takesUpload() {
    Trunning analyzer(QStringLiteral("--once --save image"));
    QCOMPARE(exchange(analyzer.port(), sampleImage()), "done");
    QVERIFY(analyzer.program.waitForFinished(patience));
    QCOMPARE(analyzer.program.exitCode(), 0);
    QCOMPARE(analyzer.program.readAll().replace("\r\n", "\n"),
             "connected tcp\nhandshake\nupload started\nupload complete: 6 blocks, 2 records\n"
             "record 1: A-1, procedure 12\nrecord 2: T\xFCr 17 character!, procedure 500\nclosed tcp: 1594 bytes\n");
    QCOMPARE(bytesOf(analyzer.folder / "image"), sampleImage());
    QCOMPARE(namesIn(analyzer.folder.path()), QByteArrayList{"image"});
  }

  void keepsPace() {
    constexpr qint64 baud = 115200;
    constexpr qint64 wire = 10000LL * (264 + 10 + 2 + blocks * (264 + 2)) / baud;  // milliseconds
    Trunning analyzer(QStringLiteral("--baud %1").arg(baud));
    const quint16 port = analyzer.port();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(exchange(port, sampleImage()), "done");
    QVERIFY2(timer.elapsed() >= wire && timer.elapsed() < 2 * wire, QByteArray::number(timer.elapsed()));
  }

  void refusesOptions() {
    for (const char* options : {"--tcp 65536", "--tcp 0 --loud", "--tcp 0 --fault fire", "--tcp 0 --fault silence@1537",
                                "--tcp 0 --fault garbage@command", "--tcp 0 --fault unplug"}) {
      QProcess program;
      program.start(QStringLiteral(QT484_ANALYZER), QString::fromLatin1(options).split(u' '));
      QVERIFY(program.waitForFinished(patience));
      QVERIFY2(program.exitCode() == 2, options);
      QVERIFY(program.readAllStandardError().size() > 20 && program.readAllStandardOutput().isEmpty());
    }
  }
};
EQREC_TEST(TanalyzerProgramTest);

#include "analyzerProgramTest.moc"
