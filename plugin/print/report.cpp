#include "print/report.h"

#include <QDate>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "support/windows1252.h"

namespace {

constexpr std::size_t manyColumns = 8;  ///< this many columns or more have smaller texts
constexpr int textSize = 8 * unitsPerPoint;
constexpr int smallTextSize = 7 * unitsPerPoint;
constexpr int padding = 4 * unitsPerPoint;
constexpr int smallPadding = 5 * unitsPerPoint / 2;
constexpr int titleSize = 15 * unitsPerPoint;
constexpr int searchLift = 3 * unitsPerPoint;  ///< into the space below the title
constexpr int hairLine = unitsPerPoint / 2;
constexpr int strongLine = unitsPerPoint;
const QColor headingShade(0xDC, 0xDC, 0xDC);
const QColor rowShade(0xF3, 0xF3, 0xF3);
const QColor ruleColor(0xBE, 0xBE, 0xBE);

QFont reportFont(int size, QFont::Weight weight = QFont::Normal) {
  QFont font;
  font.setPixelSize(size);
  font.setWeight(weight);
  font.setHintingPreference(QFont::PreferNoHinting);
  // Without kerning and ligatures, the width of a text is the sum of its characters' widths.
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferNoShaping | QFont::PreferOutline));
  font.setKerning(false);
  return font;
}

/// A record's text for paper, with blanks in place of control characters.
QString printable(std::string_view text) {
  QString result = fromRecordText(text);
  for (QChar& character : result) {
    if (!character.isPrint()) character = u' ';
  }
  return result;
}

TcharWidths charWidths(const QFont& font) {
  const QFontMetricsF metrics(font);
  TcharWidths widths{};
  for (std::size_t byte = 0; byte < widths.size(); ++byte) {
    const char character = static_cast<char>(byte);
    widths[byte] = static_cast<int>(std::ceil(metrics.horizontalAdvance(printable({&character, 1}))));
  }
  return widths;
}

/// The paper's printable area in the report's units.
QSize areaOf(const QPageLayout& paper) {
  return (paper.paintRect(QPageLayout::Point).size() * unitsPerPoint).toSize();
}

double reductionFor(const QSize& area) {
  return std::min(
      {1.0, double(area.width()) / leastReportArea.width(), double(area.height()) / leastReportArea.height()});
}

QSize areaFor(const QPageLayout& paper) {
  return (areaOf(paper) / reductionFor(areaOf(paper))).expandedTo(leastReportArea);
}

void rule(QPainter& painter, int y, int right, int width, const QColor& color) {
  painter.fillRect(0, y - width, right, width, color);
}

}  // namespace

QPageLayout reportPageLayout(const QPageSize& paper, bool landscape) {
  const double binding = 57;  // 20 mm
  const double margin = 36;
  const QMarginsF upright(binding, margin, margin, margin);
  const QMarginsF lying(margin, binding, margin, margin);
  return {paper, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, landscape ? lying : upright};
}

Treport::Tfonts::Tfonts(std::size_t columnCount)
    : title(reportFont(titleSize, QFont::Bold)),
      heading(reportFont(columnCount < manyColumns ? textSize : smallTextSize, QFont::Bold)),
      text(reportFont(columnCount < manyColumns ? textSize : smallTextSize)) {}

TreportMetrics Treport::Tfonts::metrics() const {
  const double height = std::max(QFontMetricsF(text).height(), QFontMetricsF(heading).height());
  return {charWidths(text), charWidths(heading), static_cast<int>(std::ceil(height)),
          text.pixelSize() == textSize ? padding : smallPadding};
}

Treport::Treport(TreportTable table, const QPageLayout& paper)
    : table_(std::move(table)),
      paper_(paper),
      fonts_(table_.columnCount()),
      reduction_(reductionFor(areaOf(paper))),
      layout_(table_, fonts_.metrics(), areaFor(paper)),
      date_(QLocale().toString(QDate::currentDate(), QLocale::LongFormat)) {}

void Treport::paintPage(QPainter& painter, std::size_t page, double dotsPerInch) const {
  painter.save();
  const double scale = dotsPerInch / unitsPerInch * reduction_;
  painter.scale(scale, scale);
  painter.setPen(Qt::black);
  paintTitle(painter);
  paintSearch(painter);
  paintHeadings(painter);
  paintRows(painter, page);
  paintFooter(painter, page);
  painter.restore();
}

void Treport::paintTitle(QPainter& painter) const {
  const QRect title(0, 0, layout_.area().width(), TreportLayout::titleHeight - 8 * unitsPerPoint);
  painter.setFont(fonts_.title);
  painter.drawText(title, Qt::AlignLeft | Qt::AlignBottom, QStringLiteral("Equipment Records"));
  painter.setFont(fonts_.heading);
  painter.drawText(title, Qt::AlignRight | Qt::AlignTop, QStringLiteral("QT484"));
  painter.setFont(fonts_.text);
  painter.drawText(title, Qt::AlignRight | Qt::AlignBottom, date_);
}

void Treport::paintSearch(QPainter& painter) const {
  painter.setFont(fonts_.text);
  const QFontMetricsF metrics(painter.font());
  double baseline = TreportLayout::titleHeight - searchLift + metrics.ascent();
  for (const std::string& line : layout_.search()) {
    painter.drawText(QPointF(0, baseline), printable(line));
    baseline += metrics.height();
  }
}

void Treport::paintHeadings(QPainter& painter) const {
  const TreportRow& headings = layout_.headings();
  const int bottom = headings.top + headings.height;
  painter.fillRect(0, headings.top, layout_.area().width(), headings.height, headingShade);
  rule(painter, bottom, layout_.area().width(), strongLine, Qt::black);
  painter.setFont(fonts_.heading);
  paintCells(painter, headings, headings.top + 2 * TreportLayout::rowPadding);
}

void Treport::paintRows(QPainter& painter, std::size_t page) const {
  int bottom = layout_.headings().top + layout_.headings().height;
  painter.setFont(fonts_.text);
  for (const TreportRow& row : layout_.page(page)) {
    bottom = row.top + row.height;
    if (row.row % 2 == 1) painter.fillRect(0, row.top, layout_.area().width(), row.height, rowShade);
    rule(painter, bottom, layout_.area().width(), hairLine, ruleColor);
    paintCells(painter, row, row.top + TreportLayout::rowPadding);
  }
  if (page + 1 < pageCount()) return;
  const QRect summary(layout_.columns().front().left, bottom, layout_.area().width(), layout_.summaryHeight());
  painter.setFont(fonts_.heading);
  painter.drawText(summary, Qt::AlignLeft | Qt::AlignVCenter,
                   QStringLiteral("Number of records: %1").arg(table_.rowCount()));
}

void Treport::paintCells(QPainter& painter, const TreportRow& row, int top) const {
  const QFontMetricsF metrics(painter.font());
  for (std::size_t column = 0; column < row.cells.size(); ++column) {
    const TreportColumn place = layout_.columns()[column];
    double baseline = top + metrics.ascent();
    for (const std::string& line : row.cells[column]) {
      const QString text = printable(line);
      const double left = table_.isNumber(column) ? place.width - metrics.horizontalAdvance(text) : 0;
      painter.drawText(QPointF(place.left + left, baseline), text);
      baseline += metrics.height();
    }
  }
}

void Treport::paintFooter(QPainter& painter, std::size_t page) const {
  const QRect footer(0, layout_.bodyBottom(), layout_.area().width(), TreportLayout::footerHeight);
  painter.setFont(fonts_.text);
  painter.drawText(footer, Qt::AlignRight | Qt::AlignBottom,
                   QStringLiteral("Page %1 of %2").arg(page + 1).arg(pageCount()));
}
