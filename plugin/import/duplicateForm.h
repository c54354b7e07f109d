#pragma once

#include <QDialog>
#include <memory>
#include <string>

namespace Ui {
class TEquipRecImportDup;
}

/// Asks whether to rename or skip one imported record whose Device ID is in use. Both close the dialog with the result
/// OK; the skip flag distinguishes them. Esc and the close box also skip the record, but with the result Cancel, which
/// ends the import.
class TEquipRecImportDup : public QDialog {
  Q_OBJECT

 public:
  /// Shows `deviceId` (Windows-1252); Rename replaces it, and Skip sets `skip`. Both belong to the caller and must
  /// outlive the dialog.
  TEquipRecImportDup(std::string& deviceId, bool& skip, QWidget* parent);
  ~TEquipRecImportDup() override;

  void reject() override;

 private:
  void EditDeviceIDChange();
  void BtnRenameClick();
  void BtnSkipClick();

  std::string& deviceId_;
  bool& skip_;
  std::unique_ptr<Ui::TEquipRecImportDup> ui_;
};
