#pragma once

#include <QPointer>
#include <QString>
#include <functional>
#include <optional>

#include "print/printSettings.h"
#include "print/reportOutput.h"
#include "print/reportTable.h"

class QPageLayout;
class QPrinter;
class QWidget;
struct TmessageText;

/// Brings one report to a printer or into a PDF file: asks where, shows the progress, and says what went wrong. All
/// windows stand in front of `owner`, which may be destroyed meanwhile; then nothing more is shown.
class TreportDialogs {
 public:
  TreportDialogs(TreportTable table, TprintSettings settings, QWidget* owner);

  /// Both return true when everything is written. False: the user has cancelled, or knows why it failed.
  bool print();
  bool savePdf();

  /// The settings given, with the paper and the folder that the user has chosen meanwhile.
  const TprintSettings& settings() const { return settings_; }

 private:
  using Twrite = std::function<ToutputResult(const Treport&, const TpageStart&)>;

  bool askForPrinter(QPrinter& printer);
  bool chooseLayout(QPrinter& printer);
  bool printOn(QPrinter& printer);
  std::optional<QString> askForPdfPath();
  /// Writes the report with its progress, and shows `failure` when that fails.
  bool write(const Treport& report, const TmessageText& failure, const Twrite& write);

  TreportTable table_;
  TprintSettings settings_;
  QPointer<QWidget> owner_;
};
