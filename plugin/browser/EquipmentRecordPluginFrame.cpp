#include "browser/EquipmentRecordPluginFrame.h"

#include <QPointer>
#include <QPushButton>
#include <utility>

#include "browser/gridModel.h"
#include "support/messageBox.h"
#include "support/paths.h"
#include "support/sortedGrid.h"
#include "ui_EquipmentRecordPluginFrame.h"

namespace {

constexpr const char* layoutSection = "GRID";

}  // namespace

TEquipmentRecordPluginFrame::TEquipmentRecordPluginFrame(TframeContext context)
    : context_(std::move(context)),
      ini_(findPath(context_.programFolder, "EquipmentRecord.ini")),
      files_(context_.workingFolder),
      view_(records_, titles_),
      model_(std::make_unique<TgridModel>(view_, columns_)),
      ui_(std::make_unique<Ui::TEquipmentRecordPluginFrame>()) {
  setUpForm();
  loadLayout();
  loadSettings();
  loadData();
  clearSearch();
  sort();  // once more: ties of a descending order are thereby back in table order
  ui_->tblEqRec->setColumnWidths(layout_);
}

TEquipmentRecordPluginFrame::~TEquipmentRecordPluginFrame() {
  if (!savedByExit_) saveRecords();
  saveLayout();
}

void TEquipmentRecordPluginFrame::showEvent(QShowEvent* event) {
  savedByExit_ = false;  // shown again after exit: there may be new work to save
  QWidget::showEvent(event);
}

void TEquipmentRecordPluginFrame::setUpForm() {
  ui_->setupUi(this);
  ui_->BtnUpload->setText(QStringLiteral("Upload To\nQT484"));
  ui_->BtnExit->setText(QStringLiteral("Return To\nMain Window"));
  ui_->tblEqRec->setModel(model_.get());
  ui_->tblEqRec->setFocus();
  layout()->activate();  // from here on the grid has the width of the opening size
  connect(ui_->tblEqRec, &TsortedGrid::headerPressed, this, &TEquipmentRecordPluginFrame::tblEqRecHeaderPressed);
  connect(ui_->BtnExit, &QPushButton::clicked, this, &TEquipmentRecordPluginFrame::BtnExitClick);
}

/// Reads the layout for the grid's full set of columns: widths belong to column indices, whatever comes to stand there.
void TEquipmentRecordPluginFrame::loadLayout() {
  layout_ = TgridLayout::load(ini_, layoutSection, ui_->tblEqRec->width(), TgridLayout::mostColumns);
}

void TEquipmentRecordPluginFrame::loadSettings() {
  settings_ = TbrowserSettings::load(ini_);
  columns_.build(settings_);
}

void TEquipmentRecordPluginFrame::loadData() {
  if (const auto message = files_.load(records_)) showMessage(nullptr, *message);
  const auto loaded =
      loadTestProcTable(diskFileSystem(), findPath(context_.workingFolder, "Data/testProc.asq"), titles_);
  if (loaded == TtestProcLoad::damaged) showMessage(nullptr, corruptTestProcList);
}

void TEquipmentRecordPluginFrame::clearSearch() {
  view_.showAll();
  sort();
}

void TEquipmentRecordPluginFrame::sort() {
  const TcolumnId column = sortColumnId(layout_.sort, columns_);
  view_.sort(column, layout_.sort.ascending);
  fill();
}

void TEquipmentRecordPluginFrame::fill() {
  model_->refill();
  ui_->tblEqRec->showSort(layout_.sort);
}

void TEquipmentRecordPluginFrame::saveRecords() {
  if (const auto message = files_.save(records_)) showMessage(nullptr, *message);
}

void TEquipmentRecordPluginFrame::saveLayout() {
  ui_->tblEqRec->readColumnWidths(layout_);
  layout_.save(ini_, layoutSection, columns_.count());
}

void TEquipmentRecordPluginFrame::tblEqRecHeaderPressed(int column) {
  layout_.sort.press(column);
  sort();
}

void TEquipmentRecordPluginFrame::BtnExitClick() {
  const QPointer<TEquipmentRecordPluginFrame> self(this);
  hide();
  saveRecords();
  if (self.isNull()) return;  // deleted while the message box was open
  savedByExit_ = true;
  saveLayout();
  const auto returnToMainWindow = context_.returnToMainWindow;
  if (returnToMainWindow) returnToMainWindow();
  // The host may have deleted this frame: nothing may follow.
}
