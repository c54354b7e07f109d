#include "comm/selector/communicationsSelector.h"

#include <QPointer>
#include <utility>

#include "comm/commMessages.h"
#include "comm/selector/octetBox.h"
#include "support/messageBox.h"
#include "ui_communicationsSelector.h"

namespace {

// Together they are the longest time that the search keeps the user waiting.
constexpr std::chrono::milliseconds openingWait(80);
constexpr std::chrono::milliseconds closingWait(20);

constexpr std::chrono::milliseconds lookInterval(30);

}  // namespace

TcomSelectFrm::TcomSelectFrm(TiniFile ini, TfreePortSearch::TcanOpen canOpen, QWidget* parent)
    : QDialog(parent),
      ini_(std::move(ini)),
      stored_(TconnectionSettings::load(ini_)),
      search_(std::move(canOpen)),
      ui_(std::make_unique<Ui::TcomSelectFrm>()) {
  setUpForm();
  connectControls();
  const bool ended = search_.waitForEnd(openingWait);
  showPorts();
  if (!ended) timer_.start(lookInterval);
}

TcomSelectFrm::~TcomSelectFrm() {
  if (isVisible() && !closing_) settings().save(ini_);
}

void TcomSelectFrm::setUpForm() {
  ui_->setupUi(this);
  ui_->pnlAddress->setBoxes({ui_->IP1, ui_->IP2, ui_->IP3, ui_->IP4});
  for (std::size_t i = 0; i < stored_.octets.size(); ++i) {
    ui_->pnlAddress->boxes().at(i)->setText(QString::fromStdString(stored_.octets.at(i)));
  }
  showMethod(stored_.method == TcommMethod::serial ? TcommMethod::usb : stored_.method);
}

void TcomSelectFrm::connectControls() {
  for (const QRadioButton* button : {ui_->radUSB, ui_->radEthernet, ui_->radSerial}) {
    connect(button, &QRadioButton::clicked, this, &TcomSelectFrm::radMethodClick);
  }
  connect(ui_->serialPortSelector, &QComboBox::activated, this, &TcomSelectFrm::serialPortSelectorActivated);
  connect(ui_->btnConnect, &QPushButton::clicked, this, &TcomSelectFrm::btnConnectClick);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TcomSelectFrm::reject);
  connect(&timer_, &QTimer::timeout, this, &TcomSelectFrm::searchTimer);
}

/// Checks the method's button, and moves the focus to it if another method's button has it.
void TcomSelectFrm::showMethod(TcommMethod method) {
  QRadioButton* button = ui_->radUSB;
  if (method == TcommMethod::ethernet) button = ui_->radEthernet;
  if (method == TcommMethod::serial) button = ui_->radSerial;
  const QWidget* focus = focusWidget();
  const bool onMethod = focus == nullptr || qobject_cast<const QRadioButton*>(focus) != nullptr;
  button->setChecked(true);
  if (onMethod) button->setFocus();
  enableFields();
}

void TcomSelectFrm::enableFields() {
  const TcommMethod chosen = method();
  ui_->lblEthernet->setEnabled(chosen == TcommMethod::ethernet);
  ui_->pnlAddress->setEnabled(chosen == TcommMethod::ethernet);
  ui_->lblSerialPort->setEnabled(chosen == TcommMethod::serial);
  ui_->serialPortSelector->setEnabled(chosen == TcommMethod::serial);
}

/// Adds the ports found since the last call. Selects the stored port or method when it becomes available, unless the
/// user has already chosen one.
void TcomSelectFrm::showPorts() {
  const std::vector<int> ports = search_.found();
  if (ports.size() == shownPorts_) return;
  const bool first = shownPorts_ == 0;
  addPorts(ports);
  const int wanted = ui_->serialPortSelector->findData(stored_.serialPort);
  if (wanted >= 0 && !portChosen_) ui_->serialPortSelector->setCurrentIndex(wanted);
  ui_->radSerial->setEnabled(true);
  if (first && stored_.method == TcommMethod::serial && !methodChosen_) showMethod(TcommMethod::serial);
}

void TcomSelectFrm::addPorts(const std::vector<int>& ports) {
  if (shownPorts_ == 0) ui_->serialPortSelector->clear();  // removes "<No Free Ports>"
  for (; shownPorts_ < ports.size(); ++shownPorts_) {
    const int number = ports.at(shownPorts_);
    ui_->serialPortSelector->addItem(QStringLiteral("COM%1").arg(number), number);
  }
}

TcommMethod TcomSelectFrm::method() const {
  if (ui_->radEthernet->isChecked()) return TcommMethod::ethernet;
  return ui_->radSerial->isChecked() ? TcommMethod::serial : TcommMethod::usb;
}

TconnectionSettings TcomSelectFrm::settings() const {
  TconnectionSettings settings;
  settings.method = method();
  settings.serialPort = ui_->serialPortSelector->currentData().toInt();
  for (std::size_t i = 0; i < settings.octets.size(); ++i) {
    settings.octets.at(i) = ui_->pnlAddress->boxes().at(i)->text().toStdString();
  }
  return settings;
}

TconnectionChoice TcomSelectFrm::choice() const {
  TconnectionChoice choice;
  choice.method = method();
  choice.portText = ui_->serialPortSelector->currentText().toStdString();
  for (std::size_t i = 0; i < choice.octets.size(); ++i) {
    choice.octets.at(i) = octetValue(ui_->pnlAddress->boxes().at(i)->text()).value_or(0);
  }
  return choice;
}

void TcomSelectFrm::radMethodClick() {
  methodChosen_ = true;
  enableFields();
}

void TcomSelectFrm::btnConnectClick() {
  const auto invalid = method() == TcommMethod::ethernet ? ui_->pnlAddress->firstInvalid() : std::nullopt;
  if (!invalid) {
    accept();
    return;
  }
  const QPointer<TcomSelectFrm> self(this);
  showMessage(this, invalidAddress);
  if (!self.isNull()) ui_->pnlAddress->focusBox(*invalid);
}

void TcomSelectFrm::done(int result) {
  if (closing_) return;
  settings().save(ini_);
  search_.stop();
  if (search_.waitForEnd(closingWait)) {
    timer_.stop();
    QDialog::done(result);
    return;
  }
  closing_ = result;
  setEnabled(false);
}

void TcomSelectFrm::searchTimer() {
  const bool ended = search_.waitForEnd({});
  if (closing_) {
    if (!ended) return;
    timer_.stop();
    QDialog::done(*closing_);
    return;
  }
  showPorts();
  if (ended) timer_.stop();
}
