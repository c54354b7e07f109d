#pragma once

#include <QDialog>
#include <memory>

#include "browser/recordList.h"
#include "editor/testProcList.h"
#include "store/columns.h"
#include "support/gridLayout.h"

class TtestProcModel;
namespace Ui {
class TfrmChange;
}

/// Asks for one field, or the test procedure, that several records are to get. The control number is not offered: no
/// two records should share it.
class TfrmChange : public QDialog {
  Q_OBJECT

 public:
  /// The titles must outlive the dialog.
  TfrmChange(std::size_t recordCount, const TtestProcTable& titles, const Tcaptions& captions, QWidget* parent);
  ~TfrmChange() override;

  /// What the user chose. Valid after the dialog was accepted.
  Tassignment assignment() const;

 private:
  void setUpFields(const Tcaptions& captions);
  void showTitles();
  void showButtons();
  bool isTestProc() const;
  void cbFieldChanged();

  TtestProcList list_;
  TsortOrder order_;
  // Destroyed before the list that it displays. The grid, deleted later, then has an empty model of its own.
  std::unique_ptr<TtestProcModel> model_;
  std::unique_ptr<Ui::TfrmChange> ui_;
};
