#pragma once

#include <QAbstractTableModel>

class TtestProcList;

/// The list of test procedures as the editor's grid shows it: number and title.
class TtestProcModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The list must outlive the model.
  explicit TtestProcModel(const TtestProcList& list) : list_(list) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// Takes over what the list holds now. Nothing is selected afterwards.
  void refill();

 private:
  const TtestProcList& list_;
  int rowCount_ = 0;
};
