#include <QMap>
#include <QTest>
#include <chrono>

#include "tools/analyzerLink.h"
#include "tools/testList.h"

namespace {

using Tclock = std::chrono::steady_clock;

constexpr std::size_t blocks = 5;

// On a busy machine any step may take a while. So only exchanges that must time out have a short time-out, and those
// that end shortly before or after it have one with some tolerance.
constexpr unsigned shortTimeOut = 250;
constexpr unsigned tooLateTimeOut = 600;
constexpr unsigned lateTimeOut = 1000;
constexpr unsigned longTimeOut = 4000;

/// The outcome of each fault of the analyzer: s(uccess), t(ime-out), c(ommunications could not be established) or n(o
/// device), at the handshake, the command, the first, middle and last block and after the last; "-" if the fault makes
/// no sense there.
struct Tfault {
  const char* kind;
  const char* links;  ///< t(cp), s(erial), u(sb)
  std::string_view outcomes;
};
constexpr std::array<Tfault, 21> faults = {{{"silence", "tsu", "ttttt-"},     {"half", "tsu", "ttttt-"},
                                            {"split", "tsu", "sssss-"},       {"wrong", "tsu", "tsccc-"},
                                            {"wrong-end", "tsu", "-sccc-"},   {"stale", "tsu", "-sccc-"},
                                            {"surplus", "tsu", "scccs-"},     {"late", "tsu", "sssss-"},
                                            {"too-late", "tsu", "ttttt-"},    {"close", "t", "cccccs"},
                                            {"ack-close", "t", "scccs-"},     {"reset", "t", "cccccs"},
                                            {"unplug", "s", "cccccs"},        {"unplug", "u", "nnnnns"},
                                            {"short-write", "u", "ccccc-"},   {"blocked-write", "ts", "ttttt-"},
                                            {"blocked-write", "u", "ccccc-"}, {"noise", "tsu", "sccccs"},
                                            {"garbage", "tsu", "s-----"},     {"short-handshake", "tsu", "t-----"},
                                            {"resume", "tsu", "-tttt-"}}};
constexpr std::array<const char*, 6> places = {"handshake", "command", "1", "3", "5", "after"};

QByteArray textOf(char outcome) {
  return QMap<char, QByteArray>{{'t', "Timeout Error.\nOperation Canceled."},
                                {'c', "Could not establish communications with analyzer.\nOperation Canceled."},
                                {'n', "No Deviced Attached.\nOperation Canceled."}}[outcome];
}

/// The number of bytes that the analyzer has received when the exchange ends at a place.
int bytesUntil(std::size_t place) {
  constexpr std::array<std::size_t, 6> blocksSent = {0, 0, 1, 3, 5, 5};
  return static_cast<int>(5 + blocksSent.at(place) * uploadBlockSize);
}

/// How the advice ends after a failure at a place.
QByteArray heldAfter(std::size_t place) {
  constexpr std::array<const char*, 6> acknowledged = {"", "None of the ", "None of the ", "2 of ", "4 of ", ""};
  return place == 0 ? QByteArray()
                    : acknowledged.at(place) + QByteArray(
                                                   "5 blocks had been acknowledged. The analyzer may now hold part "
                                                   "of the list. Upload again before you use it.");
}

unsigned timeOutFor(const QString& fault, char outcome) {
  if (fault.startsWith(u"late")) return lateTimeOut;
  if (fault.startsWith(u"too-late")) return tooLateTimeOut;
  return outcome == 't' ? shortTimeOut : longTimeOut;
}

QStringList optionsOf(const QString& fault, unsigned timeOut) {
  return {QStringLiteral("--blocks"), QString::number(blocks),   QStringLiteral("--timeout"),
          QString::number(timeOut),   QStringLiteral("--fault"), fault};
}

}  // namespace

/// Uploads against the simulated analyzer, over real sockets, pseudo-terminals and a loaded driver library.
class TfaultMatrixTest : public QObject {
  Q_OBJECT

 private:
  Tuploader uploader_;

  /// Sends three records. Returns the message's text, empty after success.
  QByteArray upload(const TuploadTransport& transport, unsigned timeOut, std::chrono::milliseconds rest = {}) {
    const std::vector<TuploadEntry> entries = {makeUploadEntry("A-1", 1), makeUploadEntry("A-2", 500),
                                               makeUploadEntry("A-3", 20)};
    TuploadCommStruct data(TcommMethod::usb, 1, {}, entries);
    data.image.resize(blocks * uploadBlockSize);
    const TcommOutcome failure = uploader_.upload(data.image, transport, {timeOut, uploadBlockSize, rest});
    advice_ = failure ? QByteArray::fromStdString(failure->advice) : QByteArray();
    return failure ? QByteArray(failure->text) : QByteArray();
  }
  QByteArray advice_;

 private slots:
  void initTestCase() { QVERIFY(loadStandInDriver()); }
  void init() { uploader_.cancelAt = Tuploader::never; }

  void eachFaultHasItsOutcome_data() {
    QTest::addColumn<char>("link");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<std::size_t>("place");
    QTest::addColumn<char>("outcome");
    for (const Tfault& fault : faults) {
      for (std::size_t place = 0; place < places.size(); ++place) {
        const QByteArray name = QByteArray(fault.kind) + '@' + places.at(place);
        const char outcome = fault.outcomes[place];
        for (const char link : std::string_view(outcome == '-' ? "" : fault.links)) {
          QTest::addRow("%c %s", link, name.constData()) << link << QString::fromLatin1(name) << place << outcome;
        }
      }
    }
  }
  void eachFaultHasItsOutcome() {
    QFETCH(char, link);
    QFETCH(QString, fault);
    QFETCH(std::size_t, place);
    QFETCH(char, outcome);
    const unsigned timeOut = timeOutFor(fault, outcome);
    TanalyzerLink far(link, optionsOf(fault, timeOut));
    const auto handlesBefore = openHandles();
    const auto begin = Tclock::now();
    QCOMPARE(upload(far.transport(), timeOut), textOf(outcome));
    const auto elapsed = Tclock::now() - begin;
    QCOMPARE(uploader_.isGreeted(), place > 0 || outcome == 's');
    QCOMPARE(advice_.isEmpty(), outcome == 's');
    const bool goesOn = fault.startsWith(u"surplus") || fault.startsWith(u"ack-close");
    QVERIFY2(outcome == 's' || advice_.endsWith(heldAfter(place).mid(goesOn ? heldAfter(place).indexOf("5 b") : 0)),
             advice_);
    QVERIFY(outcome != 't' || elapsed >= std::chrono::milliseconds(timeOut));
    QVERIFY(elapsed < std::chrono::milliseconds(longTimeOut));
    QVERIFY(!uploader_.isInUse());
    QTRY_VERIFY(openHandles() <= handlesBefore);
    if (outcome != 's') {
      if (place > 0) far.analyzer().waitFor("closed");
      const QByteArray closed = far.analyzer().waitFor("closed");
      const bool stopsThere = !fault.contains(QLatin1String("-write")) && !fault.startsWith(QLatin1String("surplus"));
      if (stopsThere) QVERIFY(closed.endsWith(": " + QByteArray::number(bytesUntil(place)) + " bytes"));
    }
    // Only an analyzer that takes up its block again needs a rest.
    const std::chrono::milliseconds rest(fault.startsWith(u"resume") ? 2 * shortTimeOut : 0);
    QCOMPARE(upload(far.transport(), longTimeOut, rest), QByteArray());
    QCOMPARE(far.analyzer().waitFor("upload complete"), QByteArray("upload complete: 5 blocks, 3 records"));
    QCOMPARE(far.analyzer().waitFor("record 3"), QByteArray("record 3: A-3, procedure 20"));
  }

  void uploadAfterACancelStartsClean() {
    for (const char link : {'t', 's', 'u'}) {
      TanalyzerLink far(link, optionsOf(QStringLiteral("resume@3"), 2 * shortTimeOut));
      uploader_.cancelAt = Tclock::now() + std::chrono::milliseconds(150);
      QCOMPARE(upload(far.transport(), longTimeOut), "Operation Cancelled.");
      uploader_.cancelAt = Tuploader::never;
      // Without a rest the handshake belongs to the block.
      QCOMPARE(upload(far.transport(), shortTimeOut), textOf('t'));
      QCOMPARE(far.analyzer().waitFor("taken"), QByteArray("taken for the rest of a block: 5 bytes"));
      QCOMPARE(upload(far.transport(), longTimeOut, std::chrono::milliseconds(5 * shortTimeOut)), QByteArray());
    }
  }

  void cancellingTakesEffectAtOnce() {
    for (const char link : {'t', 's', 'u'}) {
      for (const char* place : {"handshake", "command", "1", "5"}) {
        auto took = Tclock::duration::max();
        // Once in several attempts is enough: the machine may be busy.
        for (int attempt = 0; attempt < 3 && took > std::chrono::milliseconds(150); ++attempt) {
          TanalyzerLink far(link, optionsOf(QStringLiteral("silence@") + QLatin1String(place), longTimeOut));
          uploader_.cancelAt = Tclock::now() + std::chrono::milliseconds(250);
          QCOMPARE(upload(far.transport(), 2 * longTimeOut), "Operation Cancelled.");
          took = Tclock::now() - uploader_.cancelAt;
          QVERIFY(!uploader_.isInUse());
        }
        QVERIFY2(took <= std::chrono::milliseconds(150), QByteArray(1, link) + " at " + place);
      }
    }
  }
};
EQREC_TEST(TfaultMatrixTest);

#include "faultMatrixTest.moc"
