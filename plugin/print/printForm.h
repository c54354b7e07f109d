#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>

#include "print/printSettings.h"
#include "print/reportOutput.h"
#include "print/reportTable.h"
#include "support/iniFile.h"

class QPageLayout;
class QPrinter;
class TcaptionCheckBox;
struct TmessageText;
namespace Ui {
class TEquipRecPrint;
}

/// The print dialog: the user chooses columns and records, and prints them on the screen, a printer or a PDF file.
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
  using Twrite = std::function<ToutputResult(const Treport&, const TpageStart&)>;

  void showCaptions();
  void showSettings(const TprintSettings& settings);
  void enableButtons();
  TprintSettings settings() const;
  TreportTable table() const;

  void btnPreviewClick();
  void btnPrintClick();
  void btnPdfClick();
  bool askForPrinter(QPrinter& printer);
  std::optional<QString> askForPdfPath();
  /// Shows the progress while it writes. Nothing: this dialog was destroyed meanwhile.
  std::optional<ToutputResult> writeWithProgress(const Treport& report, const Twrite& write);
  /// Writes the report with its progress, and shows `failure` when that fails.
  void write(const QPageLayout& paper, const TmessageText& failure, const Twrite& write);

  const TprintJob job_;
  const TiniFile ini_;
  std::unique_ptr<Ui::TEquipRecPrint> ui_;
  std::array<TcaptionCheckBox*, printColumnCount> boxes_{};  ///< of `printColumns`
};
