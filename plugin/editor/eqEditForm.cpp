#include "editor/eqEditForm.h"

#include <QKeyEvent>
#include <QScreen>
#include <QShowEvent>
#include <utility>

#include "editor/editorHost.h"
#include "editor/testProcGrid.h"
#include "support/windows1252.h"
#include "ui_eqEditForm.h"

/// The library is a static one, whose resources nobody registers unasked. (The macro does not work in a namespace.)
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
}

/// The host may be gone already.
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
  forEachBox([](std::size_t field, auto& box) { box.setMaxLength(static_cast<int>(textFields[field].size) - 1); });
  ui_->lstTestProc->setModel(model_.get());
  QPalette readOnly = ui_->txtTestProcedure->palette();
  readOnly.setColor(QPalette::Base, readOnly.color(QPalette::Window));
  ui_->txtTestProcedure->setPalette(readOnly);
  ui_->txtControlNum->setFocus();
}

/// The designed size, or what large letters and long captions need.
void TfrmEqRecEditor::fixSize() {
  setFixedSize(minimumSizeHint().expandedTo(designedSize));
  layout()->activate();  // from here on the list has its width
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
  for (const TrecordEdit* edit : {ui_->txtControlNum, ui_->txtManufacturer, ui_->txtModel}) {
    connect(edit, &QLineEdit::returnPressed, this, [this] { focusNextChild(); });
  }
}

void TfrmEqRecEditor::nameCustomFields() {
  const std::array<std::pair<QLabel*, QWidget*>, 3> customs = {
      {{ui_->lblCustom1, ui_->txtCustom1}, {ui_->lblCustom2, ui_->txtCustom2}, {ui_->lblCustom3, ui_->txtCustom3}}};
  int number = 0;
  for (const auto& [label, box] : customs) {
    const std::string digit = std::to_string(++number);
    const std::string name = ini_.readString("CUSTOMFIELDS", "FIELD" + digit + "NAME", "Custom " + digit);
    label->setText(fromRecordText(name));
    if (!name.empty()) box->setAccessibleName(fromRecordText(name));
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

template <typename Visit>
void TfrmEqRecEditor::forEachBox(Visit visit) const {
  visit(fieldControlNum, *ui_->txtControlNum);
  visit(fieldDescription, *ui_->txtDescription);
  visit(fieldManufacturer, *ui_->txtManufacturer);
  visit(fieldModel, *ui_->txtModel);
  visit(fieldCustom1, *ui_->txtCustom1);
  visit(fieldCustom2, *ui_->txtCustom2);
  visit(fieldCustom3, *ui_->txtCustom3);
}

const TequipRec* TfrmEqRecEditor::currentRecord() const {
  if (currentIndex_ == noRecord) return nullptr;
  const auto index = static_cast<TrecordIndex>(currentIndex_);
  return index < host_.records().count() ? &host_.records().at(index) : nullptr;
}

TrecordFields TfrmEqRecEditor::boxes() const {
  TrecordFields fields;
  forEachBox([&](std::size_t field, const auto& box) { fields.texts[field] = box.recordText(); });
  return fields;
}

void TfrmEqRecEditor::showBoxes(const TrecordFields& fields) {
  forEachBox([&](std::size_t field, auto& box) { box.setRecordText(fields.texts[field]); });
}

void TfrmEqRecEditor::store() {
  const TequipRec* record = currentRecord();
  if (record == nullptr) return;
  TequipRec changed = *record;
  boxes().store(changed);
  replaceCurrent(std::move(changed));
}

void TfrmEqRecEditor::replaceCurrent(TequipRec record) {
  if (record == *currentRecord()) return;
  host_.change(TlistChange(TreplaceRecord{static_cast<TrecordIndex>(currentIndex_), std::move(record)}));
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
  if (const TequipRec* record = currentRecord()) showBoxes(TrecordFields::load(*record));
  markTestProc();
}

/// Forgets the record, too: empty boxes must not come to be stored into it.
void TfrmEqRecEditor::showNoRecord() {
  currentIndex_ = noRecord;
  showBoxes({});
  ui_->lstTestProc->clearSelection();
  ui_->txtTestProcedure->clear();
}

void TfrmEqRecEditor::refillSorted() {
  list_.sort(layout_.sort);
  model_->refill();
  ui_->lstTestProc->showSort(layout_.sort);
  markTestProc();
}

/// Marks the record's test procedure. Where the list does not have it, the heading stays as it is.
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

/// Shows the test procedure that OK would leave the record with.
void TfrmEqRecEditor::lstTestProcMarkChanged() {
  const TequipRec* record = currentRecord();
  const auto number = markedTestProc();
  if (!number && record == nullptr) return;
  ui_->txtTestProcedure->setText(fromRecordText(list_.caption(number ? *number : record->testProc())));
  ui_->txtTestProcedure->setCursorPosition(0);
}
