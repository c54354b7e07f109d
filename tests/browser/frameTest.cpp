#include <QTest>

#include "browser/frameFixture.h"
#include "support/windows1252.h"
#include "tools/testList.h"

/// How the frame begins and ends: what it loads, shows, saves and hands back.
class TframeTest : public QObject {
  Q_OBJECT
 private slots:
  void controlsArePlaced();
  void problemsShowOneBoxEach_data();
  void problemsShowOneBoxEach();
  void exitSavesThenReturns();
  void hostMayDeleteFrameFromReturn();
  void destructionSavesUnlessExitDid();
  void failedSaveShowsOneBoxAndReturns();
  void everyByteSurvivesTheFrame();
};
EQREC_TEST(TframeTest);

void TframeTest::controlsArePlaced() {
  const QList<QByteArrayList> buttons = {
      {"btnSearch", "Search"},   {"btnClearSearch", "Clear"}, {"btnAdd", "New"},
      {"btnCopy", "Copy"},       {"btnDelete", "Delete"},     {"btnExport", "Export"},
      {"btnOptions", "Options"}, {"btnPrint", "Print"},       {"BtnUpload", "Upload To\nQT484"},
      {"btnImport", "Import"},   {"BtnHelp", "Help"},         {"BtnExit", "Return To\nMain Window"}};
  TframeFixture f;
  f.open();
  QCOMPARE(f.frame->size(), QSize(792, 536));
  QCOMPARE(f.frame->focusWidget(), f.grid());
  for (const QByteArrayList& expected : buttons) {
    const auto* button = f.control<QAbstractButton>(expected[0]);
    QVERIFY2(button != nullptr, expected[0]);
    QCOMPARE(button->text(), QString::fromLatin1(expected[1]));
    QVERIFY(button->isEnabled());
    QVERIFY(!button->accessibleName().isEmpty());
  }
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

void TframeTest::hostMayDeleteFrameFromReturn() {
  for (const bool mouse : {true, false}) {
    TframeFixture f;
    f.onReturn = [&] { f.frame.reset(); };
    f.open();
    QWindow* window = f.frame->windowHandle();
    const QPoint button = f.exitButton()->mapTo(f.frame.get(), f.exitButton()->rect().center());
    f.exitButton()->setFocus();
    if (mouse) QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, button);
    if (!mouse) QTest::keyClick(window, Qt::Key_Space);
    QVERIFY(f.frame == nullptr);
  }
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
