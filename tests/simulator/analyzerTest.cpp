#include <QTest>

#include "simulator/analyzer.h"
#include "simulator/testHost.h"
#include "tools/testList.h"

namespace {

QByteArray textOf(const Tstep& step) {
  using Taction = Tstep::Taction;
  if (step.action == Taction::send && step.bytes.size() > 8) return QByteArray::number(step.bytes.size());
  if (step.action == Taction::send) return step.bytes.toHex();
  if (step.action == Taction::wait) return "wait" + QByteArray::number(step.milliseconds);
  return step.action == Taction::report ? "report" : "link";
}

/// All that an analyzer for uploads of two blocks does when these bytes come `piece` by `piece`, and the lines printed.
QByteArray steps(const QByteArray& bytes, qsizetype piece, const QByteArray& fault, QByteArrayList& lines) {
  QString error;
  TfaultScript script(parseFault(QString::fromLatin1(fault), 2, error));
  Tanalyzer analyzer(TlinkKind::tcp, {2, 1000, {}}, script, [&](const QByteArray& line) { lines << line; });
  QByteArray done;
  for (qsizetype at = 0; at < bytes.size(); at += piece) {
    for (Tsteps next = analyzer.take(bytes.mid(at, piece)); analyzer.isAnswering(); next = analyzer.answered()) {
      for (const Tstep& step : next) done += textOf(step) + ' ';
    }
  }
  analyzer.end();
  return done;
}

QByteArray upload(const QByteArray& entries) {
  return "GESI\rPEQR\r" + imageOf(entries, 2);
}

}  // namespace

class TanalyzerTest : public QObject {
  Q_OBJECT
 private slots:
  void refusesWhatDoesNotHold_data();
  void refusesWhatDoesNotHold();
  void playsFaultOnce_data();
  void playsFaultOnce();
};
EQREC_TEST(TanalyzerTest);

void TanalyzerTest::refusesWhatDoesNotHold_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<int>("piece");
  QTest::addColumn<QByteArray>("error");
  const QByteArray good = imageEntry("A", 1);
  const auto with = [&](qsizetype at, char byte) { return QByteArray(good).replace(at, 1, QByteArray(1, byte)); };
  const auto row = [](const char* name, const QByteArray& bytes, int piece, const QByteArray& error) {
    QTest::newRow(name) << bytes << piece << error;
  };
  row("full of records: right", upload(imageEntry("\xFF", 500).repeated(24)), 1, "");
  row("no record: right", upload({}), 1, "");
  row("procedure 0", upload(imageEntry("A", 0)), 1, "entry 1: procedure 0");
  row("procedure 501", upload(good + imageEntry("A", 501)), 1, "entry 2: procedure 501");
  row("zero in the ID", upload(with(3, '\0')), 1, "entry 1: a zero byte in the device ID");
  row("byte 17", upload(with(17, ' ')), 1, "entry 1: byte 17 is not zero");
  row("byte 21", upload(with(21, '\0')), 1, "entry 1: bytes 20 and 21 are not filler");
  row("entry behind filler", upload(QByteArray(22, '\xFF') + good), 1, "entry 2: it follows the filler");
  row("unknown command", "GESI\n", 1, "unknown command, bytes 47 45 53 49 0a");
  row("half a command", "PEQ", 1, "closed inside a command");
  row("half an upload", upload({}).chopped(1), 1, "closed after 1 of 2 blocks");
  row("no wait for answers", upload({}), 538, "bytes came before the answer");
}

void TanalyzerTest::refusesWhatDoesNotHold() {
  QFETCH(QByteArray, bytes);
  QFETCH(int, piece);
  QFETCH(QByteArray, error);
  QByteArrayList lines;
  const QByteArray done = steps(bytes, piece, {}, lines);
  QCOMPARE(lines.count("error: " + error), error.isEmpty() ? 0 : 1);
  QCOMPARE(lines.join('\n').count("error: "), error.isEmpty() ? 0 : 1);
  QCOMPARE(done.endsWith("450d "), error.startsWith("entry") || error.startsWith("unknown"));
  if (error.isEmpty()) QCOMPARE(done, "264 2a0d 430d 2a0d report ");
}

void TanalyzerTest::playsFaultOnce_data() {
  QTest::addColumn<QByteArray>("expected");  // the steps of an upload
  QTest::addColumn<bool>("goesOn");          // to the next upload on the same connection
  const auto row = [](const char* fault, const char* expected, bool goesOn) {
    QTest::newRow(fault) << QByteArray(expected) << goesOn;
  };
  row("silence@handshake", "", false);
  row("half@handshake", "132 ", false);
  row("short-handshake", "263 ", false);
  row("late@handshake", "wait900 264 2a0d 430d 2a0d report ", true);
  row("surplus@handshake", "528 2a0d 430d 2a0d report ", true);
  row("noise@command", "264 157efe2a0d 430d 2a0d report ", true);
  row("stale", "264 430d 430d 2a0d report ", true);
  row("split@1", "264 2a0d 43 wait5 0d 2a0d report ", true);
  row("too-late@1", "264 2a0d wait1250 430d 2a0d report ", true);
  row("wrong@1", "264 2a0d 450d 2a0d report ", true);
  row("stale@last", "264 2a0d 430d 430d ", true);
  row("wrong-end@2", "264 2a0d 430d 2a0a ", true);
  row("half@last", "264 2a0d 430d 2a ", false);
  row("ack-close@last", "264 2a0d 430d 2a0d report link ", false);
  row("noise@after", "264 2a0d 430d 2a0d report 157efe ", true);
}

void TanalyzerTest::playsFaultOnce() {
  QFETCH(QByteArray, expected);
  QFETCH(bool, goesOn);
  QByteArrayList lines;
  const QByteArray done = steps(upload(imageEntry("A", 1)).repeated(2), 1, QTest::currentDataTag(), lines);
  QCOMPARE(done, goesOn ? expected + "264 2a0d 430d 2a0d report " : expected);
  const QByteArray printed = lines.join('\n');
  QVERIFY2(printed.count("fault ") == 1 && !printed.contains("error"), printed.constData());
}

#include "analyzerTest.moc"
