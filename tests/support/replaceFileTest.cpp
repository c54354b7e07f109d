#include <QTest>

#include "support/safeWrite.h"
#include "tools/faultyFiles.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class TreplaceFileTest : public QObject {
  Q_OBJECT
 private slots:
  void keepsPermissionsAndLink();
  void failureAtAnyStepLeavesOneWholeFile();
};
EQREC_TEST(TreplaceFileTest);

void TreplaceFileTest::keepsPermissionsAndLink() {
  const TtestFolder folder;
  writeBytes(folder / "real/file", "old");
  std::filesystem::permissions(folder / "real/file", std::filesystem::perms(0640));
  std::filesystem::create_symlink("real/file", folder / "link");
  QVERIFY(replaceFile(diskFileSystem(), folder / "link", "new"));
  QVERIFY(std::filesystem::is_symlink(folder / "link"));
  QCOMPARE(bytesOf(folder / "real/file"), "new");
  QCOMPARE(std::filesystem::status(folder / "real/file").permissions(), std::filesystem::perms(0640));
  QCOMPARE(namesIn(folder / "real"), QByteArrayList{"file"});
}

void TreplaceFileTest::failureAtAnyStepLeavesOneWholeFile() {
  bool failed = true;
  for (int step = 1; failed; ++step) {
    const TtestFolder folder;
    writeBytes(folder / "file", "old");
    TfaultyFiles files;
    files.failFrom(step, step);
    const bool replaced = replaceFile(files, folder / "file", "new");
    failed = files.count() >= step;
    QCOMPARE(replaced, !failed);
    const QByteArray bytes = bytesOf(folder / "file");
    QVERIFY2(bytes == "new" || (failed && bytes == "old"), bytes);
    QCOMPARE(namesIn(folder.path()), QByteArrayList{"file"});
  }
}

#include "replaceFileTest.moc"
