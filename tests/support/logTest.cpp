#include <QRegularExpression>
#include <QTest>
#include <functional>
#include <latch>
#include <thread>
#include <vector>

#include "support/appendFile.h"
#include "support/errors.h"
#include "support/log.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

constexpr int threadCount = 4;

/// Does the work in several threads, which begin at the same moment.
void inThreads(const std::function<void()>& work) {
  std::latch start(threadCount);
  std::vector<std::jthread> threads;
  threads.reserve(threadCount);
  for (int i = 0; i < threadCount; ++i) {
    threads.emplace_back([&] {
      start.arrive_and_wait();
      work();
    });
  }
}

QStringList linesIn(const TtestFolder& folder) {
  return QString::fromLatin1(linesOf(folder / "EquipmentRecord.log")).split(u'\n');
}

template <typename Terror>
void logThrown(Terror error) {
  try {
    throw error;
  } catch (...) {
    logCaught("here");
  }
}

}  // namespace

class TlogTest : public QObject {
  Q_OBJECT
 private slots:
  void cleanup() { closeLog(); }

  void eachTextIsOneLine() {
    const TtestFolder folder;
    const TtestFolder other;
    logInfo("before it is open");
    openLog(folder.path());
    logInfo("first\r\nsecond\x7F");
    openLog(folder.path());
    logFailure(std::string(5000, 'x'));
    logThrown(TEqRecException("text", "unit.cpp", 7));
    logThrown(1);
    openLog(other.path());
    logInfo("elsewhere");
    closeLog();
    logInfo("closed");
    const QString start = QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} \\[%1\\] ");
    const QRegularExpression timeAndProcess(start.arg(QCoreApplication::applicationPid()));
    const QString longest(2000, u'x');
    QCOMPARE(linesIn(folder).replaceInStrings(timeAndProcess, QStringLiteral("at ")).join(u'\n'),
             QStringLiteral("at info: first  second \nat error: ") + longest +
                 QStringLiteral("...\nat error: here: text (unit.cpp:7)\n"
                                "at error: here: an exception of unknown type\n"));
    QVERIFY(bytesOf(other / "EquipmentRecord.log").contains("elsewhere"));
  }

  void linesOfSeveralProgramsStayWhole() {
    constexpr int lineCount = 300;
    const TtestFolder folder;
    openLog(folder.path());
    const QByteArray foreign(300, 'f');
    inThreads([&] {
      for (int i = 0; i < lineCount; ++i) {
        logInfo(std::string(i, 'x') + '.');
        appendToFile(folder / "EquipmentRecord.log", (foreign + '\n').toStdString(), 1'000'000);
      }
    });
    const QStringList lines = linesIn(folder);
    QCOMPARE(lines.count(QString::fromLatin1(foreign)), threadCount * lineCount);
    const QRegularExpression own(QStringLiteral("^[-0-9:. ]+\\[\\d+\\] info: x*\\.$"));
    QCOMPARE(lines.filter(own).size(), threadCount * lineCount);
    QCOMPARE(lines.size(), 2 * threadCount * lineCount + 1);
  }

  void isTurnedOverAtOpening() {
    const TtestFolder folder;
    writeBytes(folder / "EquipmentRecord.log", QByteArray(500'001, 'b'));
    writeBytes(folder / "equipmentrecord.old.LOG", "older");
    for (int i = 0; i < 2; ++i) {
      openLog(folder.path());
      logInfo("after");
    }
    QCOMPARE(namesIn(folder.path()), QByteArrayList({"EquipmentRecord.log", "equipmentrecord.old.LOG"}));
    QCOMPARE(bytesOf(folder / "equipmentrecord.old.LOG"), QByteArray(500'001, 'b'));
    QCOMPARE(bytesOf(folder / "EquipmentRecord.log").count("after"), 2);
  }

  void severalProgramsTurnItOverOnce() {
    const TtestFolder folder;
    for (int i = 0; i < 300; ++i) {
      writeBytes(folder / "log", "12345");
      writeBytes(folder / "old", "older");
      inThreads([&] {
        turnFileOver(folder / "log", folder / "old", 4);
        appendToFile(folder / "log", "x", 100);
      });
      const QByteArray old = bytesOf(folder / "old");
      QVERIFY2(old.startsWith("12345"), old);
      QCOMPARE((old + bytesOf(folder / "log")).count('x'), threadCount);
      std::filesystem::remove(folder / "log");
    }
  }

  void endsAtItsLimit() {
    const TtestFolder folder;
    openLog(folder.path());
    writeBytes(folder / "EquipmentRecord.log", QByteArray(989'800, 'b') + '\n');
    for (int i = 0; i < 100; ++i) logInfo(std::to_string(i));
    const QByteArray log = bytesOf(folder / "EquipmentRecord.log");
    QVERIFY(log.size() < 1'000'000);
    QVERIFY(log.contains(": 0") && !log.contains(": 99"));
    QCOMPARE(log.count("The log is full."), 1);
  }

  void unwritablePlaceIsLeftAlone() {
    const TtestFolder folder;
    std::filesystem::create_directories(folder / "EquipmentRecord.log/in it");
    for (const auto& place : {folder.path(), folder / "missing"}) {
      openLog(place);
      logInfo("text");
    }
    QCOMPARE(namesIn(folder.path()), QByteArrayList({"EquipmentRecord.log"}));
    QCOMPARE(namesIn(folder / "EquipmentRecord.log"), QByteArrayList({"in it"}));
  }
};
EQREC_TEST(TlogTest);

#include "logTest.moc"
