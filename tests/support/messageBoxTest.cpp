#include <QTest>

#include "support/messageBox.h"
#include "tools/dialogs.h"
#include "tools/testList.h"

class TmessageBoxTest : public QObject {
  Q_OBJECT
 private slots:
  void showsMessageToTheLetter() {
    using Ticons = std::pair<TmessageIcon, QMessageBox::Icon>;
    for (const auto& icons : {Ticons(TmessageIcon::error, QMessageBox::Critical),
                              {TmessageIcon::warning, QMessageBox::Warning},
                              {TmessageIcon::information, QMessageBox::Information}}) {
      const TmessageText message{"<b>x</b>\n&amp; &C", "A & <i>B</i>", icons.first};
      const auto look = [&](QWidget* window) {
        auto* box = qobject_cast<QMessageBox*>(window);
        box->button(QMessageBox::No)->click();
        QCOMPARE(box->text(), QString::fromLatin1(message.text));
        QCOMPARE(box->windowTitle(), QString::fromLatin1(message.caption));
        QCOMPARE(box->informativeText(), QStringLiteral("2 & 3"));
        QCOMPARE(box->icon(), icons.second);
        QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(box->textFormat(), Qt::PlainText);
      };
      whenOpen("QMessageBox", look).during([&] {
        QCOMPARE(showMessage(nullptr, message, QMessageBox::Yes | QMessageBox::No, QStringLiteral("2 & 3")),
                 QMessageBox::No);
      });
    }
  }
};
EQREC_TEST(TmessageBoxTest);

#include "messageBoxTest.moc"
