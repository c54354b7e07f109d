#include <QTest>

#include "store/datastructs.h"
#include "tools/recordChanges.h"
#include "tools/testList.h"
#include "upload/uploadImage.h"

namespace {

QByteArray bytesOf(const TuploadEntry& entry) {
  return {reinterpret_cast<const char*>(entry.data()), static_cast<qsizetype>(entry.size())};
}

}  // namespace

/// The image that an upload sends.
class TimageTest : public QObject {
  Q_OBJECT

 private slots:
  void entries_data() {
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QByteArray>("inImage");
    const QByteArray end("\xFF\xFF");
    const QByteArray zero(1, '\0');
    QTest::newRow("short ID is padded") << QByteArray("A-1") << 0x1F4
                                        << "A-1" + QByteArray(14, ' ') + zero + "\xF4\x01" + end
                                        << "A-1" + QByteArray(14, ' ') + zero + "\xF4\x01" + end;
    const QByteArray seventeen = "12345678901234567";
    QTest::newRow("17 characters fill it")
        << seventeen << 1 << seventeen + zero + "\x01" + zero + end << seventeen + zero + "\x01" + zero + end;
    QTest::newRow("18 characters reach into the zero")
        << seventeen + '8' << 1 << seventeen + '8' + "\x01" + zero + end << seventeen + zero + "\x01" + zero + end;
    QTest::newRow("19 are cut to 17") << seventeen + "89" << 1 << seventeen + zero + "\x01" + zero + end
                                      << seventeen + zero + "\x01" + zero + end;
  }
  void entries() {
    QFETCH(QByteArray, id);
    QFETCH(int, number);
    const TuploadEntry entry = makeUploadEntry(id.toStdString(), static_cast<std::uint16_t>(number));
    QTEST(bytesOf(entry), "entry");
    const std::vector<TuploadEntry> entries = {entry, entry};
    const TuploadCommStruct upload(TcommMethod::usb, 1, {}, entries);
    const QByteArray image(reinterpret_cast<const char*>(upload.image.data()), uploadImageSize);
    QTEST(image.left(22), "inImage");
    QTEST(image.mid(22, 22), "inImage");
    QCOMPARE(image.mid(44), QByteArray(405504 - 44, '\xFF'));
  }

  void aFullTableFillsTheImage() {
    TequipRecTable records{std::vector<TequipRec>(equipRecLimit)};
    const auto entries = makeUploadEntries(records);
    const TuploadCommStruct upload(TcommMethod::usb, 1, {}, entries);
    QCOMPARE(upload.image.size(), equipRecLimit * 22);
    append(records, TequipRec());
    const auto tooMany = makeUploadEntries(records);
    QVERIFY_THROWS_EXCEPTION(std::length_error, TuploadCommStruct(TcommMethod::usb, 1, {}, tooMany));
  }

  void transportsAndPortNumbers() {
    const std::vector<TuploadEntry> none;
    const auto serial = transportOf(TuploadCommStruct(TcommMethod::serial, 256, {}, none));
    const auto& port = std::get<TserialParameters>(serial.parameters);
    QCOMPARE(QByteArray(port.portName.data()), QByteArray("COM256"));
    QCOMPARE(port.baudRate, 19200U);
    const auto ethernet = transportOf(TuploadCommStruct(TcommMethod::ethernet, 1, {192, 0, 2, 255}, none));
    const auto& address = std::get<TethernetParameters>(ethernet.parameters);
    QCOMPARE(address.port, 60601);
    QVERIFY((address.octets == std::array<std::uint8_t, 4>{192, 0, 2, 255}));
    QCOMPARE(transportOf(TuploadCommStruct(TcommMethod{7}, 1, {}, none)).mode, TcommMode::none);
    QCOMPARE(serialPortNumber("COM12"), 12);
    QCOMPARE(serialPortNumber("<No Free Ports>"), 1);
    QCOMPARE(serialPortNumber("CO"), 1);
  }
};
EQREC_TEST(TimageTest);

#include "imageTest.moc"
