#pragma once

#include <QDialog>
#include <memory>
#include <optional>
#include <string>

#include "import/columnMapping.h"
#include "import/importFile.h"
#include "import/importOptions.h"
#include "support/iniFile.h"

class QComboBox;
class QLineEdit;
class TlistOwner;
namespace Ui {
class TEquipRecImport;
}

/// How the column mapping dialog was left.
enum class TimportResult {
  imported = 0,  ///< the records are in the table
  cancelled = 1,
  back = 2  ///< the options are to be chosen anew
};

/// The second step of an import: the user chooses the column of each field, with a preview of the first line, and
/// starts the import.
///
/// Options and a copy of the sample lines are its own; the file is read again by the import. The records are changed
/// by a finished import only. Where the host deletes the dialog while the import runs, nothing is touched any more.
class TEquipRecImport : public QDialog {
  Q_OBJECT

 public:
  /// `result` and the records are the caller's and must be there until the dialog is closed.
  TEquipRecImport(TimportOptions options, TlistOwner& list, TiniFile ini, TimportResult& result, QWidget* parent);
  ~TEquipRecImport() override;

  /// False: the file could not be read, and there is nothing to be chosen.
  bool hasSample() const { return sample_.has_value(); }

 private:
  struct Trow {
    QComboBox* combo;
    QLineEdit* preview;
  };

  void setUpForm();
  void nameCustomFields();
  void showColumns();
  TcolumnMapping startMapping() const;
  TcolumnMapping mapping() const;
  int columnCount() const { return static_cast<int>(fields_.size()) - 1; }

  void cbChange(std::size_t field);
  void BtnImportClick();
  void BtnBackClick();

  TimportOptions options_;
  TlistOwner& list_;
  TiniFile ini_;
  TimportResult& result_;
  std::optional<TimportSample> sample_;
  TfieldList fields_;  ///< of the sample's line
  std::array<std::string, 3> captions_;
  std::unique_ptr<Ui::TEquipRecImport> ui_;
  std::array<Trow, importFieldCount> rows_;
};
