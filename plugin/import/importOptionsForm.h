#pragma once

#include <QDialog>
#include <memory>
#include <optional>

#include "import/importOptions.h"
#include "import/suggestion.h"
#include "support/iniFile.h"

class TlistOwner;
namespace Ui {
class TEquipRecImportOptions;
}

/// The first step of an import: which file to read, and how. Continue opens the column mapping dialog.
///
/// `exec` returns `Accepted` when an import has added its records to the list; any other result leaves the list as it
/// was. The constructor loads the user's choices, and closing the dialog saves them.
class TEquipRecImportOptions : public QDialog {
  Q_OBJECT

 public:
  /// `list` must outlive the dialog, or be destroyed together with it.
  TEquipRecImportOptions(TlistOwner& list, TiniFile ini, QWidget* parent);
  ~TEquipRecImportOptions() override;

  /// Returns when the dialog is closed or deleted, but not while it is hidden during the second step.
  int exec() override;
  void done(int result) override;

 private:
  void showChoices(const TimportChoices& choices);
  void followChoices();
  void lookAtFile();
  void showSuggestion();
  TimportChoices choices() const;
  TimportOptions options() const;

  void EnableBtnContinue();
  void BtnBrowseClick();
  void BtnContinueClick();
  void btnSuggestionClick();

  TlistOwner& list_;
  TiniFile ini_;
  std::optional<TimportSuggestion> suggestion_;  ///< for the file that is named
  std::unique_ptr<Ui::TEquipRecImportOptions> ui_;
};
