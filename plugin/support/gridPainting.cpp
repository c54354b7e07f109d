#include "support/gridPainting.h"

#include <QPainter>

namespace {

constexpr QColor silver(0xC0, 0xC0, 0xC0);
constexpr QColor lightBlue(0xDD, 0xEE, 0xFF);
constexpr QColor darkText(0x00, 0x00, 0x00);
constexpr QColor lineColor(0x80, 0x80, 0x80);

constexpr int glyphRoom = 8;   ///< pixels that text and arrow need besides their own widths
constexpr int glyphInset = 9;  ///< pixels that an arrow takes from the text's right edge

QRect textRect(const QRect& cell) {
  return cell.adjusted(3, 2, -3, 0);
}

void drawOneLine(QPainter* painter, const QRect& rect, const QString& text) {
  const QString fitting = painter->fontMetrics().elidedText(text, Qt::ElideRight, rect.width());
  painter->drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, fitting);
}

void drawGlyph(QPainter* painter, const QRect& cell, const QPixmap& glyph, int textWidth) {
  const QSize size = glyph.deviceIndependentSize().toSize();
  const bool besideText = textWidth + size.width() + glyphRoom < cell.width();
  const int left = besideText ? textRect(cell).left() + textWidth + glyphRoom / 2 : cell.right() - size.width() - 1;
  painter->drawPixmap(left, cell.top() + (cell.height() - size.height()) / 2, glyph);
}

}  // namespace

TgridHeader::TgridHeader(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent),
      sortUp_(QStringLiteral(":/PIC_SORT_UP")),
      sortDown_(QStringLiteral(":/PIC_SORT_DOWN")) {
  setSectionsClickable(true);
  setHighlightSections(false);
}

void TgridHeader::showSort(int column, bool ascending) {
  sortColumn_ = column;
  sortAscending_ = ascending;
  viewport()->update();
}

void TgridHeader::paintEvent(QPaintEvent* event) {
  QHeaderView::paintEvent(event);
  const int end = length() - offset();
  QPainter(viewport()).fillRect(end, 0, width() - end, height(), silver);
}

/// The second press of a fast pair arrives as this event alone, and counts like any other.
void TgridHeader::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

void TgridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
  const QString text = model()->headerData(section, Qt::Horizontal).toString();
  painter->fillRect(rect, silver);
  painter->setPen(lineColor);
  painter->drawLine(rect.topRight(), rect.bottomRight());
  painter->drawLine(rect.bottomLeft(), rect.bottomRight());
  painter->setPen(darkText);
  QRect forText = textRect(rect);
  if (section == sortColumn_) {
    const QPixmap& glyph = sortAscending_ ? sortUp_ : sortDown_;
    drawGlyph(painter, rect, glyph, painter->fontMetrics().horizontalAdvance(text));
    forText.adjust(0, 0, -glyphInset, 0);
  }
  drawOneLine(painter, forText, text);
}

void TgridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  const auto group = option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
  const bool oddRow = index.row() % 2 == 0;  // rows are counted from 1, the heading being row 0
  const QColor rowColor = oddRow ? QColor(Qt::white) : lightBlue;
  painter->save();
  painter->fillRect(option.rect, selected ? option.palette.color(group, QPalette::Highlight) : rowColor);
  if (index.row() == index.model()->rowCount() - 1) {
    painter->setPen(lineColor);
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
  }
  painter->setPen(selected ? option.palette.color(group, QPalette::HighlightedText) : darkText);
  painter->setFont(option.font);
  drawOneLine(painter, textRect(option.rect), index.data().toString());
  painter->restore();
}
