#include "browser/EquipmentRecordPluginFrame.h"

#include <QHeaderView>
#include <QPointer>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "browser/gridModel.h"
#include "browser/recordGrid.h"
#include "support/messageBox.h"
#include "support/paths.h"
#include "ui_EquipmentRecordPluginFrame.h"

/// The room is a static library, whose resources nobody registers unasked. (The macro does not work in a namespace.)
static void registerResources() {
  Q_INIT_RESOURCE(resources);
}

namespace {

constexpr const char* layoutSection = "GRID";

/// No column may be stored so wide that the others can no longer be reached.
constexpr int widestColumn = 4096;

}  // namespace

TEquipmentRecordPluginFrame::TEquipmentRecordPluginFrame(TframeContext context)
    : context_(std::move(context)),
      ini_(findPath(context_.programFolder, "EquipmentRecord.ini")),
      files_(context_.workingFolder),
      view_(records_, titles_),
      model_(std::make_unique<TgridModel>(view_, columns_)),
      ui_(std::make_unique<Ui::TEquipmentRecordPluginFrame>()) {
  registerResources();
  setUpForm();
  loadLayout();
  loadSettings();
  loadData();
  clearSearch();
  sort();  // once more: ties of a descending order are thereby back in table order
  applyColumnWidths();
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
  connect(ui_->tblEqRec, &TrecordGrid::headerPressed, this, &TEquipmentRecordPluginFrame::tblEqRecHeaderPressed);
  connect(ui_->BtnExit, &QPushButton::clicked, this, &TEquipmentRecordPluginFrame::BtnExitClick);
}

/// Reads the layout for the grid's full set of columns: widths belong to column indices, whatever comes to stand there.
void TEquipmentRecordPluginFrame::loadLayout() {
  layout_ = TgridLayout::load(ini_, layoutSection, ui_->tblEqRec->width(), TgridLayout::mostColumns);
  sortOrder_ = {layout_.sortColumn, layout_.sortAscending};
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
  const TcolumnId column = sortOrder_.columnIn(columns_);
  view_.sort(column, sortOrder_.ascending);
  fill();
}

void TEquipmentRecordPluginFrame::fill() {
  model_->refill();
  ui_->tblEqRec->showSort(sortOrder_.column, sortOrder_.ascending);
}

void TEquipmentRecordPluginFrame::applyColumnWidths() {
  for (int column = 0; column < columns_.count(); ++column) {
    const int least = ui_->tblEqRec->horizontalHeader()->minimumSectionSize();
    const int width = layout_.widths[static_cast<std::size_t>(column)];
    ui_->tblEqRec->setColumnWidth(column, std::clamp(width, least, widestColumn));
  }
}

void TEquipmentRecordPluginFrame::saveRecords() {
  if (const auto message = files_.save(records_)) showMessage(nullptr, *message);
}

void TEquipmentRecordPluginFrame::saveLayout() {
  for (int column = 0; column < columns_.count(); ++column) {
    layout_.widths[static_cast<std::size_t>(column)] = ui_->tblEqRec->columnWidth(column);
  }
  layout_.sortColumn = sortOrder_.column;
  layout_.sortAscending = sortOrder_.ascending;
  layout_.save(ini_, layoutSection, columns_.count());
}

void TEquipmentRecordPluginFrame::tblEqRecHeaderPressed(int column) {
  sortOrder_.click(column);
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
