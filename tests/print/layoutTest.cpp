#include <QStringList>
#include <QTest>

#include "print/columnWidths.h"
#include "print/printFixture.h"
#include "print/reportLayout.h"
#include "print/reportTable.h"
#include "tools/testList.h"

static TreportMetrics plainMetrics() {
  TreportMetrics metrics{{}, {}, 90, 30};
  metrics.text.fill(40);
  metrics.heading.fill(50);
  return metrics;
}

/// Where the report places its texts. No font or printer needed: each character is 40 units wide.
class TlayoutTest : public QObject {
  Q_OBJECT
 private slots:
  void textsAreWrapped() {
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

  void widthIsShared() {
    const std::initializer_list<std::pair<int, std::vector<int>>> cases = {
        {1050, {50, 166, 833}},  // all but the fixed column grow
        {500, {50, 100, 350}},   // a rare long text is wrapped
        {240, {50, 80, 110}},    // the widest column shrinks first
        {110, {50, 30, 30}},     // words are split
        {20, {20, 0, 0}}};       // not even numbers fit
    for (const auto& [available, widths] : cases) {
      const auto shared = shareWidth({{50, 50, 50, true}, {40, 80, 100, false}, {60, 150, 500, false}}, available);
      QCOMPARE(std::vector<int>(shared.begin(), shared.end()), widths);
    }
  }

  void nothingIsCutOrOverlaps_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("area");
    QTest::addColumn<int>("count");
    const QSize a4(5020, 7700);
    const QString words = QStringLiteral("Pump, infusion, with pole clamp, mains lead, drip stand, and so");
    for (int count = 0; count < 24; ++count)
      QTest::addRow("%d rows, up to several pages", count) << words << a4 << count;
    QTest::newRow("unbroken words on the smallest page") << QString(63, u'W') << leastReportArea << 30;
    QTest::newRow("empty fields") << QString() << a4 << 200;
  }

  void nothingIsCutOrOverlaps() {
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
};
EQREC_TEST(TlayoutTest);

#include "layoutTest.moc"
