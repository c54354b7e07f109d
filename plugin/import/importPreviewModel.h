#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

#include "import/columnMapping.h"
#include "import/importFile.h"
#include "import/importLine.h"
#include "import/knownDevices.h"

/// The first rows of a file as they would arrive: a column for each mapped field, the row's number in the file beside
/// it. A cell that something is to be said about is marked and has it as its tooltip; what is said about the row as a
/// whole stands at the Device ID.
class TimportPreviewModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The sample and the records must outlive the model.
  TimportPreviewModel(const TimportSample& sample, const TequipRecTable& records, Tcaptions captions);

  void show(const TcolumnMapping& mapping, TknownChoice known);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Tcell {
    QString text;
    QStringList remarks;
  };
  using Tcells = std::vector<Tcell>;

  Tcells cellsOf(const TimportedRow& row) const;
  Tcell& cellFor(const TimportFinding& finding, Tcells& cells) const;
  QString knownText(const TimportedRow& row, std::size_t count, TknownChoice known) const;

  const TimportSample& sample_;
  TknownDevices known_;
  Tcaptions captions_;
  std::vector<std::size_t> fields_;  ///< of the columns
  std::vector<std::string> ids_;     ///< of the rows
  std::vector<Tcells> rows_;
};
