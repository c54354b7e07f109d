#include "import/importPreviewModel.h"

#include <QColor>
#include <algorithm>
#include <utility>

#include "import/remarkText.h"
#include "support/plainToolTip.h"
#include "support/windows1252.h"

TimportPreviewModel::TimportPreviewModel(const TimportSample& sample, const TequipRecTable& records, Tcaptions captions)
    : sample_(sample), known_(records), captions_(std::move(captions)) {}

void TimportPreviewModel::show(const TcolumnMapping& mapping, TknownChoice known) {
  beginResetModel();
  fields_.clear();
  for (std::size_t field = 0; field < importFieldCount; ++field) {
    if (mapping.columns[field] > 0) fields_.push_back(field);
  }
  rows_.clear();
  ids_.clear();
  for (const TsampleRow& sampleRow : sample_.rows) {
    const TimportedRow row = recordInRow(sampleRow.row(), mapping, sample_.columnCount());
    rows_.push_back(cellsOf(row));
    const QString text = knownText(row, ids_.size(), known);
    if (!text.isEmpty() && !fields_.empty()) rows_.back().front().remarks << text;
    ids_.emplace_back(row.record.text(fieldControlNum));
  }
  endResetModel();
}

TimportPreviewModel::Tcells TimportPreviewModel::cellsOf(const TimportedRow& row) const {
  Tcells cells;
  for (const std::size_t field : fields_) {
    const QString text = field == importTestProc ? QString::number(row.record.testProc())
                                                 : fromRecordText(row.record.text(static_cast<int>(field)));
    cells.push_back({row.hasDeviceId() ? text : QString(), {}});
  }
  if (cells.empty()) return cells;
  for (const TimportFinding& finding : row.findings) cellFor(finding, cells).remarks << remarkText(finding, captions_);
  return cells;
}

TimportPreviewModel::Tcell& TimportPreviewModel::cellFor(const TimportFinding& finding, Tcells& cells) const {
  const auto found = std::find(fields_.begin(), fields_.end(), finding.field);
  return found == fields_.end() ? cells.front() : cells[static_cast<std::size_t>(found - fields_.begin())];
}

/// What becomes of a row whose Device ID is in use, by the list or by a row before it.
QString TimportPreviewModel::knownText(const TimportedRow& row, std::size_t count, TknownChoice known) const {
  const std::string deviceId = row.record.text(fieldControlNum);
  if (deviceId.empty()) return {};
  const TknownDevices::Tdevice* device = known_.find(deviceId);
  const auto end = ids_.begin() + static_cast<std::ptrdiff_t>(count);
  if (device == nullptr && std::find(ids_.begin(), end, deviceId) == end) return {};
  if (known == TknownChoice::skip) return remarkText({TremarkKind::knownSkipped, importFieldCount, {}, {}}, captions_);
  if (known == TknownChoice::ask) return QStringLiteral("This Device ID is in use. You will be asked.");
  const bool isSeveral = device != nullptr && device->isSeveral;
  return isSeveral ? remarkText({TremarkKind::knownSeveral, importFieldCount, {}, {}}, captions_)
                   : QStringLiteral("This row updates the record that has this Device ID.");
}

int TimportPreviewModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int TimportPreviewModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(fields_.size());
}

QVariant TimportPreviewModel::data(const QModelIndex& index, int role) const {
  const Tcell& cell = rows_.at(static_cast<std::size_t>(index.row())).at(static_cast<std::size_t>(index.column()));
  const QString remarks = plainToolTip(cell.remarks.join(u'\n'));
  switch (role) {
    case Qt::DisplayRole:
      return cell.text;
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return remarks.isEmpty() ? QVariant() : QVariant(remarks);
    case Qt::BackgroundRole:
      return remarks.isEmpty() ? QVariant() : QVariant(QColor(255, 236, 160));
    case Qt::ForegroundRole:
      return remarks.isEmpty() ? QVariant() : QVariant(QColor(Qt::black));
    default:
      return {};
  }
}

QVariant TimportPreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  const auto place = static_cast<std::size_t>(section);
  if (orientation == Qt::Horizontal) return importFieldName(fields_.at(place), captions_);
  return static_cast<int>(sample_.rows.at(place).number());
}
