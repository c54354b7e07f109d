#include <QDir>
#include <QTest>
#include <array>
#include <random>

#include "rounds.h"
#include "tools/analyzerLink.h"
#include "tools/testList.h"

namespace {

using std::chrono::milliseconds;
using Tclock = Tuploader::Tclock;

constexpr unsigned timeOut = uploadTimeOut;  // ms, of the host
constexpr milliseconds longest(4 * timeOut);

/// Of this process; 0 where the system does not list them.
long threads() {
  return static_cast<long>(QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

QString randomFault(std::mt19937& random, char link) {
  QByteArrayList kinds = {"silence", "half", "split",    "wrong",         "wrong-end", "stale",
                          "surplus", "late", "too-late", "blocked-write", "noise",     "resume"};
  if (link == 't') kinds += QByteArrayList{"close", "ack-close", "reset"};
  if (link == 's') kinds += QByteArrayList{"unplug"};
  if (link == 'u') kinds += QByteArrayList{"unplug", "short-write"};
  const QByteArray kind = kinds[static_cast<qsizetype>(random() % static_cast<unsigned>(kinds.size()))];
  const unsigned place = random() % (uploadBlockCount + 2);
  const QByteArray where = place == 0   ? QByteArray("command")
                           : place == 1 ? QByteArray("last")
                                        : QByteArray::number(place - 1);
  return QString::fromLatin1(kind + '@' + where);
}

std::vector<std::uint8_t> randomImage(std::mt19937& random) {
  std::vector<TuploadEntry> entries;
  for (unsigned i = random() % 200; i > 0; --i) {
    entries.push_back(makeUploadEntry("R-" + std::to_string(random() % 100000), static_cast<std::uint16_t>(i)));
  }
  return TuploadCommStruct(TcommMethod::usb, 1, {}, entries).image;
}

QStringList savingTo(const std::filesystem::path& file) {
  return {QStringLiteral("--save"), nameOf(file), QStringLiteral("--timeout"), QString::number(timeOut)};
}

}  // namespace

/// Many uploads in one process: with and without faults, and cancelled at any moment. EQREC_ROUNDS and EQREC_SEED as in
/// the other proofs.
class TuploadEnduranceTest : public QObject {
  Q_OBJECT

 private:
  TtestFolder folder_;
  const std::filesystem::path saved_ = folder_ / "image";
  Tuploader uploader_;

  char randomLink(std::mt19937& random) const { return "tsu"[random() % 3]; }

  TcommOutcome send(const std::vector<std::uint8_t>& image, const TanalyzerLink& far) {
    return uploader_.upload(image, far.transport(), {timeOut, uploadBlockSize, milliseconds(0)});
  }

  static bool isSilent(const TcommFailure& failure) { return failure.text == Tuploader::silent.text; }

  bool hasArrived(const std::vector<std::uint8_t>& image) const {
    const QByteArray arrived = bytesOf(saved_);
    return std::equal(image.begin(), image.end(), arrived.begin(), arrived.end(),
                      [](std::uint8_t sent, char came) { return sent == static_cast<std::uint8_t>(came); });
  }

 private slots:
  void initTestCase() { QVERIFY(loadStandInDriver()); }
  void init() { uploader_.cancelAt = Tuploader::never; }

  void nothingGrows() {
    const int count = 10 * proofRounds();
    std::mt19937 random(proofSeed());
    const auto image = randomImage(random);
    TanalyzerLink tcp('t', {});
    TanalyzerLink serial('s', {});
    TanalyzerLink usb('u', {});
    const std::array<TanalyzerLink*, 3> links = {&tcp, &serial, &usb};
    const auto measured = [] { return std::array<long, 3>{long(openHandles()), threads(), long(memoryInUse())}; };
    std::array<long, 3> early = {};
    for (int i = 0; i < count; ++i) {
      if (i == count / 10) early = measured();
      TanalyzerLink& far = *links.at(static_cast<std::size_t>(i % 3));
      const TcommOutcome failure = send(image, far);
      QVERIFY2(!failure, failure ? failure->text : "");
      QVERIFY(!far.analyzer().waitFor("upload complete: 1536 blocks").isEmpty());
    }
    QTRY_VERIFY(measured()[0] <= early[0] && measured()[1] <= early[1]);
    const long grown = measured()[2] - early[2];
    QVERIFY2(grown <= 65536, "bytes grown: " + QByteArray::number(qlonglong(grown)));
    qInfo("%d uploads: %ld handles, %ld threads, %ld bytes grown", count, measured()[0], measured()[1], grown);
  }

  void randomFaultsEndInSuccessOrOneMessage() {
    std::map<QByteArray, int> ends;
    for (int round = 0; round < proofRounds() * 5 / 3; ++round) {
      const unsigned seed = proofSeed() + static_cast<unsigned>(round);
      std::mt19937 random(seed);
      const char link = randomLink(random);
      const QString fault = randomFault(random, link);
      const auto image = randomImage(random);
      std::filesystem::remove(saved_);
      TanalyzerLink far(link, savingTo(saved_) + QStringList{QStringLiteral("--fault"), fault});
      const auto begin = Tclock::now();
      const TcommOutcome failure = send(image, far);
      const auto took = Tclock::now() - begin;
      const QByteArray what = "seed " + QByteArray::number(seed) + ", " + link + ' ' + fault.toLatin1();
      QVERIFY2(failure || hasArrived(image), what);
      QVERIFY2(!failure || !isSilent(*failure), what);
      QVERIFY2(took < longest && !uploader_.isInUse(), what);
      ++ends[failure ? QByteArray(failure->text).split('\n').first() : QByteArray("success")];
    }
    for (const auto& [end, count] : ends) qInfo("%s: %d", end.constData(), count);
  }

  void cancelledAtAnyMoment() {
    int inTime = 0;
    for (int round = 0; round < proofRounds(); ++round) {
      const unsigned seed = proofSeed() + static_cast<unsigned>(round);
      std::mt19937 random(seed);
      const auto image = randomImage(random);
      std::filesystem::remove(saved_);
      TanalyzerLink far(randomLink(random), savingTo(saved_));
      uploader_.cancelAt = Tclock::now() + std::chrono::microseconds(random() % 200'000);
      const TcommOutcome failure = send(image, far);
      const auto late = Tclock::now() - uploader_.cancelAt;
      const QByteArray what = "seed " + QByteArray::number(seed);
      // There is no message when it comes while the connection is opened.
      const bool isCancelled = failure && (failure->cause == TcommCause::cancelled || isSilent(*failure));
      QVERIFY2(isCancelled || (!failure && hasArrived(image)), what);
      QVERIFY2(late < longest && !uploader_.isInUse(), what);
      inTime += failure ? 1 : 0;
      uploader_.cancelAt = Tuploader::never;
      QTest::qWait(100);  // until the simulated port has noticed; no user is faster
      const TcommOutcome again = send(image, far);
      QVERIFY2(!again, what + ": " + (again ? again->text + QByteArray::fromStdString(again->advice) : QByteArray()));
      QVERIFY2(hasArrived(image), what);
    }
    qInfo("%d of %d cancels in time", inTime, proofRounds());
  }
};
EQREC_TEST(TuploadEnduranceTest);

#include "uploadTest.moc"
