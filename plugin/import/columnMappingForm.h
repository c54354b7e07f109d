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
class QLabel;
class QLineEdit;
class QStandardItemModel;
class TimportPreviewModel;
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

/// The second step of an import: the user chooses the column of each field, sees the first rows as they would arrive,
/// and starts the import.
///
/// The dialog keeps a copy of the first rows; the import reads the file again. Only a finished import changes the list.
/// If the host deletes the dialog during an import, the import ends and touches nothing more. Back and Cancel store
/// what the user has changed, and nothing else.
class TEquipRecImport : public QDialog {
  Q_OBJECT

 public:
  /// `list` and `result` belong to the caller and must outlive the dialog.
  TEquipRecImport(TimportOptions options, TlistOwner& list, TiniFile ini, TimportResult& result, QWidget* parent);
  ~TEquipRecImport() override;

  void done(int result) override;

  /// False: the file could not be read, so that there is nothing to choose.
  bool hasSample() const { return sample_.has_value(); }

 private:
  /// The controls of one field.
  struct Trow {
    QComboBox* combo = nullptr;
    QLineEdit* preview = nullptr;
    QLabel* heading = nullptr;
  };

  void setUpRow(std::size_t field);
  void nameCustomFields();
  void readHeadings();
  void setUpPreview();
  QStandardItemModel* columnItems();
  QString heading(std::size_t column) const;
  void showColumns();
  void showField(std::size_t field);
  void showPreview();
  TcolumnMapping mapping() const;
  TknownChoice known() const;
  void storeChanges() const;

  void cbChange(std::size_t field);
  void BtnImportClick();
  void BtnBackClick();

  TimportOptions options_;
  TlistOwner& list_;
  TiniFile ini_;
  TimportResult& result_;
  std::optional<TimportSample> sample_;
  Tcaptions captions_;
  TfieldList headings_;   ///< of the columns, as far as there are any
  TcolumnMapping start_;  ///< before the user changes it
  std::unique_ptr<Ui::TEquipRecImport> ui_;
  std::array<Trow, importFieldCount> rows_;
  std::unique_ptr<TimportPreviewModel> preview_;
};
