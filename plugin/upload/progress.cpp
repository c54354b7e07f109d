#include "upload/progress.h"

#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <stdexcept>

#include "ui_progress.h"
#include "upload/keepAwake.h"
#include "upload/taskbarProgress.h"
#include "upload/timeLeft.h"
#include "upload/upload.h"

TfrmProgress::TfrmProgress(const TuploadCommStruct* upload, TcommStruct* resources, QWidget* parent)
    : QDialog(parent),
      upload_(upload),
      ui_(std::make_unique<Ui::TfrmProgress>()),
      timeLeft_(std::make_unique<TtimeLeft>()) {
  if (!upload || !resources) {
    throw std::invalid_argument("Invalid parameters passed to TfrmProgress(TComponent, void *, void *");
  }
  setWindowFlags(Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  ui_->setupUi(this);
  worker_ = std::make_unique<TuploadThread>(this, resources);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TfrmProgress::btnCancelClick);
  connect(worker_.get(), &TuploadThread::operationChanged, ui_->lblOperation, &QLabel::setText);
  connect(worker_.get(), &TuploadThread::progressChanged, this, &TfrmProgress::showProgress);
  auto* second = new QTimer(this);
  connect(second, &QTimer::timeout, this, &TfrmProgress::showTimeLeft);
  second->start(std::chrono::seconds(1));
  connect(worker_.get(), &QThread::finished, this, &TfrmProgress::workerFinished);
}

TfrmProgress::~TfrmProgress() {
  cancelled_ = true;
  worker_.reset();  // waits for it
}

void TfrmProgress::awaitWorker() {
  if (!worker_->isRunning()) return;
  QEventLoop loop;
  connect(worker_.get(), &QThread::finished, &loop, &QEventLoop::quit);
  connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
  if (worker_->isRunning()) loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void TfrmProgress::reject() {
  btnCancelClick();
}

void TfrmProgress::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (worker_->isRunning() || worker_->isFinished()) return;
  taskbar_ = std::make_unique<TtaskbarProgress>(parentWidget());
  keepAwake_ = std::make_unique<TkeepAwake>();
  worker_->start();
}

void TfrmProgress::btnCancelClick() {
  cancelled_ = true;
  done(Rejected);
}

void TfrmProgress::showProgress(int position) {
  ui_->transferProgress->setValue(position);
  timeLeft_->note(position, std::chrono::steady_clock::now());
  taskbar_->show(position);
}

void TfrmProgress::showTimeLeft() {
  ui_->transferProgress->setFormat(timeLeft_->text(std::chrono::steady_clock::now()));
}

void TfrmProgress::workerFinished() {
  taskbar_.reset();
  keepAwake_.reset();
  if (isVisible()) done(worker_->isCompleted() ? Accepted : Rejected);
}
