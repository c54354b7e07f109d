#include <QTest>
#include <memory>
#include <thread>
#include <windows.h>

#include "support/fileSystem.h"
#include "support/iniFile.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

using Theld = std::unique_ptr<void, decltype(&CloseHandle)>;

/// Opens the file as another program would, with this sharing mode.
Theld hold(const std::filesystem::path& path, DWORD share) {
  return {CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr), CloseHandle};
}

constexpr const char* foreign =
    "; the host's own\r\n[HOST]\r\nName=\xC4rzte \x80 \x81\r\nTwice=1\r\nTwice=2\r\njunk\r\n[COMM]\r\nOther=9\r\n";

}  // namespace

class TwindowsFilesTest : public QObject {
  Q_OBJECT
 private slots:
  void heldFileIsLeftWhole() {
    constexpr DWORD readAndWrite = FILE_SHARE_READ | FILE_SHARE_WRITE;
    for (const DWORD share : {DWORD{0}, DWORD{FILE_SHARE_READ}, readAndWrite, readAndWrite | FILE_SHARE_DELETE}) {
      const TtestFolder folder;
      const auto path = folder / "\u00C4\u0416 list.dat";  // no code page has both
      writeBytes(path, "old");
      Theld other = hold(path, share);
      const TfileStamp stamp = diskFileSystem().stamp(path).stamp;
      QVERIFY(!diskFileSystem().checkWritable(path) && !replaceFile(diskFileSystem(), path, "new"));
      QVERIFY(diskFileSystem().stamp(path).stamp == stamp);
      other.reset();
      QCOMPARE(bytesOf(path), "old");
      QCOMPARE(namesIn(folder.path()).size(), 1);
    }
  }

  void fileLetGoSoonIsReplaced() {
    const TtestFolder folder;
    writeBytes(folder / "f", "old");
    Theld other = hold(folder / "f", 0);
    std::thread letGo([&] {
      Sleep(25);
      other.reset();
    });
    const bool replaced{replaceFile(diskFileSystem(), folder / "f", "new")};
    letGo.join();
    QVERIFY(replaced);
    QCOMPARE(bytesOf(folder / "f"), "new");
  }

  void settingsComeBackAndTheRestStays() {
    for (const char* name : {"EquipmentRecord.ini", "QT484pc.ini"}) {
      const TtestFolder folder;
      writeBytes(folder / name, foreign);
      const TiniFile file(folder / name);
      file.write("COMM", {{"IP1", "10"}, {"Other", "8"}});
      file.write("New", {{"Key", "1"}});
      QCOMPARE(bytesOf(folder / name),
               QByteArray(foreign).replace("Other=9", "Other=8\r\nIP1=10") + "[New]\r\nKey=1\r\n");
      QCOMPARE(namesIn(folder.path()), QByteArrayList{name});
      QVERIFY(file.readInteger("comm", "ip1", 0) == 10 && file.readFlag("NEW", "KEY", false));
      QCOMPARE(file.readString("HOST", "Name", "").c_str(), "\xC4rzte \x80 \x81");
      QCOMPARE(file.readString("HOST", "Twice", "").c_str(), "1");
    }
  }

  void valuesComeBack() {
    const TtestFolder folder;
    const TiniFile file(folder / "a.ini");
    QCOMPARE(file.readString("Main", "Key", "none").c_str(), "none");
    for (const char* value : {"", "\xC4\x80\x81\x8D\x8F\x90\x9D\xFF", "\"x\"", "'x'", "\"", "a = ; b", "\"a\" b\""}) {
      file.write("Main", {{"Key", value}});
      QCOMPARE(file.readString("Main", "Key", "none").c_str(), value);
    }
    file.write("Main", {{"Key", "two\r\nlines"}});
    QCOMPARE(file.readString("Main", "Key", "none").c_str(), "two  lines");
  }

  void whatCannotBeWrittenLeavesTheFile() {
    const TtestFolder folder;
    writeBytes(folder / "a.ini", foreign);
    const TiniFile file(folder / "a.ini");
    const Theld other = hold(folder / "a.ini", FILE_SHARE_READ);
    file.write("Main", {{"Key", "1"}});
    QCOMPARE(bytesOf(folder / "a.ini"), foreign);
    QCOMPARE(namesIn(folder.path()), QByteArrayList{"a.ini"});
  }
};
EQREC_TEST(TwindowsFilesTest);

#include "filesTest_win32.moc"
