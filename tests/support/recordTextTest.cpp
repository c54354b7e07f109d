#include <QTest>

#include "support/recordString.h"
#include "support/recordText.h"
#include "tools/testList.h"

class TrecordTextTest : public QObject {
  Q_OBJECT
 private slots:
  void trimsBlanksAndControlsOnly_data();
  void trimsBlanksAndControlsOnly();
  void everyByteComesBack();
  void refusesForeignCharacters_data();
  void refusesForeignCharacters();
};
EQREC_TEST(TrecordTextTest);

void TrecordTextTest::trimsBlanksAndControlsOnly_data() {
  QTest::addColumn<QByteArray>("text");
  QTest::addColumn<QByteArray>("trimmed");
  QTest::newRow("blanks at both ends go, inside they stay") << QByteArray("  a b ") << QByteArray("a b");
  QTest::newRow("every control character goes") << QByteArray("\0\x01\t\x1F x\x1F\r\n\0", 11) << QByteArray("x");
  QTest::newRow("delete stays") << QByteArray("\x7Fx\x7F") << QByteArray("\x7Fx\x7F");
  QTest::newRow("no-break space stays") << QByteArray(" \xA0x\xA0 ") << QByteArray("\xA0x\xA0");
  QTest::newRow("undefined byte stays") << QByteArray(" \x81 ") << QByteArray("\x81");
  QTest::newRow("nothing but blanks becomes empty") << QByteArray(" \t ") << QByteArray();
}

void TrecordTextTest::trimsBlanksAndControlsOnly() {
  QFETCH(QByteArray, text);
  const std::string_view trimmed = trimmedText({text.constData(), static_cast<std::size_t>(text.size())});
  QTEST(QByteArray(trimmed.data(), static_cast<qsizetype>(trimmed.size())), "trimmed");
}

void TrecordTextTest::everyByteComesBack() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  const QString text = fromRecordText(bytes);
  QCOMPARE(text.size(), 256);
  QCOMPARE(text.mid(0x80, 3), QString::fromUtf16(u"\u20AC\u0081\u201A"));
  QCOMPARE(text.mid(0x9D, 4), QString::fromUtf16(u"\u009D\u017E\u0178\u00A0"));
  QVERIFY(toRecordText(text) == bytes);
}

void TrecordTextTest::refusesForeignCharacters_data() {
  QTest::addColumn<QString>("text");
  QTest::newRow("letter of another alphabet") << QString::fromUtf16(u"a\u0416");
  QTest::newRow("character beyond 16 bits") << QString::fromUtf16(u"a\U0001F600");
  QTest::newRow("control character whose byte means another") << QString::fromUtf16(u"a\u0080");
  QTest::newRow("letter whose low byte is one") << QString::fromUtf16(u"a\u0141");
}

void TrecordTextTest::refusesForeignCharacters() {
  QFETCH(QString, text);
  QVERIFY(!toRecordText(text));
}

#include "recordTextTest.moc"
