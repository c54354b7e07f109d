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

/// What an analyzer for uploads of two blocks does when these bytes arrive `piece` by `piece`. Also adds the lines that
/// it prints.
QByteArray steps(const QByteArray& bytes, qsizetype piece, QByteArrayList& lines) {
  QString error;
  TfaultScript script(parseFault({}, 2, error));
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
  void refusesWhatDoesNotHold() {
    const QByteArray good = imageEntry("A", 1);
    const auto with = [&](qsizetype at, char byte) {
      return upload(QByteArray(good).replace(at, 1, QByteArray(1, byte)));
    };
    const std::initializer_list<std::tuple<QByteArray, qsizetype, QByteArray>> cases = {
        {upload(imageEntry("\xFF", 500).repeated(24)), 1, ""},
        {upload({}), 1, ""},
        {upload(imageEntry("A", 0)), 1, "entry 1: procedure 0"},
        {upload(good + imageEntry("A", 501)), 1, "entry 2: procedure 501"},
        {with(3, '\0'), 1, "entry 1: a zero byte in the device ID"},
        {with(17, ' '), 1, "entry 1: byte 17 is not zero"},
        {with(21, '\0'), 1, "entry 1: bytes 20 and 21 are not filler"},
        {upload(QByteArray(22, '\xFF') + good), 1, "entry 2: it follows the filler"},
        {"GESI\n", 1, "unknown command, bytes 47 45 53 49 0a"},
        {"PEQ", 1, "closed inside a command"},
        {upload({}).chopped(1), 1, "closed after 1 of 2 blocks"},
        {upload({}), 538, "bytes came before the answer"}};
    for (const auto& [bytes, piece, error] : cases) {
      QByteArrayList lines;
      const QByteArray done = steps(bytes, piece, lines);
      QCOMPARE(lines.count("error: " + error), error.isEmpty() ? 0 : 1);
      QCOMPARE(lines.join('\n').count("error: "), error.isEmpty() ? 0 : 1);
      QCOMPARE(done.endsWith("450d "), error.startsWith("entry") || error.startsWith("unknown"));
      if (error.isEmpty()) QCOMPARE(done, "264 2a0d 430d 2a0d report ");
    }
  }
};
EQREC_TEST(TanalyzerTest);

#include "analyzerTest.moc"
