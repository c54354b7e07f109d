#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "store/datastructs.h"

class TcolumnLayout;
class Tview;

/// The view and its columns as a model for the grid. Cell texts are made on demand, so that a refill takes as long for
/// ten rows as for 18432. An empty view has one row of empty cells.
class TgridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// What a row's tooltip says of its record.
  using TremarkOf = std::function<QString(TrecordIndex index)>;

  /// View and columns must outlive the model.
  TgridModel(const Tview& view, const TcolumnLayout& columns, TremarkOf remarkOf);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// Updates the model from view and columns. Rows and columns are added and removed at the end, so that a selection
  /// stays on the rows that still exist.
  void refill();

 private:
  void resizeRows(int count);
  void resizeColumns(int count);

  const Tview& view_;
  const TcolumnLayout& columns_;
  TremarkOf remarkOf_;
  int rowCount_ = 0;
  int columnCount_ = 0;
};
