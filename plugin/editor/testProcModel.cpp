#include "editor/testProcModel.h"

#include "editor/testProcList.h"
#include "support/windows1252.h"

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
