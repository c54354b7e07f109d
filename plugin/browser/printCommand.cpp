#include <QPointer>
#include <memory>

#include "browser/EquipmentRecordPluginFrame.h"
#include "browser/messages.h"
#include "print/printForm.h"
#include "support/messageBox.h"

// What the frame's Print button does.

namespace {

std::vector<TrecordIndex> recordsOf(const Tview& view, const TrowRange& rows) {
  std::vector<TrecordIndex> records;
  for (std::size_t row = rows.top; row <= rows.bottom; ++row) records.push_back(view.at(row));
  return records;
}

}  // namespace

void TEquipmentRecordPluginFrame::btnPrintClick() {
  const Tview& view = list_.view();
  if (view.isEmpty()) {
    showMessage(this, nothingToPrint);
    return;
  }
  const auto rows = selectedRows();
  TprintJob job{list_.records(), list_.titles(), recordsOf(view, {0, view.count() - 1}),
                rows ? recordsOf(view, *rows) : std::vector<TrecordIndex>(), settings_.customNames};
  const QPointer<TEquipRecPrint> form = new TEquipRecPrint(std::move(job), ini_, this);
  form->exec();
  const std::unique_ptr<TEquipRecPrint> closed(form.data());
}
