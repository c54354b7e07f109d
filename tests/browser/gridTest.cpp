#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "browser/frameFixture.h"
#include "tools/testList.h"

namespace {

QImage pictureOfRow(const QTableView* grid, int row) {
  return grid->viewport()->grab(QRect(0, row * 18, 60, 18)).toImage();
}

}  // namespace

/// The grid as the user sees and handles it.
class TgridTest : public QObject {
  Q_OBJECT
 private slots:
  void emptyListHasOneBlankRow() {
    TframeFixture f;
    writeRecords(f.folder.path(), {}, {});
    f.open();
    QCOMPARE(f.grid()->model()->rowCount(), 1);
    QCOMPARE(f.grid()->model()->columnCount(), 7);
    for (int column = 0; column < 7; ++column) QCOMPARE(f.column(column), QString());
    f.pressHeading(2);
    QTest::keyClick(f.grid(), Qt::Key_Return);
    QTest::mouseDClick(f.grid()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 9));
    QCOMPARE(f.grid()->model()->rowCount(), 1);
  }

  void headingPressesSort() {
    TopenFrame f;
    f.pressHeading(1, Qt::RightButton);
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
    f.pressHeading(1);
    QCOMPARE(f.column(1), QStringLiteral("a b c"));
    f.pressHeading(1);
    QCOMPARE(f.column(1), QStringLiteral("c b a"));
    f.pressHeading(2);  // another column: ascending; equal texts keep their order
    QCOMPARE(f.column(1), QStringLiteral("b c a"));
    f.pressHeading(0);
    QCOMPARE(f.column(0), QStringLiteral("1 2 3"));
    const QPoint heading = f.grid()->horizontalHeader()->viewport()->mapTo(f.frame.get(), QPoint(8, 8));
    QTest::mouseDClick(f.frame->windowHandle(), Qt::LeftButton, Qt::NoModifier, heading);
    QCOMPARE(f.column(0), QStringLiteral("1 2 3"));  // a double click counts as two presses
    QTest::keyClick(f.grid(), Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(f.column(1), QStringLiteral("a b c"));
    QTest::keyClick(f.grid(), Qt::Key_0, Qt::ControlModifier);  // no such column
    const int before = f.grid()->columnWidth(1);
    QTest::keyClick(f.grid(), Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(f.grid()->columnWidth(1), before + 10);
  }

  /// The view paints only what the model reports as changed.
  void everyCellAndHeadingIsReported() {
    TopenFrame f;
    const QAbstractItemModel* model = f.grid()->model();
    QSignalSpy cells(model, &QAbstractItemModel::dataChanged);
    QSignalSpy headings(model, &QAbstractItemModel::headerDataChanged);
    f.pressHeading(1);
    QVERIFY(!cells.isEmpty() && !headings.isEmpty());
    QCOMPARE(cells.takeLast().first(2), QVariantList({model->index(0, 0), model->index(2, 6)}));
    QCOMPARE(headings.takeLast().mid(1), QVariantList({0, 6}));
  }

  void commandsScrollToTheirRows() {
    TframeFixture f;
    QByteArrayList texts;
    for (int i = 0; i < 90; ++i) texts << "x" + QByteArray::number(i);
    writeRecords(f.folder.path(), texts, texts);
    f.open();
    const auto isInSight = [&](int row) {
      const QRect cell = f.grid()->visualRect(f.grid()->model()->index(row, 0));
      return f.grid()->viewport()->rect().contains(cell);
    };
    f.search("txtDescSearch", QStringLiteral("x89"));
    f.click("btnClearSearch");
    QCOMPARE(f.selectedRows(), QList<int>({89}));
    QVERIFY(isInSight(89) && !isInSight(0));
    f.grid()->verticalScrollBar()->setValue(0);  // as the wheel does: the current row stays
    QVERIFY(!isInSight(89));
    f.click("btnClearSearch");
    QVERIFY(isInSight(89));
    f.grid()->setFocus();
    f.press(Qt::Key_Home, Qt::ControlModifier);
    f.press(Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(isInSight(0));
    f.click("btnCopy");
    QVERIFY(isInSight(90) && isInSight(91));
    f.messages.answer = QMessageBox::Yes;
    f.click("btnDelete");  // both copies
    f.press(Qt::Key_Home, Qt::ControlModifier);
    for (int i = 0; i < 4; ++i) f.press(Qt::Key_Down, Qt::ShiftModifier);
    f.click("btnDelete");
    QCOMPARE(f.selectedRows(), QList<int>({0}));
    f.press(Qt::Key_End, Qt::ControlModifier);
    f.click("btnUndo");
    QVERIFY(isInSight(0) && isInSight(4));
  }

  void draggingAnEdgeResizesWithoutSorting() {
    TopenFrame f;
    QHeaderView* header = f.grid()->horizontalHeader();
    const int before = header->sectionSize(1);
    const QPoint edge(header->sectionViewportPosition(2) - 1, 5);
    QTest::mousePress(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
    QTest::mouseMove(header->viewport(), edge + QPoint(30, 0));
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge + QPoint(30, 0));
    QCOMPARE(header->sectionSize(1), before + 30);
    QCOMPARE(f.column(1), QStringLiteral("c a b"));
  }

  void opensInStoredOrder() {
    const std::initializer_list<std::tuple<QByteArray, const char*, const char*>> cases = {
        {"SORTCOL=1\n", "a b c", "SORTCOL=1"},
        {"SORTCOL=2\nSORTASC=0\n", "c a b", "SORTCOL=2"},    // equal texts in the table's order
        {"SORTCOL=10\nSORTASC=0\n", "b a c", "SORTCOL=0"},   // no such column now: by number, same direction
        {"SORTCOL=11\nSORTASC=0\n", "c a b", "SORTCOL=0"}};  // never such a column: by number, ascending
    for (const auto& [ini, shown, stored] : cases) {
      TopenFrame f("[GRID]\n" + ini);
      QCOMPARE(f.column(1), QLatin1String(shown));
      f.click("BtnExit");
      QVERIFY2(f.ini().contains(stored), f.ini().constData());
    }
  }

  void layoutIsStored() {
    TopenFrame f("; mine\n[GRID]\nCOL_2_WIDTH=222\nCOL_3_WIDTH=-5\nCOL_4_WIDTH=99999999\nCOL_9_WIDTH=77\n");
    QCOMPARE(f.grid()->columnWidth(2), 222);
    QVERIFY(f.grid()->columnWidth(3) > 0);
    QVERIFY(f.grid()->columnWidth(4) < 10000);
    QCOMPARE(f.grid()->columnWidth(0), f.grid()->width() / 11);
    f.grid()->setColumnWidth(0, 33);
    f.pressHeading(1);
    f.pressHeading(1);
    f.click("BtnExit");
    QVERIFY(f.ini().startsWith("; mine\n[GRID]\nCOL_2_WIDTH=222\n"));
    for (const char* line : {"\nCOL_0_WIDTH=33\n", "\nCOL_9_WIDTH=77\n", "\nSORTCOL=1\n", "\nSORTASC=0\n"}) {
      QVERIFY2(f.ini().contains(line), line);
    }
    QVERIFY(!f.ini().contains("COL_7_WIDTH"));
  }

  void doubleClickOnAnEdgeFitsTheColumn() {
    TopenFrame f("[GRID]\nCOL_2_WIDTH=20\n");
    const QHeaderView* header = f.grid()->horizontalHeader();
    const QPoint edge(header->sectionViewportPosition(3) - 1, 5);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
    QTest::mouseDClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
    const int text = f.grid()->fontMetrics().horizontalAdvance(QStringLiteral("Description"));
    QVERIFY(f.grid()->columnWidth(2) >= text && f.grid()->columnWidth(2) < text + 40);
    QCOMPARE(f.column(1), QStringLiteral("c a b"));  // not sorted
  }

  void selectionStaysOnRowsWhenSorted() {
    TopenFrame f;
    f.grid()->setFocus();
    QTest::keyClick(f.grid(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(f.grid(), Qt::Key_Down);
    QTest::keyClick(f.grid(), Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(f.selectedRows(), QList<int>({1, 2}));
    f.pressHeading(1);
    QCOMPARE(f.selectedRows(), QList<int>({1, 2}));
    QCOMPARE(f.grid()->currentIndex().row(), 2);
    QTest::keyClick(f.grid(), Qt::Key_Tab);
    QVERIFY2(!f.grid()->hasFocus(), "Tab stays in the grid");
  }

  void rowsAreColouredInTurn() {
    TopenFrame f;
    f.grid()->clearSelection();
    const QPoint clear(55, 4);
    QCOMPARE(pictureOfRow(f.grid(), 0).pixelColor(clear), QColor(0xFF, 0xFF, 0xFF));
    QCOMPARE(pictureOfRow(f.grid(), 1).pixelColor(clear), QColor(0xDD, 0xEE, 0xFF));
    QCOMPARE(pictureOfRow(f.grid(), 2).pixelColor(clear), QColor(0xFF, 0xFF, 0xFF));
    const QRect heading(0, 0, f.grid()->columnWidth(0), 18);
    const QImage ascending = f.grid()->horizontalHeader()->viewport()->grab(heading).toImage();
    const QHeaderView* header = f.grid()->horizontalHeader();
    const QImage whole = header->viewport()->grab().toImage();
    QCOMPARE(whole.pixelColor(header->length() + 3, 4), QColor(0xC0, 0xC0, 0xC0));
    f.pressHeading(0);
    QVERIFY(f.grid()->horizontalHeader()->viewport()->grab(heading).toImage() != ascending);  // the arrow has turned
    for (const QPoint& line : {QPoint(heading.right(), 4), QPoint(4, heading.bottom())}) {
      QCOMPARE(ascending.pixelColor(line), QColor(0x80, 0x80, 0x80));
    }
    QVERIFY(pictureOfRow(f.grid(), 1).pixelColor({55, 16}) != QColor(0x80, 0x80, 0x80));
    QCOMPARE(pictureOfRow(f.grid(), 2).pixelColor({55, 16}), QColor(0x80, 0x80, 0x80));  // under the last row
    QCOMPARE(f.grid()->rowHeight(0), 18);
    QCOMPARE(f.grid()->horizontalHeader()->height(), 18);
  }

  void highlightStaysWhileAnotherWindowIsActive() {
    TopenFrame f;
    QPalette palette = f.grid()->palette();
    palette.setColor(QPalette::Active, QPalette::Highlight, Qt::blue);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, Qt::gray);
    f.grid()->setPalette(palette);
    f.grid()->selectRow(1);
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(!f.grid()->isActiveWindow());
    QCOMPARE(pictureOfRow(f.grid(), 1).pixelColor({55, 4}), QColor(Qt::blue));
  }
};
EQREC_TEST(TgridTest);

#include "gridTest.moc"
