#include "upload/progress.h"

#include <QTimer>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "ui_progress.h"
#include "upload/keepAwake.h"
#include "upload/taskbarProgress.h"
#include "upload/timeLeft.h"
#include "upload/upload.h"

TfrmProgress::TfrmProgress(const TuploadCommStruct* upload, TcommStruct* resources, QWidget* parent)
    : TworkerDialog(parent),
      upload_(upload),
      ui_(std::make_unique<Ui::TfrmProgress>()),
      timeLeft_(std::make_unique<TtimeLeft>()) {
  if (!upload || !resources) {
    throw std::invalid_argument("Invalid parameters passed to TfrmProgress(TComponent, void *, void *");
  }
  setWindowFlags(Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  ui_->setupUi(this);
  auto worker = std::make_unique<TuploadThread>(this, resources);
  connect(ui_->btnCancel, &QPushButton::clicked, this, &TfrmProgress::reject);
  connect(worker.get(), &TuploadThread::operationChanged, ui_->lblOperation, &QLabel::setText);
  connect(worker.get(), &TuploadThread::progressChanged, this, &TfrmProgress::showProgress);
  connect(worker.get(), &QThread::finished, this, &TfrmProgress::workerFinished);
  setWorker(std::move(worker));
  auto* second = new QTimer(this);
  connect(second, &QTimer::timeout, this, &TfrmProgress::showTimeLeft);
  second->start(std::chrono::seconds(1));
}

TfrmProgress::~TfrmProgress() = default;

void TfrmProgress::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (worker().isRunning() || worker().isFinished()) return;
  taskbar_ = std::make_unique<TtaskbarProgress>(parentWidget());
  keepAwake_ = std::make_unique<TkeepAwake>();
  startWorker();
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
  if (isVisible()) done(isCompleted() ? Accepted : Rejected);
}
