#include <QLabel>
#include <QTest>

#include "browser/attention.h"
#include "browser/frameFixture.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/dialogs.h"
#include "tools/recordChanges.h"
#include "tools/testList.h"

/// Which records need attention, and how the user gets to them.
class TattentionTest : public QObject {
  Q_OBJECT
 private slots:
  void reasonsAreFound() {
    struct Tcase {
      std::vector<std::string> texts;
      unsigned testProc;
      const char* reason;
    };
    const std::vector<Tcase> cases = {
        {{"a"}, 1, ""},
        {{" "}, 1, "No control number."},
        {{"b "}, 1, "Another record has this control number."},
        {{"B"}, 2, "The test procedure is not in use."},
        {{" b"}, 3, "Another record has this control number. The test procedure has no title."},
        {{""}, 4, "No control number. The test procedure has no title."}};
    TequipRecTable records;
    TtestProcTable titles;
    Tattention attention(records, titles);
    for (const Tcase& c : cases) append(records, makeRecord(c.texts, c.testProc));
    QCOMPARE(attention.records(), std::vector<TrecordIndex>({1, 2, 4, 5}));  // without titles, none is missing
    titles.set(1, "Pump");
    titles.set(2, " (UNUSED) ");
    titles.set(4, " ");
    append(records, makeRecord({"z"}, 1));
    QCOMPARE(attention.records(), std::vector<TrecordIndex>({1, 2, 3, 4, 5}));
    for (std::size_t i = 0; i < cases.size(); ++i) {
      QCOMPARE(attention.reason(static_cast<TrecordIndex>(i)), QString::fromLatin1(cases[i].reason));
    }
  }

  void linkShowsThemUntilClear() {
    TframeFixture f;
    writeRecords(f.folder.path(), {"c", "a", "c"}, {"x", "y", "z"});
    f.open();
    auto* link = f.control<QLabel>("lblAttention");
    QVERIFY(link->isVisible() && link->text().contains(u"2 records need attention"));
    f.search("txtDescSearch", QStringLiteral("nowhere"));
    f.grid()->setFocus();
    f.press(Qt::Key_Tab);
    f.press(Qt::Key_Return);
    QCOMPARE(f.column(2), QStringLiteral("x z"));
    QCOMPARE(f.selectedRows(), QList<int>({0}));
    QCOMPARE(f.grid()->model()->index(1, 0).data(Qt::ToolTipRole).toString(),
             QStringLiteral("Another record has this control number."));
    QCOMPARE(f.control<QLabel>("lblStatus")->text(), QStringLiteral("2 of 3 records match"));
    f.messages.answer = QMessageBox::Yes;
    f.click("btnDelete");  // the other one is in order now, as a search's hits are looked for again
    QCOMPARE(f.column(2), QString());
    QVERIFY(!link->isVisible());
    f.click("btnClearSearch");
    QCOMPARE(f.column(2), QStringLiteral("y z"));
    f.click("btnUndo");
    emit link->linkActivated({});
    QCOMPARE(f.column(2), QStringLiteral("x z"));
    f.search("txtDescSearch", QStringLiteral("y"));  // takes the place of that search
    QCOMPARE(f.column(2), QStringLiteral("y"));
  }

  void uploadNamesWhatTheAnalyzerCannotTellApart() {
    using Tcase = std::pair<QByteArrayList, const char*>;
    for (const auto& [ids, warning] :
         {Tcase({"c", "a", "c", ""}, "3 of 4 records have no control number, or one that others have."),
          Tcase({"a", ""}, "1 of 2 records has no control number, or one that others have."), Tcase({"a", "b"}, "")}) {
      TframeFixture f;
      writeRecords(f.folder.path(), ids, QByteArrayList(ids.size(), "x"));
      f.open();
      whenOpen("TcomSelectFrm", [warning = QString::fromLatin1(warning)](QWidget* selector) {
        const auto* line = control<QLabel>(selector, "lblListWarning");
        QCOMPARE(line->text(), warning);
        QCOMPARE(line->isVisible(), !line->text().isEmpty());
        click(selector, "btnCancel");
      }).during([&] { f.click("BtnUpload"); });
    }
  }
};
EQREC_TEST(TattentionTest);

#include "attentionTest.moc"
