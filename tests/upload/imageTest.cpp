#include <QTest>
#include <span>

#include "store/datastructs.h"
#include "tools/recordChanges.h"
#include "tools/testList.h"
#include "upload/uploadImage.h"

namespace {

QByteArray bytesOf(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

}  // namespace

/// The image that an upload sends.
class TimageTest : public QObject {
  Q_OBJECT

 private slots:
  /// A short ID is padded, 17 characters fill its field, an 18th replaces the zero byte behind it (but not in the
  /// image), and longer IDs are cut to 17.
  void entries() {
    const QByteArray zero(1, '\0');
    const QByteArray seventeen = "12345678901234567";
    using Tcase = std::pair<QByteArray, QByteArray>;
    for (const auto& [id, entryStart] :
         {Tcase("A-1", "A-1" + QByteArray(14, ' ') + zero), Tcase(seventeen, seventeen + zero),
          Tcase(seventeen + '8', seventeen + '8'), Tcase(seventeen + "89", seventeen + zero)}) {
      const QByteArray entryEnd = "\xF4\x01\xFF\xFF";
      const TuploadEntry entry = makeUploadEntry(id.toStdString(), 0x1F4);
      QCOMPARE(bytesOf(entry), entryStart + entryEnd);
      const std::vector<TuploadEntry> entries = {entry, entry};
      const TuploadCommStruct upload(TcommMethod::usb, 1, {}, entries);
      const QByteArray inImage = entryStart.first(17) + zero + entryEnd;
      QCOMPARE(bytesOf(upload.image), inImage + inImage + QByteArray(405504 - 44, '\xFF'));
    }
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
