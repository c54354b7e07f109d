#include "support/flowLayout.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <limits>
#include <utility>

TflowLayout::TflowLayout(QWidget* parent) : QLayout(parent) {
  setContentsMargins(0, 0, 0, 0);
  setSpacing(parent->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, parent));
}

TflowLayout::~TflowLayout() = default;

void TflowLayout::replaceLayoutOf(QWidget* widget) {
  std::unique_ptr<QLayout> old(widget->layout());
  const QMargins margins = old->contentsMargins();
  std::vector<std::unique_ptr<QLayoutItem>> items;
  while (QLayoutItem* item = old->takeAt(0)) items.emplace_back(item);
  old.reset();
  auto* flow = new TflowLayout(widget);
  flow->setContentsMargins(margins);
  flow->items_ = std::move(items);
}

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

QSize TflowLayout::margins() const {
  const QMargins margins = contentsMargins();
  return {margins.left() + margins.right(), margins.top() + margins.bottom()};
}

TflowLayout::Trow TflowLayout::rowAt(int first, int width) const {
  Trow row{first, {0, 0}};
  for (; row.end < count(); ++row.end) {
    if (itemAt(row.end)->isEmpty()) continue;  // a spacer or a hidden widget
    const QSize item = itemAt(row.end)->sizeHint();
    const int needed = row.size.width() + (row.size.isEmpty() ? 0 : spacing()) + item.width();
    if (!row.size.isEmpty() && needed > width) break;
    row.size = QSize(needed, std::max(row.size.height(), item.height()));
  }
  return row;
}

int TflowLayout::heightForWidth(int width) const {
  int height = 0;
  for (Trow row{0, {}}; row.end < count();) {
    row = rowAt(row.end, width - margins().width());
    height += row.size.height() + (row.end < count() ? spacing() : 0);
  }
  return height + margins().height();
}

QSize TflowLayout::sizeHint() const {
  return rowAt(0, std::numeric_limits<int>::max()).size + margins();
}

QSize TflowLayout::minimumSize() const {
  QSize least;
  for (const auto& item : items_) least = least.expandedTo(item->sizeHint());
  return least + margins();
}

void TflowLayout::setGeometry(const QRect& place) {
  QLayout::setGeometry(place);
  QRect rest = place.marginsRemoved(contentsMargins());
  for (int first = 0; first < count();) {
    const Trow row = rowAt(first, rest.width());
    placeRow(first, row, rest);
    rest.setTop(rest.top() + row.size.height() + spacing());
    first = row.end;
  }
}

void TflowLayout::placeRow(int first, const Trow& row, const QRect& place) const {
  int left = place.left();
  for (int i = first; i < row.end; ++i) {
    if (itemAt(i)->spacerItem() != nullptr) left += place.width() - row.size.width();
    if (itemAt(i)->isEmpty()) continue;
    const QSize size(itemAt(i)->sizeHint().width(), row.size.height());
    itemAt(i)->setGeometry(QRect(QPoint(left, place.top()), size));
    left += size.width() + spacing();
  }
}
