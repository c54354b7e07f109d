#include <QTest>

#include "support/iniFile.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

class TiniFileTest : public QObject {
  Q_OBJECT
 private slots:
  void readsValueOrDefault() {
    using Tcase = std::tuple<QByteArray, const char*, int>;
    for (const auto& [content, text, number] :
         {Tcase("Key=1\n[Other]\nKey=1\n[Main]\nKey2=1\n;Key=1\n#Key=1\n", "none", 7),
          Tcase(" [ mAIN ] \n kEY =  1 \n", "1", 1), Tcase("[Main]\nKey=-1\n", "-1", -1),
          Tcase("[Main]\nKey=\n", "", 7), Tcase("[Main]\nKey=12 ;x\n", "12 ;x", 7),
          Tcase("[Main]\nKey=2147483648", "2147483648", 7),
          Tcase("[Main]\nA=1\n[B]\n[Main]\nKey=3\nKEY=1\n[Main]\nKey=1\n", "3", 3),
          Tcase(QByteArray("[Main]\n\0\0\nKey=4\0\0", 18), "4", 4),
          Tcase("\xEF\xBB\xBF[Main]\nKey=\xC4\x80\x81=\"x\"", "\xC4\x80\x81=\"x\"", 7)}) {
      const TtestFolder folder;
      writeBytes(folder / "a.ini", content);
      const TiniFile file(folder / "a.ini");
      QCOMPARE(file.readString("Main", "Key", "none").c_str(), text);
      QCOMPARE(file.readInteger("Main", "Key", 7), number);
      QCOMPARE(file.readFlag("Main", "Key", true), number == 1 || number == 7);
    }
  }

  void writeChangesOneLineOnly() {
    using Tcase = std::pair<QByteArray, QByteArray>;
    for (const auto& [before, after] :
         {Tcase({}, "[Main]\nKey=1\n"),
          Tcase("junk\n; c\n[X]\nKey=9\n[bad\n\n[Main]\n;Key=2\n= 3\n Key = 0 ; x",
                "junk\n; c\n[X]\nKey=9\n[bad\n\n[Main]\n;Key=2\n= 3\nKey=1"),
          Tcase("[Main]\nA=1\n\n\n[Main]\nB=2\n", "[Main]\nA=1\nKey=1\n\n\n[Main]\nB=2\n"),
          Tcase("[X]\nB=2", "[X]\nB=2\n[Main]\nKey=1\n"),
          Tcase("[Main]\r\nA=1\r\n[X]\r\n", "[Main]\r\nA=1\r\nKey=1\r\n[X]\r\n"),
          Tcase("[Main]\r\nKey=0\r\nB=2\r\n", "[Main]\r\nKey=1\r\nB=2\r\n"),
          Tcase("[Main]\nA=1\n[X]\n[main]\nKEY=0\nKey=5\n", "[Main]\nA=1\n[X]\n[main]\nKey=1\nKey=5\n"),
          Tcase(QByteArray("\xEF\xBB\xBF[Main]\nA=\0\x80\x81\xFF\v\nKey=0\n", 24),
                QByteArray("\xEF\xBB\xBF[Main]\nA=\0\x80\x81\xFF\v\nKey=1\n", 24)),
          Tcase("[Main]\nB <\xBFx\n[O\n", "[Main]\nB <\xBFx\n[O\nKey=1\n"),
          Tcase("[\nMain]\nKey=0\n", "[\nMain]\nKey=0\n[Main]\nKey=1\n"),
          Tcase("[Main]\n\x01Key=0\n", "[Main]\n\x01Key=0\nKey=1\n")}) {
      const TtestFolder folder;
      if (!before.isNull()) writeBytes(folder / "a.ini", before);
      const TiniFile file(folder / "a.ini");
      file.write("Main", {{"Key", "1"}});
      QCOMPARE(bytesOf(folder / "a.ini"), after);
      QCOMPARE(file.readString("Main", "Key", "none"), "1");
    }
  }

  void valueAddsNoLines() {
    const TtestFolder folder;
    TiniFile(folder / "a.ini").write("Main", {{"Key", "a\r\nKey2=1"}});
    QCOMPARE(bytesOf(folder / "a.ini"), "[Main]\nKey=a  Key2=1\n");
  }
};
EQREC_TEST(TiniFileTest);

#include "iniFileTest.moc"
