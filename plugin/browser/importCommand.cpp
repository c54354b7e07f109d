#include <QPointer>
#include <memory>

#include "browser/EquipmentRecordPluginFrame.h"
#include "import/importOptionsForm.h"
#include "support/sortedGrid.h"
#include "ui_EquipmentRecordPluginFrame.h"

// What the frame's button Import does. Afterwards all records are shown, so that the new ones are among them whatever
// was searched for before.

void TEquipmentRecordPluginFrame::btnImportClick() {
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  const QPointer<TEquipRecImportOptions> form = new TEquipRecImportOptions(*this, ini_, this);
  const int result = form->exec();
  if (self.isNull()) return;
  const std::unique_ptr<TEquipRecImportOptions> closed(form.data());
  if (result != QDialog::Accepted) return;
  btnClearSearchClick();
  setCurrentRow(currentRow());
  ui_->tblEqRec->setFocus();
}
