#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>

#include "editor/editorFixture.h"
#include "editor/recordInput.h"
#include "support/recordString.h"
#include "tools/testList.h"

namespace {

void addBoxes() {
  QTest::addColumn<int>("field");
  QTest::newRow("txtControlNum") << fieldControlNum;
  QTest::newRow("txtManufacturer") << fieldManufacturer;
  QTest::newRow("txtModel") << fieldModel;
  QTest::newRow("txtDescription") << fieldDescription;
  QTest::newRow("txtCustom1") << fieldCustom1;
  QTest::newRow("txtCustom2") << fieldCustom2;
  QTest::newRow("txtCustom3") << fieldCustom3;
}

}  // namespace

/// How texts enter the boxes: typed, pasted, dropped, by an input method, from the record.
class TinputTest : public QObject {
  Q_OBJECT
 private slots:
  void inputIsCleaned_data();
  void inputIsCleaned();
  void boxesTakeCleanInput_data() { addBoxes(); }
  void boxesTakeCleanInput();
  void everyByteSurvives_data() { addBoxes(); }
  void everyByteSurvives();
  void menuAndDropEnterCleaned();
  void copyKeepsEveryByte();
};
EQREC_TEST(TinputTest);

void TinputTest::inputIsCleaned_data() {
  QTest::addColumn<QString>("cleaned");
  QTest::addColumn<QString>("input");
  const auto add = [](const char* name, const char16_t* input, const char16_t* cleaned) {
    QTest::newRow(name) << QString::fromUtf16(cleaned) << QString::fromUtf16(input);
  };
  add("plain text stays", u"Ward 12-B, 5 % & up", u"Ward 12-B, 5 % & up");
  add("Windows-1252 stays", u"\u20AC\u00C4\u00A0\u2013\u0178\u0081\t\u007F",
      u"\u20AC\u00C4\u00A0\u2013\u0178\u0081\t\u007F");
  add("line breaks become one blank each", u"a\r\nb\nc\rd\n\ne\u2028f\u2029", u"a b c d  e f ");
  add("others are left out", u"a\u4E2D\U0001F600b\u0394?\u0085c", u"ab?c");
  add("quotes become closing ones", u"2\" \"x\"", u"2\u201D \u201Dx\u201D");
  add("cut at the room, not counting what is left out", u"\u4E2D12345678901234567890x", u"12345678901234567890");
  QTest::newRow("zero is left out") << QStringLiteral("ab") << QStringLiteral("a%1b").arg(QChar(u'\0'));
}

void TinputTest::inputIsCleaned() {
  QFETCH(QString, input);
  QTEST(cleanedInput(input, 20), "cleaned");
  QCOMPARE(cleanedInput(input, 0), QString());
  QCOMPARE(cleanedInput(input, -1), QString());
}

void TinputTest::boxesTakeCleanInput() {
  QFETCH(int, field);
  const char* box = QTest::currentDataTag();
  const auto limit = static_cast<qsizetype>(fieldSizes[static_cast<std::size_t>(field)] - 1);
  TeditorFixture f;
  f.browser->records().at(0).clear();
  f.open();
  f.type(box, QStringLiteral("a\u4E2D\"b"));
  f.paste(box, QStringLiteral("c\r\nd\u0416\"e"));
  f.press(Qt::Key_Z, Qt::ControlModifier);
  QCOMPARE(f.text(box), QStringLiteral("a\u201Db"));
  f.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  QInputMethodEvent commit;
  commit.setCommitString(QStringLiteral("f\"\u0416g"));
  QApplication::sendEvent(f.control<QWidget>(box), &commit);
  QCOMPARE(f.text(box), QStringLiteral("a\u201Dbc d\u201Def\u201Dg"));
  f.type(box, QString(limit, u'x'));
  QCOMPARE(f.text(box).size(), limit);
  f.paste(box, QStringLiteral("yyy"));
  QVERIFY(!f.text(box).contains(u'y'));
  f.press(Qt::Key_A, Qt::ControlModifier);
  f.paste(box, QStringLiteral("\u4E2D\r\n\"zz").repeated(11000));
  QCOMPARE(f.text(box), QStringLiteral(" \u201Dzz").repeated(16).left(limit));
}

void TinputTest::everyByteSurvives() {
  QFETCH(int, field);
  TeditorFixture f;
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text = std::string("x") + static_cast<char>(byte) + "y";
    f.browser->records().at(0).setText(field, text);
    if (byte == 1) f.open();
    f.editor->showRecord(TfrmEqRecEditor::noRecord);
    f.editor->showRecord(0);  // stores what is shown
    QCOMPARE(f.field(0, field), text);
  }
}

void TinputTest::menuAndDropEnterCleaned() {
  TeditorFixture f;
  f.open(0);
  QApplication::clipboard()->setText(QStringLiteral("\"\u4E2D"));
  const auto menu = std::unique_ptr<QMenu>(f.control<QLineEdit>("txtControlNum")->createStandardContextMenu());
  for (QAction* action : menu->actions()) {
    if (action->text().startsWith(QStringLiteral("&Paste"))) action->trigger();
  }
  QCOMPARE(f.text("txtControlNum"), QStringLiteral("r2\u201D"));

  QMimeData dropped;
  dropped.setText(QStringLiteral("\"\u4E2D\n") + QString(70, u'x'));
  for (QWidget* target : {f.control<QWidget>("txtModel"), f.control<QPlainTextEdit>("txtCustom1")->viewport()}) {
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
  }
  QCOMPARE(f.text("txtModel"), QStringLiteral("\u201D ") + QString(19, u'x'));
  QCOMPARE(f.text("txtCustom1"), QStringLiteral("\u201D ") + QString(61, u'x'));
}

void TinputTest::copyKeepsEveryByte() {
  TeditorFixture f;
  f.browser->records().at(0).setText(fieldDescription,
                                     "a\xA0\x80"
                                     "b");
  f.open();
  f.control<QWidget>("txtDescription")->setFocus();
  f.press(Qt::Key_A, Qt::ControlModifier);
  f.press(Qt::Key_X, Qt::ControlModifier);
  QCOMPARE(f.text("txtDescription"), QString());
  f.paste("txtCustom1", QApplication::clipboard()->text());
  QCOMPARE(toRecordText(f.text("txtCustom1")),
           "a\xA0\x80"
           "b");
}

#include "inputTest.moc"
