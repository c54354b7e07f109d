#include <QStringList>
#include <QTest>

#include "print/columnWidths.h"
#include "print/printFixture.h"
#include "print/reportLayout.h"
#include "print/reportTable.h"
#include "tools/testList.h"

/// What stands where, without any font, page or printer: each character is 40 units wide.
class TlayoutTest : public QObject {
  Q_OBJECT
 private slots:
  void textsAreWrapped();
  void widthIsShared_data();
  void widthIsShared();
  void nothingIsCutOrOverlaps_data();
  void nothingIsCutOrOverlaps();
};
EQREC_TEST(TlayoutTest);

static TreportMetrics plainMetrics() {
  TreportMetrics metrics{{}, {}, 90, 30};
  metrics.text.fill(40);
  metrics.heading.fill(50);
  return metrics;
}

void TlayoutTest::textsAreWrapped() {
  const std::vector<std::pair<std::string, QString>> cases = {
      {"", QString()},
      {"a b  pump  c", QStringLiteral("a b|pump|c")},
      {"pumps pumps", QStringLiteral("pumps|pumps")},
      {"AB-12-345", QStringLiteral("AB-|12-|345")},
      {"pumps-x", QStringLiteral("pumps|-x")},
      {"ab cdefghij", QStringLiteral("ab|cdefg|hij")},
  };
  for (const auto& [text, lines] : cases) {
    QStringList wrapped;
    for (const auto line : wrappedLines(text, plainMetrics().text, 200)) {
      wrapped << QString::fromStdString(std::string(line));
    }
    QCOMPARE(wrapped.join(u'|'), lines);
    QCOMPARE(lineCount(text, plainMetrics().text, 200), std::size_t(wrapped.size()));
  }
}

void TlayoutTest::widthIsShared_data() {
  QTest::addColumn<int>("available");
  QTest::addColumn<QList<int>>("widths");
  QTest::newRow("more than enough: all grow but the fixed one") << 1050 << QList<int>{50, 166, 833};
  QTest::newRow("a rare long text is wrapped") << 500 << QList<int>{50, 100, 350};
  QTest::newRow("the widest gives way first") << 240 << QList<int>{50, 80, 110};
  QTest::newRow("words are broken") << 110 << QList<int>{50, 30, 30};
  QTest::newRow("not even numbers fit") << 20 << QList<int>{20, 0, 0};
}

void TlayoutTest::widthIsShared() {
  QFETCH(const int, available);
  const auto shared = shareWidth({{50, 50, 50, true}, {40, 80, 100, false}, {60, 150, 500, false}}, available);
  QTEST(QList<int>(shared.begin(), shared.end()), "widths");
}

void TlayoutTest::nothingIsCutOrOverlaps_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QSize>("area");
  QTest::addColumn<int>("count");
  const QSize a4(5020, 7700);
  const QString words = QStringLiteral("Pump, infusion, with pole clamp, mains lead, drip stand, and so");
  for (int count = 0; count < 24; ++count) QTest::addRow("%d rows, up to several pages", count) << words << a4 << count;
  QTest::newRow("unbroken words on the smallest page") << QString(63, u'W') << leastReportArea << 30;
  QTest::newRow("empty fields") << QString() << a4 << 200;
}

void TlayoutTest::nothingIsCutOrOverlaps() {
  QFETCH(const QString, text);
  QFETCH(const QSize, area);
  QFETCH(const int, count);
  TprintFixture f(count, text.toStdString());
  f.captions = {std::string(5000, 'X'), text.toStdString(), ""};
  const TreportTable table = f.table();
  const TreportMetrics metrics = plainMetrics();
  const TreportLayout layout(table, metrics, area);
  int right = 0;
  for (const TreportColumn& column : layout.columns()) {
    QVERIFY(column.left >= right && column.width > 0);
    right = column.left + column.width;
  }
  QVERIFY(right <= area.width());
  const int rowsTop = layout.headings().top + layout.headings().height;
  int row = 0;
  for (std::size_t page = 0; page < layout.pageCount(); ++page) {
    int bottom = rowsTop;
    for (const TreportRow& placed : layout.page(page)) {
      QCOMPARE(int(placed.row), row++);
      QCOMPARE(placed.top, bottom);
      bottom += placed.height;
      for (std::size_t column = 0; column < placed.cells.size(); ++column) {
        QString printed;
        for (const std::string& line : placed.cells[column]) {
          printed += QString::fromStdString(line);
          QVERIFY(textWidth(line, metrics.text) <= layout.columns()[column].width);
        }
        const QString whole = QString::fromStdString(table.text(placed.row, column));
        QCOMPARE(printed.remove(u' '), QString(whole).remove(u' '));
        QVERIFY(int(placed.cells[column].size()) * metrics.lineHeight <= placed.height);
      }
    }
    QVERIFY(bottom > rowsTop || count == 0);
    const bool isLast = page + 1 == layout.pageCount();
    QVERIFY(bottom + (isLast ? layout.summaryHeight() : 0) <= layout.bodyBottom());
  }
  QCOMPARE(row, count);
}

#include "layoutTest.moc"
