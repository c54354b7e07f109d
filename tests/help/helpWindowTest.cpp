#include <QAbstractButton>
#include <QApplication>
#include <QListWidget>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <functional>
#include <memory>

#include "help/helpTopic.h"
#include "help/helpViewer.h"
#include "tools/testList.h"

namespace {

QWidgetList openHelp() {
  QWidgetList windows;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QStringLiteral("ThelpWindow") && window->isVisible()) windows << window;
  }
  return windows;
}

template <typename T>
T* control(const char* name) {
  return openHelp().value(0)->findChild<T*>(QString::fromLatin1(name));
}

QTextBrowser* page() {
  return control<QTextBrowser>("txtPage");
}

void clickLink(const QString& target) {
  QTextCursor cursor(page()->document());
  while (cursor.charFormat().anchorHref() != target && cursor.movePosition(QTextCursor::NextCharacter)) continue;
  page()->setTextCursor(cursor);
  page()->ensureCursorVisible();
  QTest::mouseClick(page()->viewport(), Qt::LeftButton, {}, page()->cursorRect(cursor).center());
}

qreal shownPictureWidth() {
  const QUrl name(QStringLiteral("pictures/frame.png"));
  const auto picture = page()->document()->resource(QTextDocument::ImageResource, name).value<QImage>();
  return picture.deviceIndependentSize().width();
}

const QString startPage = QStringLiteral("EquipmentRecord.html");
const QString messagesPage = QStringLiteral("messages.html");

}  // namespace

class ThelpWindowTest : public QObject {
  Q_OBJECT

  std::unique_ptr<QWidget> owner_;
  std::unique_ptr<ThelpViewer> viewer_;

 private slots:
  void init();
  void linksAndButtonsTurnPages();
  void contentsTurnPages();
  void pictureFitsView();
  void closesAndOpensAgain_data();
  void closesAndOpensAgain();
  void namesTopicByFullPath_data();
  void namesTopicByFullPath();
};
EQREC_TEST(ThelpWindowTest);

void ThelpWindowTest::init() {
  viewer_ = makeHelpViewer();
  owner_ = std::make_unique<QWidget>();
  owner_->show();
  viewer_->show({}, owner_.get());
  QCOMPARE(openHelp().size(), 1);
}

void ThelpWindowTest::linksAndButtonsTurnPages() {
  QCOMPARE(page()->source().fileName(), startPage);
  clickLink(messagesPage);
  QCOMPARE(page()->source().fileName(), messagesPage);
  clickLink(QStringLiteral("#nodata"));
  QVERIFY(page()->verticalScrollBar()->value() > 0);
  control<QAbstractButton>("btnBack")->click();
  control<QAbstractButton>("btnBack")->click();
  QCOMPARE(page()->source().fileName(), startPage);
  QTest::keyClick(page(), Qt::Key_Right, Qt::AltModifier);
  QCOMPARE(page()->source().fileName(), messagesPage);
  control<QAbstractButton>("btnContents")->click();
  QCOMPARE(page()->source().fileName(), startPage);
}

void ThelpWindowTest::contentsTurnPages() {
  auto* contents = control<QListWidget>("lstContents");
  QVERIFY(contents->count() >= 8);
  for (int row = 0; row < contents->count(); ++row) {
    contents->setCurrentRow(row);
    QVERIFY2(page()->toPlainText().startsWith(contents->item(row)->text()), qPrintable(contents->item(row)->text()));
  }
  viewer_->show({}, owner_.get());
  QCOMPARE(openHelp().size(), 1);
  QCOMPARE(contents->currentRow(), 0);
}

void ThelpWindowTest::pictureFitsView() {
  QVERIFY(shownPictureWidth() > 1 && shownPictureWidth() <= page()->viewport()->width());
  openHelp().value(0)->resize(1400, 800);
  QCOMPARE(shownPictureWidth(), QImage(QStringLiteral(":/help/pictures/frame.png")).width());
}

void ThelpWindowTest::closesAndOpensAgain_data() {
  QTest::addColumn<std::function<void(ThelpWindowTest*)>>("close");
  using Tclose = std::function<void(ThelpWindowTest*)>;
  QTest::newRow("Esc") << Tclose([](auto*) { QTest::keyClick(page(), Qt::Key_Escape); });
  QTest::newRow("closed by its viewer") << Tclose([](auto* test) { test->viewer_->closeAll(); });
  QTest::newRow("closed by another viewer") << Tclose([](auto*) { makeHelpViewer()->closeAll(); });
  QTest::newRow("viewer destroyed") << Tclose([](auto* test) { test->viewer_ = makeHelpViewer(); });
  QTest::newRow("owner destroyed") << Tclose([](auto* test) { test->owner_.reset(); });
}

void ThelpWindowTest::closesAndOpensAgain() {
  QFETCH(std::function<void(ThelpWindowTest*)>, close);
  close(this);
  QVERIFY(openHelp().isEmpty());
  viewer_->show({}, owner_.get());
  QCOMPARE(openHelp().size(), 1);
}

void ThelpWindowTest::namesTopicByFullPath_data() {
  QTest::addColumn<QByteArray>("folder");
  QTest::addColumn<QByteArray>("topic");
  const QByteArray here(std::filesystem::current_path().string().c_str());
  const QByteArray tail("/EquipmentRecord.chm::/EquipmentRecord.html");
  QTest::newRow("separator at the end") << QByteArray("/qt 484/bin/") << "/qt 484/bin" + tail;
  QTest::newRow("with dots, normalised") << QByteArray("/qt484/x/.././bin") << "/qt484/bin" + tail;
  QTest::newRow("relative, made full") << QByteArray("bin") << here + "/bin" + tail;
}

void ThelpWindowTest::namesTopicByFullPath() {
  QFETCH(QByteArray, folder);
  QTEST(QByteArray(helpTopic(folder.toStdString()).c_str()), "topic");
}

#include "helpWindowTest.moc"
