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

  void trimsBlanksAndControlsOnly() {
    const std::string_view text("\0\x01\t\x1F \x7F\xA0 b\xA0\x81\x1F\r\n \0", 16);
    QVERIFY(trimmedText(text) == "\x7F\xA0 b\xA0\x81" && trimmedText(" \t").empty());
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
