#include "browser/EquipmentRecordPluginFrame.h"
#include "browser/statusText.h"
#include "support/headedGrid.h"
#include "ui_EquipmentRecordPluginFrame.h"

// The status line, and what stands over an empty grid.

void TEquipmentRecordPluginFrame::say(const QString& event) {
  lastEvent_ = event;
  showStatus();
}

void TEquipmentRecordPluginFrame::showStatus() {
  const auto rows = selectedRows();
  const Tstatus status = {list_.records().count(), list_.view().count(), list_.isSearchInForce(),
                          rows ? rows->count() : 0, lastEvent_};
  ui_->lblStatus->setStatus(statusText(status));
  ui_->tblEqRec->setEmptyText(emptyGridText(status));
  ui_->lblAttention->setLink(attentionText(list_.attention().records().size()));
}
