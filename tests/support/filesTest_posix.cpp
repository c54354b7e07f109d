#include <QTest>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/appendFile.h"
#include "support/fileSystem.h"
#include "support/paths.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class TposixFilesTest : public QObject {
  Q_OBJECT
 private slots:
  void findsPathWithoutRegardToCase() {
    const TtestFolder folder;
    const auto found = [&] { return findPath(folder.path(), "DATA/eq.dat"); };
    writeBytes(folder / "data2/eq.dat", "x");
    QVERIFY(found() == folder / "DATA/eq.dat");
    writeBytes(folder / "data/x", "x");
    QVERIFY(found() == folder / "data/eq.dat");
    for (const char* name : {"data/eq.dat", "Data/EQ.dat", "DATA/eq.dat"}) {
      writeBytes(folder / name, "x");
      QVERIFY2(found() == folder / name, name);
    }
  }

  void replacedFileKeepsPermissionsAndLink() {
    const TtestFolder folder;
    writeBytes(folder / "real/file", "old");
    std::filesystem::permissions(folder / "real/file", std::filesystem::perms(0604));
    std::filesystem::create_symlink("real/file", folder / "link");
    QVERIFY(replaceFile(diskFileSystem(), folder / "link", "new"));
    QVERIFY(std::filesystem::is_symlink(folder / "link"));
    QCOMPARE(bytesOf(folder / "real/file"), "new");
    QCOMPARE(std::filesystem::status(folder / "real/file").permissions(), std::filesystem::perms(0604));
  }

  void fileKeepsGroupWhenAMemberSavesIt() {
    constexpr uid_t owner = 4001;
    constexpr uid_t member = 4002;
    constexpr gid_t group = 4003;
    if (geteuid() != 0) QSKIP("Only root can save as another user");
    const TtestFolder folder;
    writeBytes(folder / "list/file", "old");
    for (const char* name : {"list", "list/file"}) {
      QCOMPARE(chown((folder / name).c_str(), owner, group), 0);
      QCOMPARE(chmod((folder / name).c_str(), 0770), 0);
    }
    QCOMPARE(chmod(folder.path().c_str(), 0755), 0);
    QVERIFY(setgroups(1, &group) == 0 && seteuid(member) == 0);
    const bool replaced{replaceFile(diskFileSystem(), folder / "list/file", "new")};
    QVERIFY(seteuid(0) == 0 && setgroups(0, nullptr) == 0);
    struct stat status {};
    QVERIFY(replaced && stat((folder / "list/file").c_str(), &status) == 0);
    QVERIFY(status.st_uid == member && status.st_gid == group);
  }

  void nothingIsAppendedToAPipe() {
    const TtestFolder folder;
    QCOMPARE(mkfifo((folder / "pipe").c_str(), 0666), 0);
    QCOMPARE(appendToFile(folder / "pipe", "x", 100), TappendResult::failed);  // would hang without a reader
  }
};
EQREC_TEST(TposixFilesTest);

#include "filesTest_posix.moc"
