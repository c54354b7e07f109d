#include "comm/selector/communicationsSelector.h"

#include <QPointer>
#include <algorithm>
#include <utility>

#include "comm/commMessages.h"
#include "comm/selector/octetBox.h"
#include "support/messageBox.h"
#include "ui_communicationsSelector.h"

namespace {

// Each is a wait in which the window does not react.
constexpr std::chrono::milliseconds openingWait(80);
constexpr std::chrono::milliseconds connectingWait(20);

constexpr std::chrono::milliseconds lookInterval(30);

constexpr int longestPort = 200;

QString waitingFor(int port) {
  return port > 0 ? QStringLiteral("Waiting for %1...").arg(portName(port)) : QStringLiteral("Waiting...");
}

}  // namespace

TcomSelectFrm::TcomSelectFrm(TiniFile ini, TportCalls calls, QWidget* parent)
    : QDialog(parent),
      ini_(std::move(ini)),
      stored_(TconnectionSettings::load(ini_)),
      calls_(std::move(calls)),
      ui_(std::make_unique<Ui::TcomSelectFrm>()),
      wantedMethod_(stored_.method),
      wantedPort_(stored_.serialPort) {
  setUpForm();
  connectControls();
  search_.emplace(calls_);
  search_->waitUntilComplete(openingWait);
  showPorts();
  timer_.start(lookInterval);
}

TcomSelectFrm::~TcomSelectFrm() {
  if (isVisible()) settings(false).save(ini_);
}

void TcomSelectFrm::setUpForm() {
  ui_->setupUi(this);
  showListWarning({});
  ui_->pnlAddress->setBoxes({ui_->IP1, ui_->IP2, ui_->IP3, ui_->IP4});
  for (std::size_t i = 0; i < stored_.octets.size(); ++i) {
    ui_->pnlAddress->boxes().at(i)->setText(QString::fromStdString(stored_.octets.at(i)));
  }
  // Its text must not move the buttons.
  ui_->lblPortNote->setMinimumWidth(ui_->lblPortNote->fontMetrics().horizontalAdvance(waitingFor(longestPort)));
}

void TcomSelectFrm::showListWarning(const QString& text) {
  ui_->lblListWarning->setText(text);
  ui_->lblListWarning->setHidden(text.isEmpty());
  setAccessibleDescription(text);
}

void TcomSelectFrm::connectControls() {
  for (const QRadioButton* button : {ui_->radUSB, ui_->radEthernet, ui_->radSerial}) {
    connect(button, &QRadioButton::clicked, this, &TcomSelectFrm::radMethodClick);
    connect(button, &QRadioButton::toggled, this, &TcomSelectFrm::enableFields);  // a screen reader does not click
  }
  connect(ui_->serialPortSelector, &QComboBox::activated, this, &TcomSelectFrm::serialPortSelectorActivated);
  connect(ui_->btnConnect, &QPushButton::clicked, this, &TcomSelectFrm::btnConnectClick);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TcomSelectFrm::reject);
  connect(&timer_, &QTimer::timeout, this, &TcomSelectFrm::lookTimer);
}

/// Checks the wanted method's button, or USB where there is no port, and moves the focus to it if another method's
/// button has it: before that is disabled, which would move the focus elsewhere.
void TcomSelectFrm::showMethod() {
  const bool hasPorts = !found_.complete || items_.front().connectable;
  if (hasPorts) ui_->radSerial->setEnabled(true);
  QRadioButton* button = ui_->radUSB;
  if (wantedMethod_ == TcommMethod::ethernet) button = ui_->radEthernet;
  if (wantedMethod_ == TcommMethod::serial && hasPorts) button = ui_->radSerial;
  if (!button->isChecked()) {
    const QWidget* focus = focusWidget();
    const bool onMethod = focus == nullptr || qobject_cast<const QRadioButton*>(focus) != nullptr;
    button->setChecked(true);
    if (onMethod) button->setFocus();
  }
  ui_->radSerial->setEnabled(hasPorts);
  enableFields();
}

void TcomSelectFrm::enableFields() {
  const TcommMethod chosen = method();
  ui_->lblEthernet->setEnabled(chosen == TcommMethod::ethernet);
  ui_->pnlAddress->setEnabled(chosen == TcommMethod::ethernet);
  ui_->lblSerialPort->setEnabled(chosen == TcommMethod::serial);
  ui_->serialPortSelector->setEnabled(chosen == TcommMethod::serial);
  ui_->lblPortNote->setEnabled(chosen == TcommMethod::serial);
}

/// Shows what the search has found so far.
void TcomSelectFrm::showPorts() {
  found_ = search_->found();
  const int shown = ui_->serialPortSelector->currentData().toInt();
  items_ = portItems(found_, stored_.serialPort);
  fillPortList(*ui_->serialPortSelector, items_);
  selectPort(shown);
  showMethod();
  showNote();
}

/// Selects the wanted port, or the one that was selected before, or the first.
void TcomSelectFrm::selectPort(int before) {
  int row = ui_->serialPortSelector->findData(wantedPort_);
  if (row < 0) row = ui_->serialPortSelector->findData(before);
  ui_->serialPortSelector->setCurrentIndex(std::max(row, 0));
}

const TportItem& TcomSelectFrm::selectedPort() const {
  return items_.at(static_cast<std::size_t>(std::max(ui_->serialPortSelector->currentIndex(), 0)));
}

void TcomSelectFrm::showNote() {
  QString note;
  if (connectTo_) {
    note = waitingFor(*connectTo_);
  } else if (found_.complete && wantedPort_ > 0 && selectedPort().number != wantedPort_) {
    note = QStringLiteral("%1 is not free").arg(portName(wantedPort_));
  }
  ui_->lblPortNote->setText(note);
  ui_->serialPortSelector->setAccessibleDescription(note);
}

TcommMethod TcomSelectFrm::method() const {
  if (ui_->radEthernet->isChecked()) return TcommMethod::ethernet;
  return ui_->radSerial->isChecked() ? TcommMethod::serial : TcommMethod::usb;
}

/// What closing writes. Without a choice of the user's the stored method and port stay, whatever is shown in their
/// place; connecting is a choice of both.
TconnectionSettings TcomSelectFrm::settings(bool accepted) const {
  TconnectionSettings settings;
  settings.method = accepted || methodChosen_ ? method() : stored_.method;
  const bool keepsPort = !accepted && !portChosen_ && stored_.serialPort > 0;
  settings.serialPort = keepsPort ? stored_.serialPort : selectedPort().number;
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
  wantedMethod_ = method();
  enableFields();
  waitNoMore();
}

void TcomSelectFrm::serialPortSelectorActivated() {
  portChosen_ = true;
  wantedPort_ = selectedPort().number;
  waitNoMore();
}

void TcomSelectFrm::btnConnectClick() {
  if (method() == TcommMethod::serial) return connectOverPort(connectingWait);
  const auto invalid = method() == TcommMethod::ethernet ? ui_->pnlAddress->firstInvalid() : std::nullopt;
  if (!invalid) return accept();
  const QPointer<TcomSelectFrm> self(this);
  showMessage(this, invalidAddress);
  if (!self.isNull()) ui_->pnlAddress->focusBox(*invalid);
}

/// Connects now, or as soon as the port is found and the search has ended.
void TcomSelectFrm::connectOverPort(std::chrono::milliseconds atMost) {
  if (selectedPort().connectable) {
    search_->stop();
    if (search_->waitForEnd(atMost)) return accept();
  }
  waitToConnect(selectedPort().number);
}

void TcomSelectFrm::waitToConnect(int port) {
  if (connectTo_) return;
  connectTo_ = port;
  ui_->btnConnect->setEnabled(false);
  showNote();
}

/// Searches again where the search was stopped for the connection.
void TcomSelectFrm::waitNoMore() {
  connectTo_.reset();
  ui_->btnConnect->setEnabled(true);
  if (search_->isStopped()) search_.emplace(calls_);
  showPorts();
}

void TcomSelectFrm::done(int result) {
  settings(result == Accepted).save(ini_);
  timer_.stop();
  search_->stop();
  QDialog::done(result);
}

void TcomSelectFrm::lookTimer() {
  if (search_->found() != found_) showPorts();
  if (!connectTo_) return;
  const bool stillWanted = method() == TcommMethod::serial && selectedPort().number == *connectTo_;
  stillWanted ? connectOverPort({}) : waitNoMore();
}
