#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include "simulator/serialHost.h"
#include "simulator/testHost.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

constexpr int blocks = 6;

/// The program, serving one link, in a folder of its own. Ends with the test.
class Trunning {
 public:
  Trunning(const QByteArray& link, const QByteArray& more) : link_(link) {
    const QByteArray where = link == "serial" ? "com1" : "0";
    const QString options = QString::fromLatin1("--" + link + ' ' + where + " --blocks 6 " + more);
    program.setWorkingDirectory(QString::fromStdString(folder.path().string()));
    program.start(QStringLiteral(QT484_ANALYZER), options.split(u' '));
  }
  ~Trunning() {
    program.terminate();  // which not every system's programs take notice of
    if (program.waitForFinished(200)) return;
    program.kill();
    program.waitForFinished(patience);
  }
  Trunning(const Trunning&) = delete;
  Trunning& operator=(const Trunning&) = delete;

  /// Waits until this was printed so many times.
  bool prints(const QByteArray& text, int times = 1) {
    do {
      printed += program.readAll().replace("\r\n", "\n");
    } while (printed.count(text) < times && program.waitForReadyRead(patience));
    return printed.count(text) >= times;
  }
  TtestHost open() {
    if (!prints("\n")) return {};
    const QByteArray where = printed.first(printed.indexOf('\n')).split(' ').last();
    return openHost(link_,
                    link_ == "serial" ? QByteArray::fromStdString((folder / where.constData()).string()) : where);
  }

  const TtestFolder folder;
  QProcess program;
  QByteArray printed;

 private:
  QByteArray link_;
};

QByteArray sampleImage() {
  return imageOf(imageEntry("A-1", 12) + imageEntry("T\xFCr 17 character!", 500), blocks);
}

void eachLink() {
  QTest::addColumn<QByteArray>("link");
  for (const char* link : {"tcp", "usb"}) QTest::newRow(link) << QByteArray(link);
  if (hasSerialLink) QTest::newRow("serial") << QByteArray("serial");
}

}  // namespace

class TanalyzerProgramTest : public QObject {
  Q_OBJECT
 private slots:
  void takesUpload_data() { eachLink(); }
  void takesUpload();
  void playsFaultOfLink_data();
  void playsFaultOfLink();
  void keepsPace_data() { eachLink(); }
  void keepsPace();
  void refusesOptions_data();
  void refusesOptions();
};
EQREC_TEST(TanalyzerProgramTest);

void TanalyzerProgramTest::takesUpload() {
  QFETCH(QByteArray, link);
  Trunning analyzer(link, "--once --save image");
  QCOMPARE(exchange(analyzer.open(), sampleImage()), "done");
  QVERIFY(analyzer.program.waitForFinished(patience));
  QCOMPARE(analyzer.program.exitCode(), 0);
  analyzer.printed += analyzer.program.readAll().replace("\r\n", "\n");
  QCOMPARE(analyzer.printed.sliced(analyzer.printed.indexOf('\n') + 1),
           "connected " + link + "\nhandshake\nupload started\nupload complete: 6 blocks, 2 records\n" +
               "record 1: A-1, procedure 12\nrecord 2: T\xFCr 17 character!, procedure 500\n" +  //
               "closed " + link + ": 1594 bytes\n");
  QCOMPARE(bytesOf(analyzer.folder / "image"), sampleImage());
  QCOMPARE(namesIn(analyzer.folder.path()), QByteArrayList{"image"});
}

void TanalyzerProgramTest::playsFaultOfLink_data() {
  QTest::addColumn<QByteArray>("link");
  QTest::addColumn<QByteArray>("outcome");
  QTest::newRow("close@command") << QByteArray("tcp") << QByteArray("0 answered ");
  QTest::newRow("reset@3") << QByteArray("tcp") << QByteArray("3 answered ");
  QTest::newRow("ack-close@last") << QByteArray("tcp") << QByteArray("done");
  if (hasSerialLink) {
    QTest::newRow("unplug@3") << QByteArray("serial") << QByteArray("3 answered ");
    QTest::newRow("unplug@after") << QByteArray("serial") << QByteArray("done");
  }
  QTest::newRow("unplug@last") << QByteArray("usb") << QByteArray("6 answered ");
  QTest::newRow("short-write@command") << QByteArray("usb") << QByteArray("0 took 2");
  QTest::newRow("blocked-write@2") << QByteArray("usb") << QByteArray("2 took 132");
}

void TanalyzerProgramTest::playsFaultOfLink() {
  QFETCH(QByteArray, link);
  QFETCH(QByteArray, outcome);
  Trunning analyzer(link, QByteArray("--fault ") + QTest::currentDataTag());
  QCOMPARE(exchange(analyzer.open(), sampleImage()), outcome);
  QCOMPARE(exchange(analyzer.open(), sampleImage()), "done");
  QVERIFY2(analyzer.prints("closed", 2) && !analyzer.printed.contains("error"), analyzer.printed);
}

void TanalyzerProgramTest::keepsPace() {
  QFETCH(QByteArray, link);
  constexpr qint64 baud = 115200;
  constexpr qint64 wire = 10000LL * (264 + 10 + 2 + blocks * (264 + 2)) / baud;  // milliseconds
  Trunning analyzer(link, "--baud " + QByteArray::number(baud));
  const TtestHost host = analyzer.open();
  QElapsedTimer timer;
  timer.start();
  QCOMPARE(exchange(host, sampleImage()), "done");
  QVERIFY2(timer.elapsed() >= wire && timer.elapsed() < 2 * wire, QByteArray::number(timer.elapsed()));
}

void TanalyzerProgramTest::refusesOptions_data() {
  QTest::addColumn<QString>("options");
  QTest::newRow("port out of range") << QStringLiteral("--tcp 65536");
  QTest::newRow("unknown option") << QStringLiteral("--tcp 0 --loud");
  QTest::newRow("unknown fault") << QStringLiteral("--tcp 0 --fault fire");
  QTest::newRow("block that an upload does not have") << QStringLiteral("--tcp 0 --fault silence@1537");
  QTest::newRow("fault where it makes no sense") << QStringLiteral("--tcp 0 --fault garbage@command");
  QTest::newRow("fault that the link does not have") << QStringLiteral("--tcp 0 --fault unplug");
}

void TanalyzerProgramTest::refusesOptions() {
  QFETCH(QString, options);
  QProcess program;
  program.start(QStringLiteral(QT484_ANALYZER), options.split(u' '));
  QVERIFY(program.waitForFinished(patience));
  QCOMPARE(program.exitCode(), 2);
  QVERIFY(program.readAllStandardError().size() > 20 && program.readAllStandardOutput().isEmpty());
}

#include "analyzerProgramTest.moc"
