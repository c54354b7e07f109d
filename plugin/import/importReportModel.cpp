#include "import/importReportModel.h"

#include <array>
#include <utility>

#include "import/remarkText.h"
#include "support/plainToolTip.h"
#include "support/windows1252.h"

TimportReportModel::TimportReportModel(const TimportReport& report, Tcaptions captions)
    : report_(report), captions_(std::move(captions)) {}

int TimportReportModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(report_.kept().size());
}

QVariant TimportReportModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const TimportRemark& remark = report_.kept().at(static_cast<std::size_t>(index.row()));
  if (index.column() == 0) return role == Qt::DisplayRole ? QString::number(remark.row) : QVariant();
  const QString text = index.column() == 1 ? fromRecordText(remark.deviceId) : remarkText(remark.finding, captions_);
  return role == Qt::DisplayRole ? text : plainToolTip(text);
}

QVariant TimportReportModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  const std::array<const char*, 3> headings = {"Row", "Device ID", "Remark"};
  return QString::fromLatin1(headings.at(static_cast<std::size_t>(section)));
}
