#include <QRegularExpression>
#include <QTest>

#include "comm/commStruct.h"
#include "comm/commandLayer.h"
#include "comm/genComm.h"
#include "comm/scriptedCalls.h"
#include "support/log.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// A channel that answers from a text and records its use.
class TscriptedChannel final : public TDataCommClass {
 public:
  TscriptedChannel(TcommStruct& resources, unsigned timeOut, std::size_t blockSize, QByteArray answers)
      : TDataCommClass(&resources, TcommMode::usb, timeOut, blockSize, &usbParameters, true),
        answers_(std::move(answers)) {
    TDataCommClass::open();
  }

  int slots_ = 0;        ///< started so far
  int cancelAfter = 0;   ///< slots; 0 for never
  int failingWrite = 0;  ///< counted from 1
  QByteArray throwing;   ///< the function that throws
  QByteArrayList written;
  QByteArray positions;

  std::uint32_t bytesWaiting() override {
    mayThrow("bytesWaiting");
    return static_cast<std::uint32_t>(answers_.size());
  }
  int read(void* buffer, std::size_t count) override {
    mayThrow("read");
    std::copy_n(answers_.begin(), count, static_cast<char*>(buffer));
    answers_.remove(0, static_cast<qsizetype>(count));
    return 0;
  }
  int write(const void* buffer, std::size_t count) override {
    mayThrow("write");
    written << QByteArray(static_cast<const char*>(buffer), static_cast<qsizetype>(count));
    return written.size() == failingWrite ? -1 : 0;
  }
  bool cancelRequested() override {
    mayThrow("cancelRequested");
    return ++slots_ > cancelAfter && cancelAfter > 0;
  }
  void progress(int position) override {
    mayThrow("progress");
    positions += QByteArray::number(position) + ' ';
  }

 private:
  void mayThrow(const char* function) const {
    if (throwing == function) throw ECommError(ECommError::notOpen, 1, "COM5");
  }

  QByteArray answers_;
};

}  // namespace

/// The exchange of commands and blocks over a channel.
class TexchangeTest : public QObject {
  Q_OBJECT

 private:
  TscriptedSerial serial_;
  TscriptedUsb usb_;
  TcommStruct resources_{{serial_, usb_}};

 private slots:
  void putData() {
    using Tcase = std::tuple<const char*, const char*, int, int, int>;
    for (const auto& [name, answers, failingWrite, result, writes] :
         {Tcase("three blocks", "*\rC\rC\r*\r", 0, 0, 4),
          Tcase("first answer, status alone right", "*xC\rC\r*\r", 0, 0, 4),
          Tcase("first answer, end alone right", "?\rC\rC\r*\r", 0, 0, 4),
          Tcase("first answer, neither right", "?xC\rC\r*\r", 0, -2, 1),
          Tcase("block's answer, end alone right", "*\r?\rC\r*\r", 0, -2, 2),
          Tcase("block's answer, status alone right", "*\rC\rCxC\r", 0, -2, 3),
          Tcase("complete too early", "*\r*\rC\r*\r", 0, -2, 2), Tcase("never complete", "*\rC\rC\rC\r", 0, -2, 4),
          Tcase("command not written", "*\r", 1, -1, 1), Tcase("block not written", "*\rC\rC\r*\r", 3, -1, 3)}) {
      usb_.calls.clear();
      TscriptedChannel channel(resources_, 30, 2, answers);
      channel.failingWrite = failingWrite;
      QVERIFY2(VMRcommClass(&channel).putData(putRecordsCommand, commandLength, "aabbcc", 3) == result, name);
      QCOMPARE(channel.written, QByteArrayList({"PEQR\r", "aa", "bb", "cc"}).first(writes));
      QCOMPARE(usb_.calls.count("close"), result == 0 ? 0 : 1);
      if (result == 0) QCOMPARE(channel.positions, "30 63 76 90 ");
    }
  }

  /// The time-outs are shorter than a slot, between the two kinds of slots, and no multiple of either.
  void waitsHaveTheirNumberOfSlots() {
    using Tcase = std::array<int, 3>;
    for (const auto& [timeOut, replySlots, acknowledgementSlots] : {Tcase{5, 1, 1}, {30, 1, 3}, {119, 2, 11}}) {
      std::array<char, 8> reply{};
      TscriptedChannel asked(resources_, static_cast<unsigned>(timeOut), 4, "abc");
      QVERIFY_THROWS_EXCEPTION(TcommTimeoutException, VMRcommClass(&asked).getData("GESI\r", 5, reply.data(), 2));
      QCOMPARE(asked.slots_, replySlots);
      QVERIFY(!asked.isOpen());
      TscriptedChannel put(resources_, static_cast<unsigned>(timeOut), 4, "*");
      QVERIFY_THROWS_EXCEPTION(TcommTimeoutException, VMRcommClass(&put).putData("PEQR\r", 5, "aabb", 1));
      QCOMPARE(put.slots_, acknowledgementSlots);
      QVERIFY(!put.isOpen() && put.written.size() == 1);
    }
  }

  void aReplyArrivesInBlocks() {
    TscriptedChannel channel(resources_, 30, 4, "abcdefgh");
    std::string reply(8, 'x');
    QCOMPARE(VMRcommClass(&channel).getData(handshakeCommand, commandLength, reply.data(), 2), 0);
    QCOMPARE(reply, std::string("abcdefgh"));
    QCOMPARE(channel.written, QByteArrayList{"GESI\r"});
    QCOMPARE(channel.positions, "50 70 90 ");
  }

  void badArgumentsAndCancelling() {
    std::array<char, 4> reply{};
    VMRcommClass none(nullptr);
    QVERIFY_THROWS_EXCEPTION(TinvalidCommModuleException, none.bytesWaiting());
    QVERIFY_THROWS_EXCEPTION(TinvalidDataLengthException, none.getData("GESI\r", 5, nullptr, 1));
    QCOMPARE(none.putData(nullptr, 5, "aa", 1), -1);
    QVERIFY_THROWS_EXCEPTION(TinvalidCommModuleException, none.putData("PEQR\r", 5, "aa", 1));
    TscriptedChannel sizeless(resources_, 30, 0, "");
    QVERIFY_THROWS_EXCEPTION(TinvalidCommModuleException,
                             VMRcommClass(&sizeless).getData("GESI\r", 5, reply.data(), 1));
    QCOMPARE(sizeless.written.size(), 0);
    resources_.close();
    TscriptedChannel channel(resources_, 2000, 4, "*\r");
    channel.cancelAfter = 1;
    QVERIFY_THROWS_EXCEPTION(ToperationCancelledException, VMRcommClass(&channel).putData("PEQR\r", 5, "aabb", 1));
    QVERIFY(!channel.isOpen());
    QCOMPARE(channel.written.size(), 1);
  }

  void anyExceptionClosesTheChannel() {
    std::array<char, 4> reply{};
    for (const char* function : {"write", "progress", "cancelRequested", "bytesWaiting", "read"}) {
      for (const bool put : {false, true}) {
        usb_.calls.clear();
        TscriptedChannel channel(resources_, 30, 4, "*\r*\r");
        channel.throwing = function;
        VMRcommClass analyzer(&channel);
        QVERIFY_THROWS_EXCEPTION(ECommError, put ? analyzer.putData("PEQR\r", 5, "aabb", 1)
                                                 : analyzer.getData("GESI\r", 5, reply.data(), 1));
        QVERIFY2(!channel.isOpen() && !resources_.isInUse() && usb_.calls.count("close") == 1, function);
        QVERIFY_THROWS_EXCEPTION(TuninitializedCommModeException, channel.TDataCommClass::write("x", 1));
      }
    }
  }

  void aFailedExchangeIsLoggedWithoutTheRecords() {
    const TtestFolder folder;
    openLog(folder.path());
    TscriptedChannel channel(resources_, 30, 2, "*\rC\r?xyz");
    QCOMPARE(VMRcommClass(&channel).putData(putRecordsCommand, commandLength, "aabbcc", 3), -2);
    TscriptedChannel late(resources_, 30, 2, "*");
    QVERIFY_THROWS_EXCEPTION(TcommTimeoutException, VMRcommClass(&late).putData("PEQR\r", 5, "aa", 1));
    TscriptedChannel broken(resources_, 30, 2, "*\r");
    broken.failingWrite = 2;
    QCOMPARE(VMRcommClass(&broken).putData(putRecordsCommand, commandLength, "aa", 1), -1);
    closeLog();
    QString log = QString::fromLatin1(linesOf(folder / "EquipmentRecord.log"));
    log.replace(QRegularExpression(QStringLiteral("after [0-9]+ ms")), QStringLiteral("after N ms"));
    for (const char* line :
         {"exchange with USB device failed at acknowledgement of block 2 of 3 (2 bytes) after N ms: unexpected "
          "answer; command 50 45 51 52 0D; received 3F 78 79 7A\n",
          "failed at acknowledgement of the command after N ms; command 50 45 51 52 0D; received 2A\n",
          "failed at block 1 of 1 (2 bytes) after N ms; command 50 45 51 52 0D; received nothing\n"}) {
      QVERIFY2(log.contains(QLatin1String(line)), qPrintable(log));
    }
    QCOMPARE(log.count(u'\n'), 3);
  }
};
EQREC_TEST(TexchangeTest);

#include "exchangeTest.moc"
