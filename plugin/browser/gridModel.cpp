#include "browser/gridModel.h"

#include <algorithm>
#include <utility>

#include "browser/columnLayout.h"
#include "browser/view.h"
#include "support/windows1252.h"

TgridModel::TgridModel(const Tview& view, const TcolumnLayout& columns, TremarkOf remarkOf)
    : view_(view), columns_(columns), remarkOf_(std::move(remarkOf)) {}

int TgridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rowCount_;
}

int TgridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columnCount_;
}

QVariant TgridModel::data(const QModelIndex& index, int role) const {
  if ((role != Qt::DisplayRole && role != Qt::ToolTipRole) || !index.isValid()) return {};
  const auto position = static_cast<std::size_t>(index.row());
  if (position >= view_.count()) return QString();
  if (role == Qt::ToolTipRole) return remarkOf_(view_.at(position));
  return fromRecordText(view_.cellText(position, columns_.id(index.column())));
}

QVariant TgridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  return fromRecordText(columns_.header(columns_.id(section)));
}

void TgridModel::refill() {
  resizeRows(std::max(1, static_cast<int>(view_.count())));
  resizeColumns(columns_.count());
  emit dataChanged(index(0, 0), index(rowCount_ - 1, columnCount_ - 1));
  emit headerDataChanged(Qt::Horizontal, 0, columnCount_ - 1);
}

void TgridModel::resizeRows(int count) {
  if (count > rowCount_) {
    beginInsertRows({}, rowCount_, count - 1);
    rowCount_ = count;
    endInsertRows();
  } else if (count < rowCount_) {
    beginRemoveRows({}, count, rowCount_ - 1);
    rowCount_ = count;
    endRemoveRows();
  }
}

void TgridModel::resizeColumns(int count) {
  if (count > columnCount_) {
    beginInsertColumns({}, columnCount_, count - 1);
    columnCount_ = count;
    endInsertColumns();
  } else if (count < columnCount_) {
    beginRemoveColumns({}, count, columnCount_ - 1);
    columnCount_ = count;
    endRemoveColumns();
  }
}
