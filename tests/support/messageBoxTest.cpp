#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include "support/messageBox.h"
#include "tools/testList.h"

namespace {

/// What a box looked like while it was open.
struct TseenBox {
  QString text;
  QString caption;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QMessageBox::StandardButtons buttons;
  Qt::TextFormat format = Qt::RichText;
  int textHeight = 0;
};

/// Looks at the box that is open, if any, and clicks one of its buttons.
void lookAndClick(TseenBox& seen, QMessageBox::StandardButton button) {
  auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) return;
  const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  seen = {box->text(),         box->windowTitle(),        box->icon(), box->standardButtons(),
          label->textFormat(), label->sizeHint().height()};
  box->button(button)->click();
}

TseenBox shownBox(const TmessageText& message, QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                  QMessageBox::StandardButton click = QMessageBox::Ok) {
  TseenBox seen;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] { lookAndClick(seen, click); });
  timer.start(0);
  if (showMessage(nullptr, message, buttons) != click) QTest::qFail("wrong button returned", __FILE__, __LINE__);
  return seen;
}

}  // namespace

class TmessageBoxTest : public QObject {
  Q_OBJECT
 private slots:
  void showsMessageToTheLetter_data();
  void showsMessageToTheLetter();
  void carriageReturnBreaksLine();
  void replacementTakesMessage();
};
EQREC_TEST(TmessageBoxTest);

void TmessageBoxTest::showsMessageToTheLetter_data() {
  QTest::addColumn<QByteArray>("text");
  QTest::addColumn<int>("icon");
  QTest::addColumn<int>("expectedIcon");
  QTest::newRow("two lines, error") << QByteArray("One\nTwo") << int(TmessageIcon::error) << int(QMessageBox::Critical);
  QTest::newRow("markup stays literal, warning")
      << QByteArray("<b>x</b> &amp;") << int(TmessageIcon::warning) << int(QMessageBox::Warning);
  QTest::newRow("ampersand stays, information")
      << QByteArray("A & B &C") << int(TmessageIcon::information) << int(QMessageBox::Information);
}

void TmessageBoxTest::showsMessageToTheLetter() {
  QFETCH(QByteArray, text);
  QFETCH(int, icon);
  const auto buttons = QMessageBox::Yes | QMessageBox::No;
  const TseenBox seen = shownBox({text, "A & <i>B</i>", TmessageIcon(icon)}, buttons, QMessageBox::No);
  QCOMPARE(seen.text, QString::fromLatin1(text));
  QCOMPARE(seen.caption, QStringLiteral("A & <i>B</i>"));
  QTEST(int(seen.icon), "expectedIcon");
  QCOMPARE(seen.buttons, buttons);
  QCOMPARE(seen.format, Qt::PlainText);
}

void TmessageBoxTest::carriageReturnBreaksLine() {
  const int twoLines = shownBox({"One\nTwo", "Caption", TmessageIcon::error}).textHeight;
  QCOMPARE(shownBox({"One\rTwo", "Caption", TmessageIcon::error}).textHeight, twoLines);
  QVERIFY(shownBox({"OneTwo", "Caption", TmessageIcon::error}).textHeight < twoLines);
}

void TmessageBoxTest::replacementTakesMessage() {
  QByteArray caption;
  replaceMessageBox([&](QWidget*, const TmessageText& message, QMessageBox::StandardButtons) {
    caption = message.caption;
    return QMessageBox::Cancel;
  });
  QCOMPARE(showMessage(nullptr, {"Text", "Caption", TmessageIcon::error}), QMessageBox::Cancel);
  replaceMessageBox({});
  QCOMPARE(caption, "Caption");
}

#include "messageBoxTest.moc"
