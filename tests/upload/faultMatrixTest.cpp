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
constexpr unsigned lateTimeOut = 2000;
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

/// One kind of link, with an analyzer and an upload of its own.
struct Tlink {
  Tlink(char kind, const QStringList& options) : name(1, kind), far(kind, options) {}

  /// Sends three records. Keeps the message's text, empty after success.
  void upload(unsigned timeOut, std::chrono::milliseconds rest) {
    const std::vector<TuploadEntry> entries = {makeUploadEntry("A-1", 1), makeUploadEntry("A-2", 500),
                                               makeUploadEntry("A-3", 20)};
    TuploadCommStruct data(TcommMethod::usb, 1, {}, entries);
    data.image.resize(blocks * uploadBlockSize);
    const auto begin = Tclock::now();
    const TcommOutcome failure = uploader.upload(data.image, far.transport(), {timeOut, uploadBlockSize, rest});
    took = Tclock::now() - begin;
    text = failure ? QByteArray(failure->text) : QByteArray();
    advice = failure ? QByteArray::fromStdString(failure->advice) : QByteArray();
  }

  QByteArray name;
  TanalyzerLink far;
  Tuploader uploader;
  QByteArray text;
  QByteArray advice;
  Tclock::duration took = {};
};

/// Several links that upload at the same time.
class Tlinks {
 public:
  Tlinks(std::string_view kinds, const QStringList& options) {
    for (const char kind : kinds) links_.push_back(std::make_unique<Tlink>(kind, options));
  }
  void upload(unsigned timeOut, std::chrono::milliseconds rest = {}) {
    std::vector<std::unique_ptr<QThread>> threads;
    for (const auto& link : links_) {
      threads.emplace_back(QThread::create([&link, timeOut, rest] { link->upload(timeOut, rest); }))->start();
    }
    for (const auto& thread : threads) thread->wait();
  }
  void cancelAt(Tclock::time_point time) {
    for (const auto& link : links_) link->uploader.cancelAt = time;
  }
  /// What each has told: "t text" for each link.
  QByteArrayList texts() const {
    QByteArrayList texts;
    for (const auto& link : links_) texts << link->name + ' ' + link->text;
    return texts;
  }
  /// The same where all told one text.
  QByteArrayList all(const QByteArray& text) const {
    QByteArrayList texts;
    for (const auto& link : links_) texts << link->name + ' ' + text;
    return texts;
  }
  auto begin() const { return links_.begin(); }
  auto end() const { return links_.end(); }

 private:
  std::vector<std::unique_ptr<Tlink>> links_;
};

}  // namespace

/// Uploads against the simulated analyzer, over real sockets, pseudo-terminals and a loaded driver library.
class TfaultMatrixTest : public QObject {
  Q_OBJECT
 private slots:
  void initTestCase() { QVERIFY(loadStandInDriver()); }

  void eachFaultHasItsOutcome_data() {
    QTest::addColumn<std::string>("links");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<std::size_t>("place");
    QTest::addColumn<char>("outcome");
    for (const Tfault& fault : faults) {
      for (std::size_t place = 0; place < places.size(); ++place) {
        const QByteArray name = QByteArray(fault.kind) + '@' + places.at(place);
        const char outcome = fault.outcomes[place];
        if (outcome == '-') continue;
        QTest::addRow("%s %s", fault.links, name.constData())
            << std::string(fault.links) << QString::fromLatin1(name) << place << outcome;
      }
    }
  }
  void eachFaultHasItsOutcome() {
    QFETCH(std::string, links);
    QFETCH(QString, fault);
    QFETCH(std::size_t, place);
    QFETCH(char, outcome);
    const unsigned timeOut = timeOutFor(fault, outcome);
    Tlinks all(links, optionsOf(fault, timeOut));
    const auto handlesBefore = openHandles();
    all.upload(timeOut);
    QTRY_VERIFY(openHandles() <= handlesBefore);
    QCOMPARE(all.texts(), all.all(textOf(outcome)));
    for (const auto& link : all) {
      QCOMPARE(link->uploader.isGreeted(), place > 0 || outcome == 's');
      QCOMPARE(link->advice.isEmpty(), outcome == 's');
      const bool goesOn = fault.startsWith(u"surplus") || fault.startsWith(u"ack-close");
      const QByteArray held = heldAfter(place);
      QVERIFY2(outcome == 's' || link->advice.endsWith(held.mid(goesOn ? held.indexOf("5 b") : 0)), link->advice);
      QVERIFY2(outcome != 't' || link->took >= std::chrono::milliseconds(timeOut), link->name);
      QVERIFY2(link->took < std::chrono::milliseconds(longTimeOut), link->name);
      QVERIFY2(!link->uploader.isInUse(), link->name);
      if (outcome == 's') continue;
      if (place > 0) link->far.analyzer().waitFor("closed");
      const QByteArray closed = link->far.analyzer().waitFor("closed");
      const bool stopsThere = !fault.contains(QLatin1String("-write")) && !fault.startsWith(QLatin1String("surplus"));
      QVERIFY2(!stopsThere || closed.endsWith(": " + QByteArray::number(bytesUntil(place)) + " bytes"), closed);
    }
    // Only an analyzer that takes up its block again needs a rest.
    all.upload(longTimeOut, std::chrono::milliseconds(fault.startsWith(u"resume") ? 2 * shortTimeOut : 0));
    QCOMPARE(all.texts(), all.all(""));
    for (const auto& link : all) {
      QCOMPARE(link->far.analyzer().waitFor("upload complete"), "upload complete: 5 blocks, 3 records");
      QCOMPARE(link->far.analyzer().waitFor("record 3"), "record 3: A-3, procedure 20");
    }
  }

  void uploadAfterACancelStartsClean() {
    Tlinks all("tsu", optionsOf(QStringLiteral("resume@3"), 2 * shortTimeOut));
    all.cancelAt(Tclock::now() + std::chrono::milliseconds(150));
    all.upload(longTimeOut);
    QCOMPARE(all.texts(), all.all("Operation Cancelled."));
    all.cancelAt(Tuploader::never);
    // Without a rest the handshake belongs to the block.
    all.upload(shortTimeOut);
    QCOMPARE(all.texts(), all.all(textOf('t')));
    for (const auto& link : all) {
      QCOMPARE(link->far.analyzer().waitFor("taken"), "taken for the rest of a block: 5 bytes");
    }
    all.upload(longTimeOut, std::chrono::milliseconds(5 * shortTimeOut));
    QCOMPARE(all.texts(), all.all(""));
  }

  void cancellingTakesEffectAtOnce() {
    for (const char* place : {"handshake", "command", "1", "5"}) {
      auto took = Tclock::duration::max();
      // Once in several attempts is enough: the machine may be busy.
      for (int attempt = 0; attempt < 3 && took > std::chrono::milliseconds(150); ++attempt) {
        Tlinks all("tsu", optionsOf(QStringLiteral("silence@") + QLatin1String(place), longTimeOut));
        constexpr std::chrono::milliseconds before(250);
        all.cancelAt(Tclock::now() + before);
        all.upload(2 * longTimeOut);
        QCOMPARE(all.texts(), all.all("Operation Cancelled."));
        took = {};
        for (const auto& link : all) took = std::max(took, link->took - before);
      }
      QVERIFY2(took <= std::chrono::milliseconds(150), place);
    }
  }
};
EQREC_TEST(TfaultMatrixTest);

#include "faultMatrixTest.moc"
