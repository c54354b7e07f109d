#pragma once

#include <QDialog>
#include <memory>

#include "import/importRemarks.h"
#include "store/columns.h"

class TimportReportModel;
namespace Ui {
class TfrmImportReport;
}

/// Shows what an import has to say about the rows of the file. Ctrl+C copies the selected rows, or all if none is
/// selected, as text with tabs; Save writes all as comma-separated values (RFC 4180, UTF-8 with a mark).
class TfrmImportReport : public QDialog {
  Q_OBJECT

 public:
  /// The report must outlive the dialog.
  TfrmImportReport(const TimportReport& report, Tcaptions captions, QWidget* parent);
  ~TfrmImportReport() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void copyRows() const;
  void btnSaveClick();

  std::unique_ptr<TimportReportModel> model_;
  std::unique_ptr<Ui::TfrmImportReport> ui_;
};
