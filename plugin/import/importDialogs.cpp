#include "import/importDialogs.h"

#include <QCoreApplication>
#include <sstream>
#include <utility>

#include "import/duplicateForm.h"
#include "import/importFile.h"
#include "import/importMessages.h"
#include "import/importReportForm.h"
#include "import/remarkText.h"
#include "support/log.h"
#include "support/messageBox.h"

TimportDialogs::TimportDialogs(TimportOptions options, const TcolumnMapping& mapping, std::size_t columnCount,
                               TlistOwner& list, Tcaptions captions, QWidget* owner)
    : options_(std::move(options)),
      mapping_(mapping),
      columnCount_(columnCount),
      list_(list),
      captions_(std::move(captions)),
      owner_(owner),
      progress_(owner) {}

TimportDialogs::Tend TimportDialogs::run() {
  progress_.show();
  TimportRun result = runImport(options_, mapping_, columnCount_, list_.records(), *this);
  log(result);
  return progress_.isGone() ? Tend::ownerGone : end(result);
}

/// Of the file's name, only the extension is logged.
void TimportDialogs::log(const TimportRun& result) const {
  const char* outcome = result.end == TimportRun::Tend::done        ? "done"
                        : result.end == TimportRun::Tend::cancelled ? "cancelled"
                                                                    : "file not readable";
  std::ostringstream line;
  line << "import " << extensionOf(options_) << ": " << outcome << ", " << result.rows << " lines, "
       << result.records.size() << " records, " << result.duplicates << " duplicates";
  if (result.updated > 0) line << ", " << result.updated << " updated";
  if (result.limitReached) line << ", limit reached";
  if (result.malformed) line << ", malformed lines";
  if (result.truncated) line << ", Device IDs truncated";
  logInfo(line.str());
}

bool TimportDialogs::goOn(int percent) {
  progress_->stepTo(percent);
  QCoreApplication::processEvents();
  return !progress_.isGone() && !progress_->IsCancelled();
}

TimportObserver::Tduplicate TimportDialogs::duplicate(std::string& deviceId) {
  bool skip = false;
  TmodalDialog<TEquipRecImportDup> dialog(deviceId, skip, progress_.get());
  if (dialog.exec() != QDialog::Accepted) return Tduplicate::stop;
  return skip ? Tduplicate::skipped : Tduplicate::renamed;
}

TimportDialogs::Tend TimportDialogs::end(TimportRun& result) {
  switch (result.end) {
    case TimportRun::Tend::cancelled:
      progress_->hide();
      return tell(importCanceled, Tend::cancelled);
    case TimportRun::Tend::unreadable:
      progress_->hide();
      return tell(importNotRead, Tend::unreadable);
    case TimportRun::Tend::done:
      break;
  }
  return importAll(result);
}

/// Adds the records before it shows a message, so that they are kept whatever happens while a box is open.
TimportDialogs::Tend TimportDialogs::importAll(TimportRun& result) {
  const QString summary = importSummary(result);
  const bool isAnything = !result.records.empty() || result.updated > 0;
  if (TlistChange change = changeOf(result, list_.records()); !change.isEmpty()) list_.change(std::move(change));
  const std::initializer_list<std::pair<bool, const TmessageText*>> messages = {
      {result.limitReached, &recordsExceeded},
      {result.malformed, &recordsMalformed},
      {result.truncated, &deviceIdsTruncated}};
  for (const auto& [applies, message] : messages) {
    if (applies && tell(*message, Tend::imported) == Tend::ownerGone) return Tend::ownerGone;
  }
  QObject::connect(progress_.get(), &TImportProgress::detailsWanted, progress_.get(), [&] { showDetails(result); });
  progress_->Finish(summary, isAnything, result.report.count() > 0);
  progress_.exec();
  return progress_.isGone() ? Tend::ownerGone : Tend::imported;
}

void TimportDialogs::showDetails(const TimportRun& result) const {
  TmodalDialog<TfrmImportReport>(result.report, captions_, progress_.get()).exec();
}

/// Shows a message. Returns `end`, or `ownerGone` when the owner was deleted meanwhile.
TimportDialogs::Tend TimportDialogs::tell(const TmessageText& message, Tend end) {
  showMessage(progress_->isVisible() ? progress_.get() : owner_.data(), message);
  return progress_.isGone() ? Tend::ownerGone : end;
}
