#pragma once

#include <QDialog>
#include <array>
#include <memory>
#include <string>

#include "print/printSettings.h"
#include "print/reportTable.h"
#include "support/iniFile.h"

class TcaptionCheckBox;
class TreportDialogs;
namespace Ui {
class TEquipRecPrint;
}

/// The print dialog: the user chooses columns, records and paper, and prints them on the screen, a printer or a PDF
/// file.
///
/// Print and Save as PDF close the dialog when everything is printed. It stays open when the user cancels or printing
/// fails. The constructor reads the choices from the settings, and closing the dialog in any way writes them.
class TEquipRecPrint : public QDialog {
  Q_OBJECT

 public:
  TEquipRecPrint(TprintJob job, TiniFile ini, QWidget* parent);
  ~TEquipRecPrint() override;

  void done(int result) override;

 private:
  void showCaptions();
  void showSettings(const TprintSettings& settings);
  void enableButtons();
  TprintSettings settings() const;
  TreportTable table() const;

  TreportDialogs dialogs(QWidget* owner) const;

  void btnPreviewClick();
  /// Both let the user print in front of `from`, this dialog or its preview, and accept `from` when that is done.
  void print(QDialog& from);
  void savePdf(QDialog& from);
  void finish(QDialog& from, const TprintSettings& chosen);

  const TprintJob job_;
  const TiniFile ini_;
  std::unique_ptr<Ui::TEquipRecPrint> ui_;
  std::array<TcaptionCheckBox*, printColumnCount> boxes_{};  ///< of `printColumns`
  std::string pdfFolder_;
};
