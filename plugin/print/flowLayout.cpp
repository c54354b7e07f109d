#include "print/flowLayout.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <limits>

TflowLayout::TflowLayout(QWidget* parent) : QLayout(parent) {
  setContentsMargins(0, 0, 0, 0);
  setSpacing(parent->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, parent));
}

TflowLayout::~TflowLayout() = default;

void TflowLayout::addItem(QLayoutItem* item) {
  items_.emplace_back(item);
}

QLayoutItem* TflowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* TflowLayout::takeAt(int index) {
  if (itemAt(index) == nullptr) return nullptr;
  QLayoutItem* item = items_[static_cast<std::size_t>(index)].release();
  items_.erase(items_.begin() + index);
  return item;
}

TflowLayout::Trow TflowLayout::rowAt(int first, int width) const {
  Trow row{first, {}};
  for (; row.end < count(); ++row.end) {
    const QSize item = itemAt(row.end)->sizeHint();
    const int needed = row.end == first ? item.width() : row.size.width() + spacing() + item.width();
    if (row.end > first && needed > width) break;
    row.size = QSize(needed, std::max(row.size.height(), item.height()));
  }
  return row;
}

int TflowLayout::heightForWidth(int width) const {
  int height = 0;
  for (Trow row{0, {}}; row.end < count();) {
    row = rowAt(row.end, width);
    height += row.size.height() + (row.end < count() ? spacing() : 0);
  }
  return height;
}

QSize TflowLayout::sizeHint() const {
  return rowAt(0, std::numeric_limits<int>::max()).size;
}

QSize TflowLayout::minimumSize() const {
  QSize least;
  for (const auto& item : items_) least = least.expandedTo(item->sizeHint());
  return least;
}

void TflowLayout::setGeometry(const QRect& place) {
  QLayout::setGeometry(place);
  QPoint corner = place.topLeft();
  for (int first = 0; first < count();) {
    const Trow row = rowAt(first, place.width());
    for (; first < row.end; ++first) {
      const QSize size(itemAt(first)->sizeHint().width(), row.size.height());
      itemAt(first)->setGeometry(QRect(corner, size));
      corner.rx() += size.width() + spacing();
    }
    corner = QPoint(place.left(), corner.y() + row.size.height() + spacing());
  }
}
