#pragma once

#include <QDialog>
#include <memory>
#include <string>

namespace Ui {
class TEquipRecImportDup;
}

/// Asks what to do with one imported record whose Device ID is in use: rename or skip it. Both close the dialog with
/// the result OK and are told apart by the skip flag. Esc and the close box skip the record, too, but with the result
/// Cancel: the user wants no more of this.
class TEquipRecImportDup : public QDialog {
  Q_OBJECT

 public:
  /// `deviceId` (Windows-1252) is shown, and replaced by Rename; `skip` is set by Skip. Both are the caller's and must
  /// be there until the dialog is closed.
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
