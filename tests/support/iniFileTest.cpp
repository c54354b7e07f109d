#include <QTest>

#include "support/iniFile.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class TiniFileTest : public QObject {
  Q_OBJECT
 private slots:
  void readsValueOrDefault_data();
  void readsValueOrDefault();
  void writeChangesOneLineOnly_data();
  void writeChangesOneLineOnly();
  void writesSeveralKeysAtOnce();
  void writeKeepsPermissionsAndLink();
  void impossiblePathIsIgnored_data();
  void impossiblePathIsIgnored();
};
EQREC_TEST(TiniFileTest);

void TiniFileTest::readsValueOrDefault_data() {
  QTest::addColumn<QByteArray>("content");
  QTest::addColumn<QByteArray>("text");
  QTest::addColumn<int>("number");
  QTest::addColumn<bool>("flag");
  const auto row = [](const char* name, const QByteArray& content, const char* text, int number, bool flag) {
    QTest::newRow(name) << content << QByteArray(text) << number << flag;
  };
  row("no file, defaults", QByteArray(), "none", 7, true);
  row("section missing, defaults", "[Other]\nKey=1\n", "none", 7, true);
  row("key missing, defaults", "[Main]\nKey2=1\n[Other]\nKey=1\n", "none", 7, true);
  row("key before any section, defaults", "Key=1\n", "none", 7, true);
  row("commented key, defaults", "[Main]\n;Key=1\n#Key=1\n", "none", 7, true);
  row("names in another case, found", "[mAIN]\nkEY=1\n", "1", 1, true);
  row("blanks around names and value, found", " [ Main ] \n Key =  5 \n", "5", 5, false);
  row("negative number, taken", "[Main]\nKey=-1\n", "-1", -1, false);
  row("empty value, no number", "[Main]\nKey=\n", "", 7, true);
  row("word, no number", "[Main]\nKey=yes\n", "yes", 7, true);
  row("digits and more, no number", "[Main]\nKey=12 ;x\n", "12 ;x", 7, true);
  row("largest number, taken", "[Main]\nKey=2147483647", "2147483647", 2147483647, false);
  row("number beyond 32 bits, default", "[Main]\nKey=2147483648", "2147483648", 7, true);
  row("equal keys, first counts", "[Main]\nKey=2\nKEY=1\n", "2", 2, false);
  row("equal sections, first key counts", "[Main]\nA=1\n[B]\n[Main]\nKey=3\n[Main]\nKey=1\n", "3", 3, false);
  row("zero bytes, passed over", QByteArray("[Main]\n\0\0\nKey=4\0\0", 18), "4", 4, false);
  row("byte order mark, passed over", "\xEF\xBB\xBF[Main]\nKey=6", "6", 6, false);
  row("Windows-1252 text, same bytes", "[Main]\nKey=\xC4\x80\x81=\"x\"", "\xC4\x80\x81=\"x\"", 7, true);
}

void TiniFileTest::readsValueOrDefault() {
  QFETCH(QByteArray, content);
  const TtestFolder folder;
  if (!content.isNull()) writeBytes(folder / "a.ini", content);
  const TiniFile file(folder / "a.ini");
  QTEST(QByteArray::fromStdString(file.readString("Main", "Key", "none")), "text");
  QTEST(file.readInteger("Main", "Key", 7), "number");
  QTEST(file.readFlag("Main", "Key", true), "flag");
}

void TiniFileTest::writeChangesOneLineOnly_data() {
  QTest::addColumn<QByteArray>("before");
  QTest::addColumn<QByteArray>("after");
  const auto row = [](const char* name, const QByteArray& before, const QByteArray& after) {
    QTest::newRow(name) << before << after;
  };
  row("no file, made", QByteArray(), "[Main]\nKey=1\n");
  row("empty file, section made", "", "[Main]\nKey=1\n");
  row("value and blanks replaced", "[Main]\n Key = 0 ; x\nB= 2\n", "[Main]\nKey=1\nB= 2\n");
  row("comments, garbage and foreign sections stay", "junk\n; c\n[X]\nKey=9\n[bad\n\n[Main]\n;Key=2\n= 3\nKey=0\n\n[Y]",
      "junk\n; c\n[X]\nKey=9\n[bad\n\n[Main]\n;Key=2\n= 3\nKey=1\n\n[Y]");
  row("key missing, put behind the section's last line", "[Main]\nA=1\n\n\n[X]\nB=2\n",
      "[Main]\nA=1\nKey=1\n\n\n[X]\nB=2\n");
  row("section missing, put at the end", "[X]\nB=2", "[X]\nB=2\n[Main]\nKey=1\n");
  row("CRLF, kept and used", "[Main]\r\nA=1\r\n[X]\r\n", "[Main]\r\nA=1\r\nKey=1\r\n[X]\r\n");
  row("CRLF and value replaced, kept", "[Main]\r\nKey=0\r\nB=2\r\n", "[Main]\r\nKey=1\r\nB=2\r\n");
  row("last line without end, completed", "[Main]\nA=1", "[Main]\nA=1\nKey=1\n");
  row("value on last line without end, stays so", "[Main]\nKey=0", "[Main]\nKey=1");
  row("equal keys, first changed", "[MAIN]\nKEY=0\nKey=5\n", "[MAIN]\nKey=1\nKey=5\n");
  row("equal sections, first key changed", "[Main]\nA=1\n[X]\n[main]\nKey=0\n", "[Main]\nA=1\n[X]\n[main]\nKey=1\n");
  row("equal sections without key, put into the first", "[Main]\nA=1\n[Main]\nB=1\n",
      "[Main]\nA=1\nKey=1\n[Main]\nB=1\n");
  row("byte order mark, stays", "\xEF\xBB\xBF[Main]\nKey=0\n", "\xEF\xBB\xBF[Main]\nKey=1\n");
  row("zero bytes, stay", QByteArray("\0\n[Main]\nA=\0\nKey=0\n", 20), QByteArray("\0\n[Main]\nA=\0\nKey=1\n", 20));
  row("every other byte, stays", "[Main]\nA=\x80\x81\xFF\x01\v\nKey=0\n", "[Main]\nA=\x80\x81\xFF\x01\v\nKey=1\n");
  row("line ends of old, understood", "[Main]\rKey=0\rB=1\r", "[Main]\rKey=1\rB=1\r");
  row("control byte before a name, another key", "[Main]\n\x01Key=0\n", "[Main]\n\x01Key=0\nKey=1\n");
}

void TiniFileTest::writeChangesOneLineOnly() {
  QFETCH(QByteArray, before);
  const TtestFolder folder;
  if (!before.isNull()) writeBytes(folder / "a.ini", before);
  const TiniFile file(folder / "a.ini");
  file.write("Main", {{"Key", "1"}});
  QTEST(bytesOf(folder / "a.ini"), "after");
  QCOMPARE(file.readString("Main", "Key", "none"), "1");
}

void TiniFileTest::writesSeveralKeysAtOnce() {
  const TtestFolder folder;
  writeBytes(folder / "a.ini", "[Main]\nB=0\n");
  TiniFile(folder / "a.ini").write("Main", {{"A", "a b"}, {"B", "\xC4\x81"}, {"C", ""}});
  QCOMPARE(bytesOf(folder / "a.ini"), "[Main]\nB=\xC4\x81\nA=a b\nC=\n");
}

void TiniFileTest::writeKeepsPermissionsAndLink() {
  const TtestFolder folder;
  writeBytes(folder / "real/a.ini", "[Main]\n");
  std::filesystem::permissions(folder / "real/a.ini", std::filesystem::perms(0604));
  std::filesystem::create_symlink(folder / "real/a.ini", folder / "a.ini");
  TiniFile(folder / "a.ini").write("Main", {{"Key", "1"}});
  QVERIFY(std::filesystem::is_symlink(folder / "a.ini"));
  QCOMPARE(bytesOf(folder / "real/a.ini"), "[Main]\nKey=1\n");
  QCOMPARE(std::filesystem::status(folder / "real/a.ini").permissions(), std::filesystem::perms(0604));
}

void TiniFileTest::impossiblePathIsIgnored_data() {
  QTest::addColumn<QByteArray>("path");
  QTest::newRow("folder in the file's place") << QByteArray("folder");
  QTest::newRow("folder missing") << QByteArray("none/a.ini");
  QTest::newRow("file in the folder's place") << QByteArray("folder/file/a.ini");
}

void TiniFileTest::impossiblePathIsIgnored() {
  QFETCH(QByteArray, path);
  const TtestFolder folder;
  writeBytes(folder / "folder/file", "x");
  const TiniFile file(folder / path.toStdString());
  file.write("Main", {{"Key", "1"}});
  QCOMPARE(file.readInteger("Main", "Key", 7), 7);
  QCOMPARE(namesIn(folder.path()), QByteArrayList{"folder"});
  QCOMPARE(namesIn(folder / "folder"), QByteArrayList{"file"});
}

#include "iniFileTest.moc"
