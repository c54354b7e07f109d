#pragma once

#include <QDialog>
#include <memory>

#include "import/importOptions.h"
#include "support/iniFile.h"

class TlistOwner;
namespace Ui {
class TEquipRecImportOptions;
}

/// The first step of an import: which file, and how its lines are read. Continue leads to the column mapping dialog.
///
/// Shown by `exec`, whose result is `Accepted` where an import has run and the records are in the table; anything else
/// leaves the table as it was. The choices are read when the dialog is made, and stored whenever it closes.
class TEquipRecImportOptions : public QDialog {
  Q_OBJECT

 public:
  /// The records are the caller's and must be there until the dialog is closed or deleted.
  TEquipRecImportOptions(TlistOwner& list, TiniFile ini, QWidget* parent);
  ~TEquipRecImportOptions() override;

  /// Ends when the dialog is closed or deleted, but not while it is merely hidden behind the second step.
  int exec() override;
  void done(int result) override;

 private:
  void showChoices();
  TimportChoices choices() const;
  TimportOptions options() const;

  void EnableBtnContinue();
  void BtnBrowseClick();
  void BtnContinueClick();

  TlistOwner& list_;
  TiniFile ini_;
  std::unique_ptr<Ui::TEquipRecImportOptions> ui_;
};
