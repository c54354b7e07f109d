#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <array>

#include "browser/frameFixture.h"
#include "tools/testList.h"

namespace {

/// Takes the record files away, so that a save fails, and puts them back.
void takeFilesAway(const TframeFixture& f) {
  std::filesystem::rename(f.folder / "DATA", f.folder / "elsewhere");
}
void putFilesBack(const TframeFixture& f) {
  std::filesystem::rename(f.folder / "elsewhere", f.folder / "DATA");
}

/// A frame whose exit could not save that the first record was deleted.
struct TfailedExit : public TopenFrame {
  TfailedExit() {
    onReturn = [this] { hasReturned = true; };
    messages.answer = QMessageBox::Yes;
    click("btnDelete");
    takeFilesAway(*this);
    messages.takeCaptions();
    click("BtnExit");
  }

  bool hasReturned = false;
};

}  // namespace

/// What becomes of changes when a save fails, a program ends early, or two programs work on one list.
class TnothingIsLostTest : public QObject {
  Q_OBJECT
 private slots:
  void failedExitIsOfferedAgain() {
    TfailedExit f;
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"ER1STFILENOTFOUND"});
    QVERIFY(f.hasReturned);
    QVERIFY(f.messages.informativeText.startsWith(QStringLiteral("Your changes are not lost.")));
    f.frame.reset();
    QCOMPARE(f.messages.takeCaptions(), {});  // the second try fails silently
    putFilesBack(f);
    f.open();
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"Unsaved Changes Found"});
    QCOMPARE(f.messages.informativeText, QStringLiteral("1 record deleted"));
    QCOMPARE(f.column(1), QStringLiteral("a b"));
    QVERIFY(f.data().startsWith("\"c\""));  // nothing is written before the exit
    QCOMPARE(f.control<QWidget>("btnUndo")->toolTip(), QStringLiteral("Undo the restoration of a record (Ctrl+Z)"));
    f.click("BtnExit");
    QCOMPARE(f.data(), "\"a\",2\n\"b\",3\n");
    f.open();
    QCOMPARE(f.messages.takeCaptions(), {});
    QVERIFY(!namesIn(f.folder.path()).contains("EquipmentRecord.unsaved"));
  }

  void restoredChangesCanBeUndoneOrRefused() {
    TfailedExit f;
    f.frame.reset();
    putFilesBack(f);
    f.open();
    f.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    takeFilesAway(f);
    f.frame.reset();
    putFilesBack(f);
    QCOMPARE(f.messages.takeCaptions().last(), "ER1STFILENOTFOUND");
    f.open();
    QCOMPARE(f.messages.takeCaptions(), {});  // done and undone
    f.click("btnDelete");
    takeFilesAway(f);
    f.frame.reset();
    putFilesBack(f);
    f.messages.answer = QMessageBox::No;
    f.open();
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    QVERIFY(namesIn(f.folder.path()).contains("EquipmentRecord.unsaved.kept-1"));
    f.messages.takeCaptions();
    f.open();
    QCOMPARE(f.messages.takeCaptions(), {});
  }

  void destructorTriesAgain() {
    TfailedExit f;
    putFilesBack(f);
    f.frame.reset();
    QCOMPARE(f.data(), "\"a\",2\n\"b\",3\n");
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"ER1STFILENOTFOUND"});  // of the exit
  }

  void failedLoadLeavesFilesAlone() {
    TframeFixture f;
    const QByteArray before = f.data();
    std::filesystem::rename(f.folder / "DATA/eqinfo.dat", f.folder / "away");
    f.open();
    f.click("BtnExit");
    f.frame.reset();
    QCOMPARE(namesIn(f.folder / "DATA").join(' '), "eq.dat eq.lock");
    std::filesystem::rename(f.folder / "away", f.folder / "DATA/eqinfo.dat");
    f.open();
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    QCOMPARE(f.data(), before);
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"ER2NDFILENOTFOUND"});
  }

  void newRecordIsSavedOnceItIsStored() {
    for (const bool stored : {false, true}) {
      TopenFrame f;
      whenOpen("TfrmEqRecEditor", [&](QWidget* editor) {
        QTest::keyClicks(editor->focusWidget(), QStringLiteral("NEW"));
        if (stored) click(editor, "btnPrev");
        f.frame.reset();
      }).during([&] { f.press(Qt::Key_N, Qt::ControlModifier); });
      QCOMPARE(f.data(), QByteArray("\"c\",1\n\"a\",2\n\"b\",3\n") + (stored ? "\"NEW\",1\n" : ""));
    }
  }

  void framesOnOneListAreJoined() {
    TopenFrame f;
    TEquipmentRecordPluginFrame other({f.folder.path(), f.folder.path(), {}});
    other.show();
    f.messages.answer = QMessageBox::Yes;
    f.click("btnDelete");  // c
    f.messages.takeCaptions();
    f.click("BtnExit");
    QCOMPARE(f.messages.takeCaptions(), {});
    click(&other, "btnCopy");  // of the same record
    click(&other, "BtnExit");
    QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"List Changed Meanwhile"});
    QCOMPARE(f.data(), "\"a\",2\n\"b\",3\n\"\",1\n");
    f.frame->show();
    f.click("BtnExit");  // has nothing to save
    QCOMPARE(f.messages.takeCaptions(), {});
    QCOMPARE(f.data(), "\"a\",2\n\"b\",3\n\"\",1\n");
  }

  void endOfSessionSavesWhatCannotBeKept() {
    TframeFixture f;
    const QString name = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(QString(300, QLatin1Char('x')));  // no folder can be called that
    f.frame = std::make_unique<TEquipmentRecordPluginFrame>(
        TframeContext{f.folder / "DATA/eq.dat/none", f.folder.path(), {}});
    f.messages.answer = QMessageBox::Yes;
    f.click("btnDelete");
    QVERIFY(f.data().startsWith("\"c\""));
    alignas(std::max_align_t) std::array<std::byte, 64> unused{};  // a session manager cannot be made
    emit qApp->commitDataRequest(reinterpret_cast<QSessionManager&>(unused));
    QCOMPARE(f.data(), "\"a\",2\n\"b\",3\n");
    f.frame.reset();
    QCoreApplication::setApplicationName(name);
  }
};
EQREC_TEST(TnothingIsLostTest);

#include "nothingIsLostTest.moc"
