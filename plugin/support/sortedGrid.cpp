#include "support/sortedGrid.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <utility>

#include "support/gridLayout.h"
#include "support/gridPainting.h"

/// The library is a static one, whose resources nobody registers unasked. (The macro does not work in a namespace.)
static void registerResources() {
  Q_INIT_RESOURCE(resources);
}

namespace {

/// The heading row, once its pictures can be found.
TgridHeader* makeHeader(QWidget* parent) {
  registerResources();
  return new TgridHeader(parent);
}

constexpr int defaultRowHeight = 18;
constexpr int minimumColumnWidth = 12;
constexpr int widthStep = 10;
constexpr int widestColumn = 4096;  // wider, and the others could no longer be reached

}  // namespace

TsortedGrid::TsortedGrid(QWidget* parent) : QTableView(parent), header_(makeHeader(this)) {
  setHorizontalHeader(header_);
  header_->setMinimumSectionSize(minimumColumnWidth);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  setPixelsPerRow(defaultRowHeight);
  setItemDelegate(new TgridDelegate(this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(ContiguousSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  connect(header_, &QHeaderView::sectionPressed, this, &TsortedGrid::headerPressed);
}

void TsortedGrid::setPixelsPerRow(int pixels) {
  header_->setFixedHeight(pixels);
  verticalHeader()->setMinimumSectionSize(pixels);
  verticalHeader()->setDefaultSectionSize(pixels);
}

void TsortedGrid::showSort(const TsortOrder& order) {
  header_->showSort(order.column, order.ascending);
}

void TsortedGrid::setColumnWidths(const TgridLayout& layout) {
  for (int column = 0; column < header_->count(); ++column) {
    const int width = layout.widths.at(static_cast<std::size_t>(column));
    setColumnWidth(column, std::clamp(width, minimumColumnWidth, widestColumn));
  }
}

void TsortedGrid::readColumnWidths(TgridLayout& layout) const {
  for (int column = 0; column < header_->count(); ++column) {
    layout.widths.at(static_cast<std::size_t>(column)) = columnWidth(column);
  }
}

/// Does what a key means together with Ctrl. False: it is none of the headings'.
bool TsortedGrid::useHeadingKey(int key) {
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

void TsortedGrid::keyPressEvent(QKeyEvent* event) {
  pressedKey_ = event->key();
  const bool control = (event->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
  if (control && useHeadingKey(event->key())) return;
  QTableView::keyPressEvent(event);
}

void TsortedGrid::keyReleaseEvent(QKeyEvent* event) {
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

void TsortedGrid::focusOutEvent(QFocusEvent* event) {
  pressedKey_ = 0;
  QTableView::focusOutEvent(event);
}

void TsortedGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index.isValid()) emit cellDoubleClicked(index);
}
