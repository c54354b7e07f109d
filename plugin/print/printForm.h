#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>

#include "print/printSettings.h"
#include "print/reportOutput.h"
#include "print/reportTable.h"
#include "support/iniFile.h"

class QCheckBox;
class QPageLayout;
class QPrinter;
struct TmessageText;
namespace Ui {
class TEquipRecPrint;
}

/// The print dialog: which fields of which records are printed, and on what: screen, printer or PDF file.
///
/// Print and Save as PDF close it when everything is printed; when that was cancelled or has failed it stays. The
/// choices are read from the settings when it is made and written when it is closed, in any way.
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
  std::array<QCheckBox*, printFieldCount> boxes_;  ///< by `TprintField`
};
