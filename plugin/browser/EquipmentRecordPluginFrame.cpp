#include "browser/EquipmentRecordPluginFrame.h"

#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QSysInfo>
#include <algorithm>
#include <utility>

#include "browser/gridModel.h"
#include "browser/scanBuffer.h"
#include "browser/shortcuts.h"
#include "editor/eqEditForm.h"
#include "help/helpViewer.h"
#include "support/fitToScreen.h"
#include "support/flowLayout.h"
#include "support/headedGrid.h"
#include "support/log.h"
#include "support/paths.h"
#include "ui_EquipmentRecordPluginFrame.h"

// Construction and destruction of the frame, and its grid. Loading and saving are in frameFiles.cpp, the exports in
// frameExport.cpp, the search in frameSearch.cpp, the other commands in frameCommands.cpp.

namespace {

constexpr const char* layoutSection = "GRID";

/// Where unsaved changes are kept: beside the settings, or else in the user's own folder.
TlistPlaces placesOf(const TframeContext& context) {
  const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
  return {context.workingFolder, {context.programFolder, own.toStdU16String()}};
}

/// Opens the log with what somebody else has to know of this machine.
void beginLog(const TframeContext& context) {
  openLog(context.programFolder);
  const std::string system = QSysInfo::prettyProductName().toStdString() + ", Qt " + qVersion();
  logInfo("Equipment Record Editor " EQREC_VERSION " on " + system + "; program folder " +
          pathText(context.programFolder) + ", working folder " + pathText(context.workingFolder));
}

}  // namespace

TEquipmentRecordPluginFrame::TEquipmentRecordPluginFrame(TframeContext context)
    : context_(std::move(context)),
      ini_(findPath(context_.programFolder, "EquipmentRecord.ini")),
      files_(placesOf(context_)),
      help_(makeHelpViewer(context_.programFolder)),
      model_(std::make_unique<TgridModel>(list_.view(), list_.columns(),
                                          [this](TrecordIndex index) { return list_.attention().reason(index); })),
      ui_(std::make_unique<Ui::TEquipmentRecordPluginFrame>()) {
  beginLog(context_);
  setUpForm();
  setUpGrid();
  setUpKeys();
  // Widths belong to column indices, not to columns. They are read for the full set of columns.
  layout_ = TgridLayout::load(ini_, layoutSection, ui_->tblEqRec->width(), static_cast<int>(allColumns.size()));
  settings_ = TbrowserSettings::load(ini_);
  list_.buildColumns(settings_);
  loadData();
  showAll();
  sort();  // a second time: this restores the table order of ties in a descending order
  ui_->tblEqRec->setColumnWidths(layout_);
  selectRows({0, 0});
}

TEquipmentRecordPluginFrame::~TEquipmentRecordPluginFrame() {
  const std::unique_ptr<QWidget> openEditor(editor_.data());  // destroyed first, because it refers to this frame
  list_.settleAdded();
  if (exitSave_ != TexitSave::done) {
    const TsaveReport report = saveRecords();
    if (report.succeeded || exitSave_ == TexitSave::none) showReport(report);
  }
  saveLayout();
}

void TEquipmentRecordPluginFrame::showEvent(QShowEvent* event) {
  exitSave_ = TexitSave::none;  // shown again after exit, so there may be new work to save
  QWidget::showEvent(event);
}

/// The buttons flow, so the height that the contents need depends on the width.
void TEquipmentRecordPluginFrame::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  setMinimumHeight(std::max(0, layout()->totalMinimumHeightForWidth(width())));
}

void TEquipmentRecordPluginFrame::setUpForm() {
  using Tframe = TEquipmentRecordPluginFrame;
  ui_->setupUi(this);
  ui_->BtnUpload->setText(QStringLiteral("Upload To\nQT484"));
  ui_->BtnExit->setText(QStringLiteral("Return To\nMain Window"));
  for (QWidget* panel : {ui_->pnlCommands, static_cast<QWidget*>(ui_->pnlBottom)}) TflowLayout::replaceLayoutOf(panel);
  connect(ui_->lblAttention, &QLabel::linkActivated, this, &Tframe::lblAttentionClick);
  connect(ui_->btnSearch, &QPushButton::clicked, this, &Tframe::btnSearchClick);
  connect(ui_->btnClearSearch, &QPushButton::clicked, this, &Tframe::btnClearSearchClick);
  connect(ui_->btnAdd, &QPushButton::clicked, this, &Tframe::btnAddClick);
  connect(ui_->btnCopy, &QPushButton::clicked, this, &Tframe::btnCopyClick);
  connect(ui_->btnDelete, &QPushButton::clicked, this, &Tframe::btnDeleteClick);
  connect(ui_->btnUndo, &QPushButton::clicked, this, [this] { goStep(TstepWay::undo); });
  connect(ui_->btnRedo, &QPushButton::clicked, this, [this] { goStep(TstepWay::redo); });
  connect(ui_->btnExport, &QPushButton::clicked, this, &Tframe::btnExportClick);
  connect(ui_->btnOptions, &QPushButton::clicked, this, &Tframe::btnOptionsClick);
  connect(ui_->BtnUpload, &QPushButton::clicked, this, &Tframe::BtnUploadClick);
  connect(ui_->btnPrint, &QPushButton::clicked, this, &Tframe::btnPrintClick);
  connect(ui_->btnImport, &QPushButton::clicked, this, &Tframe::btnImportClick);
  connect(ui_->BtnHelp, &QPushButton::clicked, this, &Tframe::BtnHelpClick);
  connect(ui_->BtnExit, &QPushButton::clicked, this, &Tframe::BtnExitClick);
  for (QLineEdit* edit : {ui_->txtDescSearch, ui_->txtManufacturerSearch, ui_->txtModelSearch, ui_->txtGeneralSearch}) {
    connect(edit, &QLineEdit::returnPressed, this, &Tframe::btnSearchClick);
  }
}

void TEquipmentRecordPluginFrame::setUpGrid() {
  using Tframe = TEquipmentRecordPluginFrame;
  TheadedGrid* grid = ui_->tblEqRec;
  grid->setModel(model_.get());
  grid->setFocus();
  fitToScreen(*this);
  layout()->activate();  // gives the grid the width of the opening size
  connect(grid, &TheadedGrid::headerPressed, this, &Tframe::tblEqRecHeaderPressed);
  connect(grid, &TheadedGrid::cellDoubleClicked, this, &Tframe::tblEqRecDoubleClicked);
  connect(grid, &TheadedGrid::enterReleased, this, &Tframe::tblEqRecEnterReleased);
  connect(grid, &TheadedGrid::deleteReleased, this, &Tframe::btnDeleteClick);
  grid->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(grid, &QWidget::customContextMenuRequested, this, &Tframe::tblEqRecMenu);
  auto* scans = new TscanBuffer(grid);
  connect(scans, &TscanBuffer::typed, this, &Tframe::tblEqRecTyped);
  connect(scans, &TscanBuffer::entered, this, &Tframe::tblEqRecScanned);
  connect(grid->selectionModel(), &QItemSelectionModel::selectionChanged, this, &Tframe::showStatus);
}

void TEquipmentRecordPluginFrame::setUpKeys() {
  auto* shortcuts = new Tshortcuts(this);
  shortcuts->add(Qt::CTRL | Qt::Key_N, ui_->btnAdd);
  shortcuts->add(Qt::CTRL | Qt::Key_D, ui_->btnCopy);
  shortcuts->addOutsideEdits(Qt::CTRL | Qt::Key_Z, ui_->btnUndo);
  shortcuts->addOutsideEdits(Qt::CTRL | Qt::Key_Y, ui_->btnRedo);
  shortcuts->addOutsideEdits(Qt::CTRL | Qt::SHIFT | Qt::Key_Z, ui_->btnRedo);
  shortcuts->add(Qt::CTRL | Qt::Key_E, ui_->btnExport);
  shortcuts->add(Qt::CTRL | Qt::SHIFT | Qt::Key_E, this, [this] { exportAs(); });
  shortcuts->add(Qt::CTRL | Qt::Key_I, ui_->btnImport);
  shortcuts->add(Qt::CTRL | Qt::Key_U, ui_->BtnUpload);
  shortcuts->add(Qt::CTRL | Qt::Key_P, ui_->btnPrint);
  shortcuts->add(Qt::Key_F1, ui_->BtnHelp);
  shortcuts->add(Qt::CTRL | Qt::Key_R, this, [this] { changeRows(); });
  shortcuts->addOutsideEdits(Qt::CTRL | Qt::Key_C, this, [this] { copyRows(); });
  shortcuts->add(Qt::CTRL | Qt::Key_Comma, ui_->btnOptions);
  shortcuts->add(Qt::CTRL | Qt::SHIFT | Qt::Key_F, ui_->btnClearSearch);
  // Not at once: the host may delete the frame, and the shortcut with it.
  shortcuts->add(Qt::CTRL | Qt::Key_W, this,
                 [this] { QMetaObject::invokeMethod(ui_->BtnExit, &QAbstractButton::click, Qt::QueuedConnection); });
  shortcuts->add(Qt::CTRL | Qt::Key_F, this, [this] { goToSearch(); });
}

void TEquipmentRecordPluginFrame::saveLayout() {
  ui_->tblEqRec->readColumnWidths(layout_);
  layout_.save(ini_, layoutSection, list_.columns().count());
}

void TEquipmentRecordPluginFrame::sort() {
  list_.sort(layout_.sort);
  fill();
}

void TEquipmentRecordPluginFrame::fill() {
  model_->refill();
  ui_->tblEqRec->showSort(layout_.sort);
  showSteps();
  showStatus();
}

/// Says on the two buttons what can be undone and redone.
void TEquipmentRecordPluginFrame::showSteps() {
  for (const auto& [button, way] : {std::pair(ui_->btnUndo, TstepWay::undo), {ui_->btnRedo, TstepWay::redo}}) {
    button->setEnabled(list_.steps().can(way));
    button->setToolTip(list_.steps().toolTip(way));
  }
}

/// The rows that a command works on; nothing if no row is selected or the grid shows no record.
std::optional<TrowRange> TEquipmentRecordPluginFrame::selectedRows() const {
  const QItemSelection ranges = ui_->tblEqRec->selectionModel()->selection();
  if (ranges.isEmpty() || list_.view().isEmpty()) return std::nullopt;
  int top = ranges.first().top();
  int bottom = ranges.first().bottom();
  for (const QItemSelectionRange& range : ranges) {
    top = std::min(top, range.top());
    bottom = std::max(bottom, range.bottom());
  }
  return TrowRange{static_cast<std::size_t>(top), static_cast<std::size_t>(bottom)};
}

std::vector<TrecordIndex> TEquipmentRecordPluginFrame::selectedRecords() const {
  const auto rows = selectedRows();
  return rows ? list_.recordsIn(*rows) : std::vector<TrecordIndex>();
}

/// Selects rows, makes the last one current and scrolls it to the bottom of the grid.
void TEquipmentRecordPluginFrame::selectRows(const TrowRange& rows) {
  const QModelIndex first = model_->index(static_cast<int>(rows.top), 0);
  const QModelIndex last = model_->index(static_cast<int>(rows.bottom), model_->columnCount() - 1);
  QItemSelectionModel* selection = ui_->tblEqRec->selectionModel();
  selection->setCurrentIndex(last.siblingAtColumn(0), QItemSelectionModel::NoUpdate);
  selection->select(QItemSelection(first, last), QItemSelectionModel::ClearAndSelect);
  ui_->tblEqRec->scrollTo(last.siblingAtColumn(0), QAbstractItemView::PositionAtBottom);
}

std::size_t TEquipmentRecordPluginFrame::currentRow() const {
  return static_cast<std::size_t>(std::max(0, ui_->tblEqRec->currentIndex().row()));
}

void TEquipmentRecordPluginFrame::setCurrentRow(std::size_t row) {
  const int last = model_->rowCount() - 1;
  const QModelIndex index = model_->index(std::min(static_cast<int>(row), last), 0);
  ui_->tblEqRec->selectionModel()->setCurrentIndex(index,
                                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  ui_->tblEqRec->scrollTo(index);  // also where it is the current one already
}
