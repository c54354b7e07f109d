#include "editor/eqEditForm.h"

#include <QKeyEvent>
#include <QScreen>
#include <QShowEvent>
#include <utility>

#include "editor/editorHost.h"
#include "editor/testProcGrid.h"
#include "store/columns.h"
#include "support/formControl.h"
#include "support/recordText.h"
#include "support/windows1252.h"
#include "ui_eqEditForm.h"

/// A static library's resources must be registered by hand. (The macro does not work in a namespace.)
static void registerPictures() {
  Q_INIT_RESOURCE(editorPictures);
}

namespace {

constexpr QSize designedSize(534, 445);
constexpr const char* placeSection = "EQEDITOR";
constexpr const char* layoutSection = "EDITGRID";

}  // namespace

TfrmEqRecEditor::TfrmEqRecEditor(TeditorHost& host, TiniFile ini, QWidget* parent)
    : QDialog(parent),
      host_(host),
      ini_(std::move(ini)),
      list_(host.testProcs()),
      model_(std::make_unique<TtestProcModel>(list_)),
      ui_(std::make_unique<Ui::TfrmEqRecEditor>()) {
  setUpForm();
  nameCustomFields();
  fixSize();
  place();
  loadLayout();
  list_.showAll();
  refillSorted();
  connectControls();
  setUpRemarks();
}

/// Does not touch the host, which may be gone already.
TfrmEqRecEditor::~TfrmEqRecEditor() {
  ui_->lstTestProc->disconnect(this);
  ui_->lstTestProc->readColumnWidths(layout_);
  ini_.write(placeSection, {{"TOP", std::to_string(y())}, {"LEFT", std::to_string(x())}});
  layout_.save(ini_, layoutSection, TtestProcList::columnCount);
}

void TfrmEqRecEditor::setUpForm() {
  registerPictures();
  ui_->setupUi(this);
  setWindowFlags(windowFlags() | Qt::WindowStaysOnTopHint | Qt::MSWindowsFixedSizeDialogHint);
  forEachBox([](const TtextField& field, auto& box) { box.setMaxLength(static_cast<int>(field.size) - 1); });
  ui_->lstTestProc->setModel(model_.get());
  QPalette readOnly = ui_->txtTestProcedure->palette();
  readOnly.setColor(QPalette::Base, readOnly.color(QPalette::Window));
  ui_->txtTestProcedure->setPalette(readOnly);
  ui_->txtControlNum->setFocus();
}

/// Gives the dialog its designed size, or more when a large font or long captions need it.
void TfrmEqRecEditor::fixSize() {
  setFixedSize(minimumSizeHint().expandedTo(designedSize));
  layout()->activate();  // gives the list its width
}

void TfrmEqRecEditor::connectControls() {
  connect(ui_->btnPrev, &QPushButton::clicked, this, &TfrmEqRecEditor::btnPrevClick);
  connect(ui_->btnNext, &QPushButton::clicked, this, &TfrmEqRecEditor::btnNextClick);
  connect(ui_->btnOk, &QPushButton::clicked, this, &TfrmEqRecEditor::btnOkClick);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TfrmEqRecEditor::btnCancelClick);
  connect(ui_->btnSearch, &QPushButton::clicked, this, &TfrmEqRecEditor::btnSearchClick);
  connect(ui_->txtTestProcSearch, &QLineEdit::returnPressed, this, &TfrmEqRecEditor::btnSearchClick);
  connect(ui_->btnClearSearch, &QPushButton::clicked, this, &TfrmEqRecEditor::btnClearSearchClick);
  connect(ui_->lstTestProc, &TheadedGrid::headerPressed, this, &TfrmEqRecEditor::lstTestProcHeaderPressed);
  connect(ui_->lstTestProc, &TtestProcGrid::markChanged, this, &TfrmEqRecEditor::lstTestProcMarkChanged);
  for (const TrecordEdit* edit : findChildren<TrecordEdit*>()) {
    connect(edit, &QLineEdit::returnPressed, this, [this] { focusNextChild(); });
  }
}

void TfrmEqRecEditor::nameCustomFields() {
  const Tcaptions captions = loadCaptions(ini_);
  for (const TtextField& field : textFields) {
    if (field.customNumber == 0) continue;
    const QString caption = fromRecordText(columnHeading(static_cast<TcolumnId>(field.id), captions));
    formControl<QLabel>(*this, "lbl", field.name).setText(caption);
    if (!caption.isEmpty()) formControl<QWidget>(*this, "txt", field.name).setAccessibleName(caption);
  }
}

void TfrmEqRecEditor::place() {
  const int top = ini_.readInteger(placeSection, "TOP", -1);
  const int left = ini_.readInteger(placeSection, "LEFT", -1);
  const QScreen* screen = (parentWidget() == nullptr ? this : parentWidget())->screen();
  const bool centred = top == -1 || left == -1;
  move(centred ? screen->availableGeometry().center() - rect().center() : QPoint(left, top));
}

void TfrmEqRecEditor::loadLayout() {
  layout_ = TgridLayout::load(ini_, layoutSection, ui_->lstTestProc->width(), TtestProcList::columnCount);
  ui_->lstTestProc->setColumnWidths(layout_);
}

/// Calls `visit` with each text field and its box.
template <typename Visit>
void TfrmEqRecEditor::forEachBox(Visit visit) const {
  for (const TtextField& field : textFields) {
    const QString name = QStringLiteral("txt%1").arg(QLatin1String(field.name));
    if (auto* edit = findChild<TrecordEdit*>(name)) {
      visit(field, *edit);
    } else {
      visit(field, formControl<TrecordMemo>(*this, name));
    }
  }
}

const TequipRec* TfrmEqRecEditor::currentRecord() const {
  if (currentIndex_ == noRecord) return nullptr;
  const auto index = static_cast<TrecordIndex>(currentIndex_);
  return index < host_.records().count() ? &host_.records().at(index) : nullptr;
}

void TfrmEqRecEditor::showTexts(const TequipRec& record) {
  forEachBox([&](const TtextField& field, auto& box) { box.setRecordText(record.text(field.id)); });
}

void TfrmEqRecEditor::store(std::optional<unsigned> testProc) {
  const TequipRec* record = currentRecord();
  if (record == nullptr) return;
  TequipRec changed = *record;
  forEachBox([&](const TtextField& field, const auto& box) {
    const std::string text = box.recordText();
    changed.setText(field.id, trimmedText(text));
  });
  if (testProc) changed.setTestProc(*testProc);
  if (changed == *record) return;
  host_.change(TlistChange(TreplaceRecord{static_cast<TrecordIndex>(currentIndex_), std::move(changed)}));
}

void TfrmEqRecEditor::showRecord(std::int32_t index) {
  model_->refill();
  const bool none = index == noRecord && currentIndex_ == noRecord;
  if (index != noRecord || none || host_.shownCount() == 0) store();
  if (none || host_.shownCount() == 0) {
    showNoRecord();
    return;
  }
  if (index != noRecord) currentIndex_ = index;
  if (const TequipRec* record = currentRecord()) showTexts(*record);
  markTestProc();
}

/// Also forgets the record, so that the empty boxes are never stored into it.
void TfrmEqRecEditor::showNoRecord() {
  currentIndex_ = noRecord;
  showTexts(TequipRec());
  ui_->lstTestProc->clearSelection();
  ui_->txtTestProcedure->clear();
  showProcedureMark();
}

void TfrmEqRecEditor::refillSorted() {
  list_.sort(layout_.sort);
  model_->refill();
  ui_->lstTestProc->showList(list_, layout_.sort);
  markTestProc();
}

/// Marks the record's test procedure. When the list lacks it, the heading stays as it is.
void TfrmEqRecEditor::markTestProc() {
  const TequipRec* record = currentRecord();
  if (record == nullptr) return;
  if (const auto row = list_.rowOf(record->testProc())) {
    ui_->lblEquipRecDetails->setText(QStringLiteral("Equipment Record #%1").arg(currentIndex_ + 1));
    ui_->lstTestProc->mark(*row);
  } else {
    ui_->lstTestProc->clearSelection();
  }
  lstTestProcMarkChanged();
}

std::optional<unsigned> TfrmEqRecEditor::markedTestProc() const {
  const auto row = ui_->lstTestProc->markedRow();
  return row ? std::optional(list_.at(*row)) : std::nullopt;
}

/// Shows the test procedure that the record would have after OK.
void TfrmEqRecEditor::lstTestProcMarkChanged() {
  const TequipRec* record = currentRecord();
  const auto number = markedTestProc();
  if (!number && record == nullptr) return;
  ui_->txtTestProcedure->setText(fromRecordText(list_.caption(number ? *number : record->testProc())));
  ui_->txtTestProcedure->setCursorPosition(0);
  showProcedureMark();
}
