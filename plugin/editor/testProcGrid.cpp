#include "editor/testProcGrid.h"

#include <QHeaderView>
#include <algorithm>

#include "editor/testProcList.h"
#include "support/windows1252.h"

namespace {

constexpr int leastRowHeight = 15;

/// A point smaller than around it, because the list is long.
QFont listFont(QFont font) {
  font.setPointSizeF(std::max(7.0, QFontInfo(font).pointSizeF() - 1));
  return font;
}

}  // namespace

int TtestProcModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rowCount_;
}

int TtestProcModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : TtestProcList::columnCount;
}

QVariant TtestProcModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  const auto row = static_cast<std::size_t>(index.row());
  if (row >= list_.count()) return {};
  return index.column() == TtestProcList::numberColumn ? QString::number(list_.at(row))
                                                       : fromRecordText(list_.titleAt(row));
}

QVariant TtestProcModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  return section == TtestProcList::numberColumn ? QStringLiteral("No.") : QStringLiteral("Title");
}

void TtestProcModel::refill() {
  beginResetModel();
  rowCount_ = static_cast<int>(list_.count());
  endResetModel();
}

TtestProcGrid::TtestProcGrid(QWidget* parent) : TheadedGrid(parent) {
  setSelectionMode(SingleSelection);
  setLeastRowHeight(leastRowHeight);
  setFont(listFont(font()));
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void TtestProcGrid::showList(const TtestProcList& list, const TsortOrder& order) {
  showSort(order);
  setEmptyText(fromRecordText(list.emptyText()));
}

std::optional<std::size_t> TtestProcGrid::markedRow() const {
  const QModelIndexList rows = selectionModel()->selectedRows();
  if (rows.isEmpty()) return std::nullopt;
  return static_cast<std::size_t>(rows.front().row());
}

void TtestProcGrid::mark(std::size_t row) {
  selectRow(static_cast<int>(row));
  scrollTo(model()->index(static_cast<int>(row), 0), PositionAtTop);
}

void TtestProcGrid::resizeEvent(QResizeEvent* event) {
  TheadedGrid::resizeEvent(event);
  const int last = horizontalHeader()->count() - 1;
  const int before = horizontalHeader()->sectionPosition(last);
  setColumnWidth(last, viewport()->width() - before);
}

/// When no row is marked, the first key marks the first row. Without this it would skip that row, which has the focus.
void TtestProcGrid::keyPressEvent(QKeyEvent* event) {
  if (!selectionModel()->hasSelection()) selectionModel()->clearCurrentIndex();
  TheadedGrid::keyPressEvent(event);
}

void TtestProcGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  TheadedGrid::selectionChanged(selected, deselected);
  emit markChanged();
}
