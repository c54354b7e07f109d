#include <QPushButton>
#include <QTest>

#include "browser/frameFixture.h"
#include "tools/testList.h"

/// The frame from loading to saving and its return to the host.
class TframeTest : public QObject {
  Q_OBJECT
 private slots:
  void opensAtItsSizeWithNamedButtons() {
    TopenFrame f;
    QCOMPARE(f.frame->size(), QSize(792, 536));
    QCOMPARE(f.frame->focusWidget(), f.grid());
    QCOMPARE(f.control<QPushButton>("BtnUpload")->text(), QStringLiteral("Upload To\nQT484"));
    QCOMPARE(f.control<QPushButton>("BtnExit")->text(), QStringLiteral("Return To\nMain Window"));
    for (const QPushButton* button : f.frame->findChildren<QPushButton*>()) {
      const bool isStep =
          button->objectName() == QStringLiteral("btnUndo") || button->objectName() == QStringLiteral("btnRedo");
      QVERIFY(!button->accessibleName().isEmpty() && button->isEnabled() != isStep && button->isFlat() == isStep);
    }
  }

  void problemsShowOneBoxEach() {
    const std::initializer_list<std::tuple<const char*, QByteArray, const char*, const char*>> cases = {
        {"eq.dat", {}, "ER1STFILENOTFOUND", ""},
        {"eq.dat", "\"c\",1\n\"a\",501\n\"b\",3\n", "ERINVALIDRECORDS", "c b"},
        {"TestProc.ASQ", "ASQ2", "Test Procedure Error", "c a b"}};
    for (const auto& [file, content, caption, shown] : cases) {
      TframeFixture f;
      writeBytes(f.folder / "DATA" / file, content);
      if (content.isNull()) std::filesystem::remove(f.folder / "DATA" / file);
      f.open();
      QCOMPARE(f.messages.takeCaptions(), QByteArrayList{caption});
      QCOMPARE(f.column(1), QLatin1String(shown));
    }
  }

  void exitSavesThenReturns() {
    TframeFixture f;
    QStringList seen;
    f.onReturn = [&] {
      seen << (f.frame->isHidden() ? QStringLiteral("hidden") : QStringLiteral("shown"));
      seen << (f.data().contains("\"c\",1\n\"a\",2") ? QStringLiteral("saved") : QString());
      seen << (f.ini().contains("SORTCOL=0\nSORTASC=1\n") ? QStringLiteral("layout") : QString());
    };
    f.open();
    QVERIFY(bytesOf(f.folder / "EquipmentRecord.log").contains("Equipment Record Editor"));
    std::filesystem::remove(f.folder / "DATA/eq.dat");
    f.click("BtnExit");
    QCOMPARE(seen, QStringList({QStringLiteral("hidden"), QStringLiteral("saved"), QStringLiteral("layout")}));
  }

  void hostMayDeleteFrameFromReturn() {
    for (const bool mouse : {true, false}) {
      TframeFixture f;
      f.onReturn = [&] { f.frame.reset(); };
      f.open();
      auto* button = f.control<QWidget>("BtnExit");
      const QPoint centre = button->mapTo(f.frame.get(), button->rect().center());
      button->setFocus();
      if (mouse) QTest::mouseClick(f.frame->windowHandle(), Qt::LeftButton, Qt::NoModifier, centre);
      if (!mouse) f.press(Qt::Key_Space);
      QVERIFY(f.frame == nullptr);
    }
  }

  void destructionSavesUnlessExitDid() {
    TopenFrame f;
    std::filesystem::remove(f.folder / "DATA/eq.dat");
    f.frame.reset();
    QVERIFY(f.data().startsWith("\"c\",1\n"));

    f.open();
    f.click("BtnExit");
    std::filesystem::remove(f.folder / "DATA/eq.dat");
    f.frame.reset();
    QVERIFY2(f.data().isNull(), "saved a second time");

    writeRecords(f.folder.path(), {"c"}, {""});
    f.open();
    f.click("BtnExit");
    f.frame->show();  // so there may be new changes to save
    std::filesystem::remove(f.folder / "DATA/eq.dat");
    f.frame.reset();
    QCOMPARE(f.data(), "\"c\",1\n");
  }
};
EQREC_TEST(TframeTest);

#include "frameTest.moc"
