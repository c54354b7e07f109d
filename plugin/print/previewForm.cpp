#include "print/previewForm.h"

#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>

#include "print/report.h"
#include "support/flowLayout.h"
#include "ui_previewForm.h"

namespace {

constexpr double zoomStep = 1.25;
constexpr double leastZoom = 0.2;
constexpr double mostZoom = 5;

/// Lets keys press a button, and adds them to its tooltip. The button's own shortcut would press it with a delay.
void addKeys(QAbstractButton* button, const QKeySequence& keys) {
  const auto* shortcut = new QShortcut(keys, button);
  QObject::connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
  button->setToolTip(QStringLiteral("%1 (%2)").arg(button->toolTip(), keys.toString(QKeySequence::NativeText)));
}

}  // namespace

TfrmPrintPreview::TfrmPrintPreview(const Treport& report, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint |
                          Qt::WindowCloseButtonHint),
      ui_(std::make_unique<Ui::TfrmPrintPreview>()),
      pageCount_(static_cast<int>(report.pageCount())) {
  ui_->setupUi(this);
  auto* tools = new TflowLayout(ui_->pnlTools);
  const auto widgets = ui_->pnlTools->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
  for (QWidget* widget : widgets) tools->addWidget(widget);
  resize(size().boundedTo(screen()->availableSize() * 0.95));
  ui_->scrPage->setBackgroundRole(QPalette::Dark);
  ui_->pagPage->setReport(report);
  ui_->edtPage->setMaximum(pageCount_);
  ui_->lblPages->setText(QStringLiteral("of %1").arg(pageCount_));
  connect(ui_->edtPage, &QSpinBox::valueChanged, this, &TfrmPrintPreview::edtPageValueChanged);
  connect(ui_->btnFirst, &QToolButton::clicked, ui_->edtPage, [this] { ui_->edtPage->setValue(1); });
  connect(ui_->btnPrevious, &QToolButton::clicked, ui_->edtPage, &QSpinBox::stepDown);
  connect(ui_->btnNext, &QToolButton::clicked, ui_->edtPage, &QSpinBox::stepUp);
  connect(ui_->btnLast, &QToolButton::clicked, ui_->edtPage, [this] { ui_->edtPage->setValue(pageCount_); });
  connect(ui_->btnZoomOut, &QToolButton::clicked, this, [this] { zoomBy(1 / zoomStep); });
  connect(ui_->btnZoomIn, &QToolButton::clicked, this, [this] { zoomBy(zoomStep); });
  connect(ui_->btnPageWidth, &QToolButton::clicked, this, [this] { fit(Tfit::width); });
  connect(ui_->btnWholePage, &QToolButton::clicked, this, [this] { fit(Tfit::page); });
  connect(ui_->btnPrint, &QPushButton::clicked, this, &TfrmPrintPreview::printAsked);
  connect(ui_->btnPdf, &QPushButton::clicked, this, &TfrmPrintPreview::pdfAsked);
  connect(ui_->btnClose, &QPushButton::clicked, this, &TfrmPrintPreview::reject);
  setUpKeys();
  edtPageValueChanged(1);
  ui_->scrPage->setFocus();
}

TfrmPrintPreview::~TfrmPrintPreview() = default;

void TfrmPrintPreview::setUpKeys() {
  addKeys(ui_->btnFirst, Qt::CTRL | Qt::Key_Home);
  addKeys(ui_->btnPrevious, Qt::Key_PageUp);
  addKeys(ui_->btnNext, Qt::Key_PageDown);
  addKeys(ui_->btnLast, Qt::CTRL | Qt::Key_End);
  addKeys(ui_->btnZoomOut, Qt::CTRL | Qt::Key_Minus);
  addKeys(ui_->btnZoomIn, Qt::CTRL | Qt::Key_Plus);
  addKeys(ui_->btnPageWidth, Qt::CTRL | Qt::Key_1);
  addKeys(ui_->btnWholePage, Qt::CTRL | Qt::Key_0);
  addKeys(ui_->btnPrint, Qt::CTRL | Qt::Key_P);
  addKeys(ui_->btnPdf, Qt::CTRL | Qt::Key_S);
}

void TfrmPrintPreview::edtPageValueChanged(int number) {
  ui_->pagPage->setPage(static_cast<std::size_t>(number - 1));
  ui_->scrPage->verticalScrollBar()->setValue(0);
  ui_->btnFirst->setEnabled(number > 1);
  ui_->btnPrevious->setEnabled(number > 1);
  ui_->btnNext->setEnabled(number < pageCount_);
  ui_->btnLast->setEnabled(number < pageCount_);
}

void TfrmPrintPreview::zoomBy(double factor) {
  fit_ = Tfit::nothing;
  ui_->pagPage->setZoom(std::clamp(ui_->pagPage->zoom() * factor, leastZoom, mostZoom));
}

void TfrmPrintPreview::fit(Tfit fit) {
  fit_ = fit;
  const QSize room = ui_->scrPage->maximumViewportSize();
  const QSize besideBar = room - QSize(ui_->scrPage->verticalScrollBar()->sizeHint().width(), 0);
  if (fit == Tfit::width) ui_->pagPage->setZoom(ui_->pagPage->zoomForWidth(besideBar));
  if (fit == Tfit::page) ui_->pagPage->setZoom(ui_->pagPage->zoomForPage(room));
}

void TfrmPrintPreview::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  layout()->activate();
  fit(fit_);
}
