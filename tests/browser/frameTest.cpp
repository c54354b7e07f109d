#include <QTest>

#include "browser/frameFixture.h"
#include "support/recordString.h"
#include "tools/testList.h"

/// How the frame begins and ends: what it loads, shows, saves and hands back.
class TframeTest : public QObject {
  Q_OBJECT
 private slots:
  void opensAsDesigned();
  void controlsArePlaced_data();
  void controlsArePlaced();
  void problemsShowOneBoxEach_data();
  void problemsShowOneBoxEach();
  void exitSavesThenReturns();
  void hostMayDeleteFrameFromReturn_data();
  void hostMayDeleteFrameFromReturn();
  void destructionSavesUnlessExitDid();
  void failedSaveShowsOneBoxAndReturns();
  void everyByteSurvivesTheFrame();
};
EQREC_TEST(TframeTest);

void TframeTest::opensAsDesigned() {
  TframeFixture f;
  f.open();
  QCOMPARE(f.frame->size(), QSize(792, 536));
  QCOMPARE(f.frame->objectName(), QStringLiteral("TEquipmentRecordPluginFrame"));
  QCOMPARE(f.column(1), QStringLiteral("c a b"));
  QCOMPARE(f.frame->focusWidget(), f.grid());
  QCOMPARE(f.messages.takeCaptions(), {});
}

void TframeTest::controlsArePlaced_data() {
  QTest::addColumn<QByteArray>("caption");
  QTest::addColumn<QSize>("least");
  QTest::addColumn<bool>("enabled");
  const QSize small(84, 25);
  const QSize large(105, 41);
  QTest::newRow("btnSearch") << QByteArray("Search") << QSize() << true;
  QTest::newRow("btnClearSearch") << QByteArray("Clear") << QSize() << true;
  QTest::newRow("btnAdd") << QByteArray("New") << small << true;
  QTest::newRow("btnCopy") << QByteArray("Copy") << small << true;
  QTest::newRow("btnDelete") << QByteArray("Delete") << small << true;
  QTest::newRow("btnExport") << QByteArray("Export") << small << true;
  QTest::newRow("btnOptions") << QByteArray("Options") << large << true;
  QTest::newRow("btnPrint") << QByteArray("Print") << large << false;
  QTest::newRow("BtnUpload") << QByteArray("Upload To\nQT484") << large << false;
  QTest::newRow("btnImport") << QByteArray("Import") << large << false;
  QTest::newRow("BtnHelp") << QByteArray("Help") << large << true;
  QTest::newRow("BtnExit") << QByteArray("Return To\nMain Window") << large << true;
}

void TframeTest::controlsArePlaced() {
  QFETCH(QByteArray, caption);
  QFETCH(QSize, least);
  TframeFixture f;
  f.open();
  const auto* button = f.control<QAbstractButton>(QTest::currentDataTag());
  QVERIFY2(button != nullptr, "no such button");
  QCOMPARE(button->text(), QString::fromLatin1(caption));
  QCOMPARE(button->size().expandedTo(least), button->size());
  QTEST(button->isEnabled(), "enabled");
  QVERIFY(!button->accessibleName().isEmpty());
}

void TframeTest::problemsShowOneBoxEach_data() {
  QTest::addColumn<QByteArray>("file");
  QTest::addColumn<QByteArray>("content");  // null: removed
  QTest::addColumn<QByteArrayList>("captions");
  QTest::addColumn<QString>("shown");
  const QString all = QStringLiteral("c a b");
  QTest::newRow("no data file: empty") << QByteArray("DATA/eq.dat") << QByteArray()
                                       << QByteArrayList{"ER1STFILENOTFOUND"} << QString();
  QTest::newRow("corrupt line: the others") << QByteArray("DATA/eq.dat") << QByteArray("\"c\",1\n\"a\",501\n\"b\",3\n")
                                            << QByteArrayList{"ERINVALIDRECORDS"} << QStringLiteral("c b");
  QTest::newRow("damaged procedures: all records")
      << QByteArray("Data/TestProc.ASQ") << QByteArray("ASQ2") << QByteArrayList{"Test Procedure Error"} << all;
}

void TframeTest::problemsShowOneBoxEach() {
  QFETCH(QByteArray, file);
  QFETCH(QByteArray, content);
  TframeFixture f;
  if (content.isNull()) {
    std::filesystem::remove(f.folder / file.constData());
  } else {
    writeBytes(f.folder / file.replace("Data/", "DATA/").constData(), content);
  }
  f.open();
  QTEST(f.messages.takeCaptions(), "captions");
  QTEST(f.column(1), "shown");
}

void TframeTest::exitSavesThenReturns() {
  TframeFixture f;
  QStringList seen;
  f.onReturn = [&] {
    seen << (f.frame->isHidden() ? QStringLiteral("hidden") : QStringLiteral("shown"));
    seen << (f.data().contains("\"c\",1\n\"a\",2") ? QStringLiteral("saved") : QString());
    seen << (f.ini().contains("SORTCOL=0\nSORTASC=1\n") ? QStringLiteral("layout") : QString());
  };
  f.open();
  std::filesystem::remove(f.folder / "DATA/eq.dat");
  QTest::mouseClick(f.exitButton(), Qt::LeftButton);
  QCOMPARE(seen, QStringList({QStringLiteral("hidden"), QStringLiteral("saved"), QStringLiteral("layout")}));
}

void TframeTest::hostMayDeleteFrameFromReturn_data() {
  QTest::addColumn<bool>("mouse");
  QTest::newRow("mouse") << true;
  QTest::newRow("space bar") << false;
}

void TframeTest::hostMayDeleteFrameFromReturn() {
  QFETCH(bool, mouse);
  TframeFixture f;
  f.onReturn = [&] { f.frame.reset(); };
  f.open();
  QWindow* window = f.frame->windowHandle();
  const QPoint button = f.exitButton()->mapTo(f.frame.get(), f.exitButton()->rect().center());
  f.exitButton()->setFocus();
  if (mouse) {
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, button);
  } else {
    QTest::keyClick(window, Qt::Key_Space);
  }
  QVERIFY(f.frame == nullptr);
}

void TframeTest::destructionSavesUnlessExitDid() {
  TframeFixture f;
  f.open();
  std::filesystem::remove(f.folder / "DATA/eq.dat");
  f.frame.reset();
  QVERIFY(f.data().startsWith("\"c\",1\n"));

  f.open();
  f.exitButton()->click();
  std::filesystem::remove(f.folder / "DATA/eq.dat");
  f.frame.reset();
  QVERIFY2(f.data().isNull(), "saved a second time");

  writeRecords(f.folder.path(), {"c"}, {""});
  f.open();
  f.exitButton()->click();
  f.frame->show();  // there may be new work to save
  std::filesystem::remove(f.folder / "DATA/eq.dat");
  f.frame.reset();
  QCOMPARE(f.data(), "\"c\",1\n");
}

void TframeTest::failedSaveShowsOneBoxAndReturns() {
  TframeFixture f;
  int returns = 0;
  f.onReturn = [&] { ++returns; };
  f.open();
  std::filesystem::remove_all(f.folder / "DATA");
  f.exitButton()->click();
  f.frame.reset();
  QCOMPARE(returns, 1);
  QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"ER1STFILENOTFOUND"});
}

void TframeTest::everyByteSurvivesTheFrame() {
  QByteArrayList texts;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '"' && byte != '\n') texts << QByteArray("x") + static_cast<char>(byte) + "y";
  }
  TframeFixture f;
  writeRecords(f.folder.path(), texts, texts);
  const QByteArray before = f.data();
  f.open();
  for (int row = 0; row < texts.size(); ++row) {
    QCOMPARE(toRecordText(f.grid()->model()->index(row, 2).data().toString()), texts[row].toStdString());
  }
  f.exitButton()->click();
  QCOMPARE(f.data(), before);
  QCOMPARE(f.messages.takeCaptions(), {});
}

#include "frameTest.moc"
