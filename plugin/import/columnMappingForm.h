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

/// How the user left the column mapping dialog.
enum class TimportResult {
  imported = 0,  ///< the records are in the list
  cancelled = 1,
  back = 2  ///< to choose other options
};

/// The second step of an import: the user chooses the column of each field, sees a preview of the first line, and
/// starts the import.
///
/// The dialog keeps a copy of the sample lines; the import reads the file again. Only a finished import changes the
/// list. If the host deletes the dialog during an import, the import ends and touches nothing more.
class TEquipRecImport : public QDialog {
  Q_OBJECT

 public:
  /// `list` and `result` belong to the caller and must outlive the dialog.
  TEquipRecImport(TimportOptions options, TlistOwner& list, TiniFile ini, TimportResult& result, QWidget* parent);
  ~TEquipRecImport() override;

  /// False: the file could not be read, so that there is nothing to choose.
  bool hasSample() const { return sample_.has_value(); }

 private:
  /// The controls of one field.
  struct Trow {
    QComboBox* combo = nullptr;
    QLineEdit* preview = nullptr;
  };

  void setUpForm();
  void setUpRow(std::size_t field);
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
  Tcaptions captions_;
  std::unique_ptr<Ui::TEquipRecImport> ui_;
  std::array<Trow, importFieldCount> rows_;
};
