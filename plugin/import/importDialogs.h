#pragma once

#include <QPointer>

#include "import/columnMapping.h"
#include "import/importOptions.h"
#include "import/importProgressForm.h"
#include "import/importRun.h"
#include "store/listChange.h"
#include "support/messageText.h"
#include "support/modalDialog.h"

class QWidget;

/// One import run with its dialogs: progress, duplicates, and the messages at the end. Logs its outcome and counts.
///
/// Used on the user-interface thread. `run` processes events, so that the host may delete the owner meanwhile, and the
/// list and the dialogs with it. The run then ends without touching them.
class TimportDialogs : private TimportObserver {
 public:
  enum class Tend {
    imported,    ///< the records are in the list, and the user has confirmed it
    cancelled,   ///< nothing was imported
    unreadable,  ///< nothing was imported
    ownerGone    ///< the owner was deleted
  };

  TimportDialogs(TimportOptions options, const TcolumnMapping& mapping, std::size_t columnCount, TlistOwner& list,
                 Tcaptions captions, QWidget* owner);

  Tend run();

 private:
  bool goOn(int percent) override;
  Tduplicate duplicate(std::string& deviceId) override;

  void log(const TimportRun& result) const;
  Tend end(TimportRun& result);
  Tend importAll(TimportRun& result);
  void showDetails(const TimportRun& result) const;
  Tend tell(const TmessageText& message, Tend end);

  TimportOptions options_;
  TcolumnMapping mapping_;
  std::size_t columnCount_;
  TlistOwner& list_;
  Tcaptions captions_;
  QPointer<QWidget> owner_;
  TmodalDialog<TImportProgress> progress_;  ///< gone when the owner is
};
