#include "upload/uploadCommand.h"

#include <QPointer>

#include "browser/EquipmentRecordPluginFrame.h"
#include "browser/messages.h"
#include "support/messageBox.h"
#include "support/paths.h"

// The Upload button.

void TEquipmentRecordPluginFrame::BtnUploadClick() {
  if (uploading_) return;
  if (list_.view().isEmpty()) {
    showMessage(this, noRecordsToUpload);
    return;
  }
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  uploading_ = true;
  uploadRecords(this, list_.records(), TiniFile(findPath(context_.programFolder, "QT484pc.ini")));
  if (!self.isNull()) uploading_ = false;
}
