#include "support/headedGrid.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "support/gridLayout.h"

/// A static library's resources must be registered by hand. (The macro does not work in a namespace.)
static void registerResources() {
  Q_INIT_RESOURCE(resources);
}

namespace {

constexpr int spaceAboveText = 2;
constexpr int leastRowsInSight = 2;
constexpr int minimumColumnWidth = 12;
constexpr int widthStep = 10;
constexpr int widestColumn = 4096;  // beyond that the other columns are out of reach

constexpr QColor silver(0xC0, 0xC0, 0xC0);
constexpr QColor lightBlue(0xDD, 0xEE, 0xFF);
constexpr QColor darkText(0x00, 0x00, 0x00);
constexpr QColor lineColor(0x80, 0x80, 0x80);

constexpr int glyphRoom = 8;   ///< pixels that text and arrow need besides their own widths
constexpr int glyphInset = 9;  ///< pixels that an arrow takes from the text's right edge

QRect textRect(const QRect& cell) {
  return cell.adjusted(3, spaceAboveText, -3, 0);
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

/// Paints the cells: white and light blue rows in turn with dark text, and selected rows in the system's highlight
/// colours, whether or not the window is active. A text that does not fit ends in an ellipsis.
class TgridDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace

/// The heading row: silver, with the sort arrow beside the text of the sort column.
class TgridHeader : public QHeaderView {
 public:
  explicit TgridHeader(QWidget* parent);

  /// Moves the sort arrow to a column. If there is no such column, no heading has an arrow.
  void showSort(int column, bool ascending);
  int sortColumn() const { return sortColumn_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  QPixmap sortUp_;
  QPixmap sortDown_;
  int sortColumn_ = -1;
  bool sortAscending_ = true;
  bool edgeDoubleClicked_ = false;
};

TgridHeader::TgridHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  registerResources();
  sortUp_ = QPixmap(QStringLiteral(":/PIC_SORT_UP"));
  sortDown_ = QPixmap(QStringLiteral(":/PIC_SORT_DOWN"));
  setSectionsClickable(true);
  setHighlightSections(false);
  setResizeContentsPrecision(0);  // only the rows in sight
  connect(this, &QHeaderView::sectionHandleDoubleClicked, this, [this] { edgeDoubleClicked_ = true; });
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

/// The second of two quick presses arrives as a double click only. On a heading it counts as a press; on an edge the
/// table fits the column.
void TgridHeader::mouseDoubleClickEvent(QMouseEvent* event) {
  edgeDoubleClicked_ = false;
  QHeaderView::mouseDoubleClickEvent(event);
  if (!edgeDoubleClicked_) mousePressEvent(event);
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
  const bool oddRow = index.row() % 2 == 0;  // the heading is row 0, so the first data row is row 1
  const QColor rowColor = oddRow ? QColor(Qt::white) : lightBlue;
  painter->save();
  painter->fillRect(option.rect, selected ? option.palette.color(QPalette::Active, QPalette::Highlight) : rowColor);
  if (index.row() == index.model()->rowCount() - 1) {
    painter->setPen(lineColor);
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
  }
  painter->setPen(selected ? option.palette.color(QPalette::Active, QPalette::HighlightedText) : darkText);
  painter->setFont(option.font);
  drawOneLine(painter, textRect(option.rect), index.data().toString());
  painter->restore();
}

TheadedGrid::TheadedGrid(QWidget* parent) : QTableView(parent), header_(new TgridHeader(this)) {
  setHorizontalHeader(header_);
  header_->setMinimumSectionSize(minimumColumnWidth);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  fitRows();
  setItemDelegate(new TgridDelegate(this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(ContiguousSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, viewport(), qOverload<>(&QWidget::update));
  connect(header_, &QHeaderView::sectionPressed, this, &TheadedGrid::headerPressed);
}

void TheadedGrid::setLeastRowHeight(int pixels) {
  leastRowHeight_ = pixels;
  fitRows();
}

/// Makes the rows as high as the font needs, and the columns as much wider.
void TheadedGrid::fitRows() {
  const double before = fontScale();
  const int pixels = std::max(leastRowHeight_, fontMetrics().height() + spaceAboveText);
  header_->setFixedHeight(pixels);
  verticalHeader()->setMinimumSectionSize(pixels);
  verticalHeader()->setDefaultSectionSize(pixels);
  const double growth = fontScale() / before;
  if (growth == 1) return;
  for (int column = 0; column < header_->count(); ++column) {
    setColumnWidth(column, qRound(columnWidth(column) * growth));
  }
}

double TheadedGrid::fontScale() const {
  return static_cast<double>(header_->height()) / leastRowHeight_;
}

QSize TheadedGrid::minimumSizeHint() const {
  const int rows = leastRowsInSight * verticalHeader()->defaultSectionSize();
  const int height = header_->height() + rows + horizontalScrollBar()->sizeHint().height() + 2 * frameWidth();
  return {QTableView::minimumSizeHint().width(), height};
}

void TheadedGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) fitRows();
}

void TheadedGrid::showSort(const TsortOrder& order) {
  header_->showSort(order.column, order.ascending);
}

void TheadedGrid::setEmptyText(const QString& text) {
  if (std::exchange(emptyText_, text) != text) viewport()->update();
}

void TheadedGrid::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (emptyText_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void TheadedGrid::setColumnWidths(const TgridLayout& layout) {
  for (int column = 0; column < header_->count(); ++column) {
    const int width = layout.widths.at(static_cast<std::size_t>(column));
    setColumnWidth(column, std::clamp(qRound(width * fontScale()), minimumColumnWidth, widestColumn));
  }
}

void TheadedGrid::readColumnWidths(TgridLayout& layout) const {
  for (int column = 0; column < header_->count(); ++column) {
    layout.widths.at(static_cast<std::size_t>(column)) = qRound(columnWidth(column) / fontScale());
  }
}

/// Does what a key means together with Ctrl. Returns whether the key belongs to the headings.
bool TheadedGrid::useHeadingKey(int key) {
  const int column = key == Qt::Key_0 ? 9 : key - Qt::Key_1;
  if (key >= Qt::Key_0 && key <= Qt::Key_9) {
    if (column < header_->count()) emit headerPressed(column);
  } else if (key == Qt::Key_Left || key == Qt::Key_Right) {
    const int sorted = header_->sortColumn();
    const int change = key == Qt::Key_Left ? -widthStep : widthStep;
    if (sorted < header_->count()) setColumnWidth(sorted, std::max(minimumColumnWidth, columnWidth(sorted) + change));
  } else {
    return false;
  }
  return true;
}

void TheadedGrid::keyPressEvent(QKeyEvent* event) {
  pressedKey_ = event->key();
  const bool control = (event->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
  if (control && useHeadingKey(event->key())) return;
  QTableView::keyPressEvent(event);
}

void TheadedGrid::keyReleaseEvent(QKeyEvent* event) {
  QTableView::keyReleaseEvent(event);
  if (event->isAutoRepeat() || std::exchange(pressedKey_, 0) != event->key()) return;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      emit enterReleased();
      break;
    case Qt::Key_Delete:
      emit deleteReleased();
      break;
    default:
      break;
  }
}

void TheadedGrid::focusOutEvent(QFocusEvent* event) {
  pressedKey_ = 0;
  QTableView::focusOutEvent(event);
}

void TheadedGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index.isValid()) emit cellDoubleClicked(index);
}
