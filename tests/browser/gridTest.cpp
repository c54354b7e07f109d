#include <QHeaderView>
#include <QTest>

#include "browser/frameFixture.h"
#include "tools/testList.h"

/// The grid as the user sees and handles it.
class TgridTest : public QObject {
  Q_OBJECT
 private slots:
  void emptyListHasOneBlankRow();
  void headingsAreShownLiterally();
  void headingPressesSort();
  void draggingAnEdgeResizesWithoutSorting();
  void opensInStoredOrder_data();
  void opensInStoredOrder();
  void layoutIsStored();
  void selectionStaysOnRowsWhenSorted();
  void rowsAreColouredInTurn();
  void highlightStaysWhileAnotherWindowIsActive();
};
EQREC_TEST(TgridTest);

namespace {

QImage pictureOfRow(const QTableView* grid, int row) {
  return grid->viewport()->grab(QRect(0, row * 18, 60, 18)).toImage();
}

}  // namespace

void TgridTest::emptyListHasOneBlankRow() {
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

void TgridTest::headingsAreShownLiterally() {
  TframeFixture f;
  f.writeIni("[DISPLAY]\nCUSTOM1=1\n[CUSTOMFIELDS]\nFIELD1NAME=R&D <b>\n");
  f.open();
  QStringList headings;
  for (int column = 0; column < f.grid()->model()->columnCount(); ++column) {
    headings << f.grid()->model()->headerData(column, Qt::Horizontal).toString();
  }
  QCOMPARE(headings.join(QLatin1Char('|')),
           QStringLiteral("No.|Control Number|Description|Manufacturer|Model|Test Procedure|Test Procedure Title|"
                          "R&D <b>"));
}

void TgridTest::headingPressesSort() {
  TframeFixture f;
  f.open();
  f.pressHeading(1, Qt::RightButton);
  QCOMPARE(f.column(1), QStringLiteral("c a b"));
  f.pressHeading(1);
  QCOMPARE(f.column(1), QStringLiteral("a b c"));
  f.pressHeading(1);
  QCOMPARE(f.column(1), QStringLiteral("c b a"));
  f.pressHeading(2);  // another column: ascending, and ties keep the order they had
  QCOMPARE(f.column(1), QStringLiteral("b c a"));
  f.pressHeading(0);
  QCOMPARE(f.column(0), QStringLiteral("1 2 3"));
  const QPoint heading = f.grid()->horizontalHeader()->viewport()->mapTo(f.frame.get(), QPoint(8, 8));
  QTest::mouseDClick(f.frame->windowHandle(), Qt::LeftButton, Qt::NoModifier, heading);
  QCOMPARE(f.column(0), QStringLiteral("1 2 3"));  // two presses, fast: there and back
  QTest::keyClick(f.grid(), Qt::Key_2, Qt::ControlModifier);
  QCOMPARE(f.column(1), QStringLiteral("a b c"));
  QTest::keyClick(f.grid(), Qt::Key_0, Qt::ControlModifier);  // there is no tenth column
  const int before = f.grid()->columnWidth(1);
  QTest::keyClick(f.grid(), Qt::Key_Right, Qt::ControlModifier);
  QCOMPARE(f.grid()->columnWidth(1), before + 10);
}

void TgridTest::draggingAnEdgeResizesWithoutSorting() {
  TframeFixture f;
  f.open();
  QHeaderView* header = f.grid()->horizontalHeader();
  const int before = header->sectionSize(1);
  const QPoint edge(header->sectionViewportPosition(2) - 1, 5);
  QTest::mousePress(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
  QTest::mouseMove(header->viewport(), edge + QPoint(30, 0));
  QTest::mouseRelease(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge + QPoint(30, 0));
  QCOMPARE(header->sectionSize(1), before + 30);
  QCOMPARE(f.column(1), QStringLiteral("c a b"));
}

void TgridTest::opensInStoredOrder_data() {
  QTest::addColumn<QByteArray>("ini");
  QTest::addColumn<QString>("shown");
  QTest::addColumn<QByteArray>("stored");
  QTest::newRow("ascending") << QByteArray("SORTCOL=1\n") << QStringLiteral("a b c") << QByteArray("SORTCOL=1");
  QTest::newRow("descending, ties in table order")
      << QByteArray("SORTCOL=2\nSORTASC=0\n") << QStringLiteral("c a b") << QByteArray("SORTCOL=2");
  QTest::newRow("column that is not there: numbers, direction kept")
      << QByteArray("SORTCOL=10\nSORTASC=0\n") << QStringLiteral("b a c") << QByteArray("SORTCOL=0");
  QTest::newRow("column beyond all: numbers ascending")
      << QByteArray("SORTCOL=11\nSORTASC=0\n") << QStringLiteral("c a b") << QByteArray("SORTCOL=0");
}

void TgridTest::opensInStoredOrder() {
  QFETCH(QByteArray, ini);
  QFETCH(QByteArray, stored);
  TframeFixture f;
  f.writeIni("[GRID]\n" + ini);
  f.open();
  QTEST(f.column(1), "shown");
  f.exitButton()->click();
  QVERIFY2(f.ini().contains(stored), f.ini().constData());
}

void TgridTest::layoutIsStored() {
  TframeFixture f;
  f.writeIni("; mine\n[GRID]\nCOL_2_WIDTH=222\nCOL_3_WIDTH=-5\nCOL_4_WIDTH=99999999\nCOL_9_WIDTH=77\n");
  f.open();
  QCOMPARE(f.grid()->columnWidth(2), 222);
  QVERIFY(f.grid()->columnWidth(3) > 0);
  QVERIFY(f.grid()->columnWidth(4) < 10000);
  QCOMPARE(f.grid()->columnWidth(0), f.grid()->width() / 11);
  f.grid()->setColumnWidth(0, 33);
  f.pressHeading(1);
  f.pressHeading(1);
  f.exitButton()->click();
  QVERIFY(f.ini().startsWith("; mine\n[GRID]\nCOL_2_WIDTH=222\n"));
  for (const char* line : {"\nCOL_0_WIDTH=33\n", "\nCOL_9_WIDTH=77\n", "\nSORTCOL=1\n", "\nSORTASC=0\n"}) {
    QVERIFY2(f.ini().contains(line), line);
  }
  QVERIFY(!f.ini().contains("COL_7_WIDTH"));
}

void TgridTest::selectionStaysOnRowsWhenSorted() {
  TframeFixture f;
  f.open();
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

void TgridTest::rowsAreColouredInTurn() {
  TframeFixture f;
  f.open();
  f.grid()->clearSelection();
  const QPoint clear(55, 4);
  QCOMPARE(pictureOfRow(f.grid(), 0).pixelColor(clear), QColor(0xFF, 0xFF, 0xFF));
  QCOMPARE(pictureOfRow(f.grid(), 1).pixelColor(clear), QColor(0xDD, 0xEE, 0xFF));
  QCOMPARE(pictureOfRow(f.grid(), 2).pixelColor(clear), QColor(0xFF, 0xFF, 0xFF));
  const QRect heading(0, 0, f.grid()->columnWidth(0), 18);
  const QImage ascending = f.grid()->horizontalHeader()->viewport()->grab(heading).toImage();
  f.pressHeading(0);
  QVERIFY(f.grid()->horizontalHeader()->viewport()->grab(heading).toImage() != ascending);  // the arrow turned
  QCOMPARE(f.grid()->rowHeight(0), 18);
  QCOMPARE(f.grid()->horizontalHeader()->height(), 18);
}

void TgridTest::highlightStaysWhileAnotherWindowIsActive() {
  TframeFixture f;
  f.open();
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

#include "gridTest.moc"
