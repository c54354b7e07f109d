#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QPointer>
#include <QPushButton>

#include "browser/EquipmentRecordPluginFrame.h"
#include "browser/changeForm.h"
#include "browser/rowsText.h"
#include "browser/statusText.h"
#include "editor/eqEditForm.h"
#include "support/headedGrid.h"
#include "support/modalDialog.h"
#include "ui_EquipmentRecordPluginFrame.h"

// The grid's context menu, and the commands on several rows that have no button.

void TEquipmentRecordPluginFrame::tblEqRecMenu(const QPoint& position) {
  auto* menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("mnuRows"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto rows = selectedRows();
  const auto add = [menu](const char* name, const char* text, bool isEnabled, const auto& command) {
    QAction* action = menu->addAction(QString::fromLatin1(text), command);
    action->setObjectName(QString::fromLatin1(name));
    action->setEnabled(isEnabled);
  };
  // A tab stands before the keys: as shortcuts of the entries they would compete with those of the window.
  add("mnuNew", "New\tCtrl+N", true, [this] { ui_->btnAdd->click(); });
  add("mnuEdit", "Edit\tEnter", rows && rows->count() == 1, [this] { tblEqRecEnterReleased(); });
  add("mnuChange", "Change...\tCtrl+R", rows.has_value(), [this] { changeRows(); });
  add("mnuCopy", "Copy\tCtrl+D", rows.has_value(), [this] { ui_->btnCopy->click(); });
  add("mnuDelete", "Delete\tDel", rows.has_value(), [this] { ui_->btnDelete->click(); });
  menu->addSeparator();
  add("mnuUndo", "Undo\tCtrl+Z", list_.steps().can(TstepWay::undo), [this] { ui_->btnUndo->click(); });
  menu->addSeparator();
  add("mnuCopyRows", "Copy Rows\tCtrl+C", rows.has_value(), [this] { copyRows(); });
  add("mnuExportAs", "Export As...\tCtrl+Shift+E", !list_.view().isEmpty(), [this] { exportAs(); });
  menu->popup(ui_->tblEqRec->viewport()->mapToGlobal(position));
}

void TEquipmentRecordPluginFrame::changeRows() {
  const auto rows = selectedRows();
  if (!rows || editor_) return;
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  TmodalDialog<TfrmChange> form(rows->count(), list_.titles(), settings_.captions, this);
  if (form.exec() != QDialog::Accepted || self.isNull()) return;
  const std::size_t changed = list_.assign(*rows, form->assignment());
  fill();
  ui_->tblEqRec->setFocus();
  say(recordCountText(changed) + QStringLiteral(" changed"));
}

void TEquipmentRecordPluginFrame::copyRows() {
  const auto rows = selectedRows();
  if (!rows) return;
  QGuiApplication::clipboard()->setText(rowsText(list_, *rows));
  say(rows->count() == 1 ? QStringLiteral("1 row is on the clipboard")
                         : QStringLiteral("%1 rows are on the clipboard").arg(rows->count()));
}
