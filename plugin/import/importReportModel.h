#pragma once

#include <QAbstractTableModel>

#include "import/importRemarks.h"

/// The remarks of an import as a table: row in the file, Device ID, remark. Texts are made on demand.
class TimportReportModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The report must outlive the model.
  TimportReportModel(const TimportReport& report, Tcaptions captions);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 3; }
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  const TimportReport& report_;
  Tcaptions captions_;
};
