#pragma once

#include <QPointer>

#include "import/columnMapping.h"
#include "import/importOptions.h"
#include "import/importRun.h"
#include "import/importProgressForm.h"
#include "store/listChange.h"
#include "support/messages.h"
#include "support/modalDialog.h"

class QWidget;

/// One import run with its dialogs: progress, duplicates, and what is to be said at the end.
///
/// Lives on the user-interface thread for the time of `run`, which keeps the event loop running. The host may delete
/// the owner's window meanwhile, and table and dialogs with it; nothing of them is touched any more then.
class TimportDialogs : private TimportObserver {
 public:
  enum class Tend {
    imported,    ///< the records are in the table, and the user has seen it
    cancelled,   ///< nothing was imported
    unreadable,  ///< nothing was imported
    ownerGone    ///< the owner was deleted
  };

  TimportDialogs(TimportOptions options, const TcolumnMapping& mapping, std::size_t columnCount, TlistOwner& list,
                 QWidget* owner);

  Tend run();

 private:
  bool goOn(int percent) override;
  Tduplicate duplicate(std::string& deviceId) override;

  Tend end(TimportRun& result);
  Tend importAll(TimportRun& result);
  Tend tell(const TmessageText& message, Tend end);

  TimportOptions options_;
  TcolumnMapping mapping_;
  std::size_t columnCount_;
  TlistOwner& list_;
  QPointer<QWidget> owner_;
  TmodalDialog<TImportProgress> progress_;  ///< gone when the owner is
};
