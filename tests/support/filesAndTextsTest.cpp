#include <QTest>

#include "support/fileSystem.h"
#include "support/recordText.h"
#include "support/windows1252.h"
#include "tools/simulatedFiles.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class TfilesAndTextsTest : public QObject {
  Q_OBJECT
 private slots:
  void failureAtAnyStepLeavesOneWholeFile() {
    bool failed = true;
    for (int step = 1; failed; ++step) {
      TsimulatedFiles files(TsimulatedDisk(TfileMap{{"/file", "old"}}));
      files.firstFailing = files.lastFailing = step;
      const bool replaced{replaceFile(files, "/file", "new")};
      failed = files.operations.size() >= step;
      QVERIFY(replaced || failed);
      const TsimulatedDisk& disk = files.history.back();
      QVERIFY(disk.contentOf("/file") == "new" || (!replaced && disk.contentOf("/file") == "old"));
      QCOMPARE(disk.names.size(), 1U);
    }
  }

  void remainsOfKilledWritersAreRemoved() {
    const TtestFolder folder;
    const QByteArray young = "f.new-1123456789abcdef";
    const QByteArrayList others = {"f.new-0123456789abcde", "f.new-0123456789abcdefg", young, "f.newer", "g.new"};
    for (const QByteArray& name : others + QByteArrayList{"f.new", "f.new-0123456789abcdef"}) {
      writeBytes(folder / name.toStdString(), name);
      const auto time = std::filesystem::file_time_type::clock::now() - std::chrono::seconds(name == young ? 50 : 70);
      std::filesystem::last_write_time(folder / name.toStdString(), time);
    }
    QVERIFY(replaceFile(diskFileSystem(), folder / "f", "new"));
    QCOMPARE(bytesOf(folder / "f"), "new");
    QCOMPARE(namesIn(folder.path()), QByteArrayList{"f"} + others);
  }

  void lockExcludesEverybodyElse() {
    using enum TlockResult::Tend;
    const TtestFolder folder;
    const auto path = folder / "list.lock";
    const auto tried = [&](bool create) { return diskFileSystem().lock(path, create, {}, {}); };
    std::unique_ptr<TfileWriter> writer;
    QCOMPARE(tried(false).end, absent);
    TlockResult first = tried(true);
    QVERIFY(first.lock && diskFileSystem().append(path, writer) && writer->write("x") && writer->close());
    QCOMPARE(bytesOf(path), "x");  // has opened and closed the file, which must not release it
    QCOMPARE(tried(true).end, busy);
    QVERIFY(diskFileSystem().rename(path, folder / "old") && tried(true).lock);
    first.lock.reset();
    QVERIFY(tried(true).lock && diskFileSystem().lock(folder / "old", false, {}, {}).lock);
  }

  void onlyWhatIsSurelyMissingIsAbsent() {
    const TtestFolder folder;
    TfileSystem& files = diskFileSystem();
    const auto path = folder / "f";
    std::string content;
    std::unique_ptr<TfileWriter> writer;
    writeBytes(path, "12345");
    QVERIFY(files.stamp(folder / "none/f").isAbsent() && files.stamp(path).isFound());
    QCOMPARE(files.stamp(folder.path()).end, TstampResult::Tend::notAFile);
    QVERIFY(files.read(path, content, 5).end == TreadResult::Tend::done && content == "12345");
    QCOMPARE(files.read(path, content, 4).end, TreadResult::Tend::tooLarge);
    QVERIFY(!files.create(path, {}, writer) && !files.append(folder / "none", writer));
    QCOMPARE(bytesOf(path), "12345");
  }

  void foldersAreMadeListedRenamedAndRemoved() {
    const TtestFolder folder;
    TfileSystem& files = diskFileSystem();
    std::vector<std::filesystem::path> names;
    QVERIFY(files.makeFolder(folder / "a") && files.makeFolder(folder / "a") && files.makeFolder(folder / "b"));
    writeBytes(folder / "a/f", "x");
    QVERIFY(files.list(folder / "a", names) && names == std::vector<std::filesystem::path>{"f"});
    QVERIFY(files.list(folder / "c", names) && names.empty());
    QVERIFY(!files.rename(folder / "a", folder / "b") && !files.removeFolder(folder / "a"));
    QVERIFY(files.removeFolder(folder / "b") && files.removeFolder(folder / "b"));
    QVERIFY(files.rename(folder / "a", folder / "b"));
    QCOMPARE(bytesOf(folder / "b/f"), "x");
    QVERIFY(!files.makeFolder(folder / "b/f"));
  }

  void trimsBlanksAndControlsOnly() {
    const std::string_view text("\0\x01\t\x1F \x7F\xA0 b\xA0\x81\x1F\r\n \0", 16);
    QVERIFY(trimmedText(text) == "\x7F\xA0 b\xA0\x81" && trimmedText(" \t").empty());
  }

  void lettersHaveTheirSmallOnes() {
    for (int byte = 0; byte < 256; ++byte) {
      const std::string text(1, static_cast<char>(byte));
      QCOMPARE(fromRecordText(lowerCased(text)), fromRecordText(text).toLower());
    }
  }

  void everyByteComesBackAndNothingElseGoes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
    const QString text = fromRecordText(bytes);
    QCOMPARE(text.mid(0x80, 3) + text.mid(0x9D, 4), QString::fromUtf16(u"\u20AC\u0081\u201A\u009D\u017E\u0178\u00A0"));
    QVERIFY(toRecordText(text) == bytes);
    for (const char16_t* foreign : {u"a\u0416", u"a\U0001F600", u"a\u0080", u"a\u0141"}) {
      QVERIFY(!toRecordText(QString::fromUtf16(foreign)));
    }
  }
};
EQREC_TEST(TfilesAndTextsTest);

#include "filesAndTextsTest.moc"
