#include "host/tour/tour.h"

#include <QApplication>
#include <QTest>
#include <cstdio>

#include "host/tour/fitCheck.h"
#include "host/tour/listFolders.h"
#include "host/tour/pictureFile.h"

namespace {

constexpr int layoutPatience = 1000;  // milliseconds

void print(const QString& line) {
  std::puts(qPrintable(line));
  std::fflush(stdout);
}

}  // namespace

Ttour::Ttour(QString modulePath, const QString& sample, const QString& pictures)
    : modulePath_(std::move(modulePath)), pictureFolder_(pictures), list_(temporary_.filePath(QStringLiteral("list"))) {
  qputenv("HOME", temporary_.path().toUtf8());  // keeps the tour away from the user's documents
  step(QStringLiteral("prepare"), [&] {
    expect(copyFolder(sample, list_), QStringLiteral("cannot copy %1").arg(sample));
    expect(QDir().mkpath(pictureFolder_.path()), QStringLiteral("cannot create %1").arg(pictureFolder_.path()));
    return QStringLiteral("working on a copy of the list in %1").arg(sample);
  });
}

int Ttour::run() {
  if (failures_ == 0) tourSampleList();
  if (failures_ == 0) tourEditing();
  if (failures_ == 0) tourStatus();
  if (failures_ == 0) tourPrinting();
  if (failures_ == 0) tourImport();
  if (failures_ == 0) tourUpload();
  if (failures_ == 0) tourUnsaved();
  if (failures_ == 0) tourEmptyList();
  if (failures_ == 0) tourFullList();
  host_.reset();
  print(failures_ == 0
            ? QStringLiteral("%1 steps passed; pictures in %2").arg(stepCount_).arg(pictureFolder_.absolutePath())
            : QStringLiteral("The tour failed at step %1; pictures so far in %2")
                  .arg(stepCount_)
                  .arg(pictureFolder_.absolutePath()));
  return failures_ == 0 ? 0 : 1;
}

void Ttour::step(const QString& name, const Tcheck& check) {
  if (failures_ > 0) return;  // each step starts where the previous one ended
  ++stepCount_;
  const QString heading = QStringLiteral("%1  %2").arg(stepCount_, 2).arg(name, -18);
  try {
    const QString checked = check();
    const QString said = boxes_.takeText();
    expect(said.isEmpty(), QStringLiteral("unexpected message: %1").arg(said));
    print(QStringLiteral("ok      %1 %2").arg(heading, checked));
  } catch (const TstepFailed& failure) {
    ++failures_;
    print(QStringLiteral("FAILED  %1 %2").arg(heading, QString::fromUtf8(failure.what())));
  }
}

void Ttour::picture(QWidget* window, const QString& name) {
  QString misfit;
  const bool fits = QTest::qWaitFor([&] { return (misfit = misfitIn(window)).isEmpty(); }, layoutPatience);
  const QString path = pictureFolder_.filePath(name + QStringLiteral(".png"));
  expect(savePicture(window->grab().toImage(), path), QStringLiteral("cannot write %1").arg(path));
  expect(fits, misfit);
}

/// Takes pictures of a window at its opening size and maximised.
void Ttour::pictures(QWidget* window, const QString& name) {
  picture(window, name);
  const QSize opening = window->size();
  window->showMaximized();
  expect(QTest::qWaitFor([&] { return window->width() > opening.width(); }, windowPatience),
         QStringLiteral("the window does not grow"));
  picture(window, name + QStringLiteral("-maximised"));
  window->showNormal();
  expect(QTest::qWaitFor([&] { return window->size() == opening; }, windowPatience),
         QStringLiteral("the window does not shrink back"));
}

void Ttour::startHost(const QString& folder) {
  host_.reset();  // unloads the module; the next host loads it again
  host_ = std::make_unique<ThostWindow>(modulePath_, ThostFolders{folder, folder});
  expect(host_->pluginError().isEmpty(), host_->pluginError());
  host_->show();
  expect(comesToFront(host_.get()), QStringLiteral("the host's window does not open"));
}

TuserHands Ttour::frame() const {
  expect(host_->pluginFrame() != nullptr, QStringLiteral("the plug-in's window is not open"));
  return TuserHands(host_->pluginFrame());
}

QTableView* Ttour::grid() const {
  return frame().control<QTableView>(QStringLiteral("tblEqRec"));
}

void Ttour::launch() {
  expect(host().button("btnLaunch")->hasFocus(), QStringLiteral("the launch button has not the focus"));
  host().press(Qt::Key_Return);
  expect(comesToFront(frame().window()), QStringLiteral("the plug-in's window does not open"));
  expect(host_->isHidden(), QStringLiteral("the host's window stays visible"));
}

void Ttour::leave() {
  frame().tabTo(frame().button("BtnExit"));
  frame().press(Qt::Key_Space);
  expect(QTest::qWaitFor([this] { return host_->pluginFrame() == nullptr; }, windowPatience),
         QStringLiteral("the plug-in's window does not close"));
  expect(comesToFront(host_.get()), QStringLiteral("the host's window does not come back"));
}

int Ttour::rows() const {
  return grid()->model()->rowCount();
}

void Ttour::selectFirstRows(int count) {
  frame().tabTo(grid());
  frame().press(Qt::Key_Home, Qt::ControlModifier);
  for (int i = 1; i < count; ++i) frame().press(Qt::Key_Down, Qt::ShiftModifier);
}

QStringList Ttour::columnTexts(int column) const {
  QStringList texts;
  for (int row = 0; row < grid()->model()->rowCount(); ++row) texts << cellText(grid(), row, column);
  return texts;
}

int runTour(const QString& modulePath, const QString& sample, const QString& pictures) {
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);  // native file dialogs have no Qt controls to drive
  return Ttour(modulePath, sample, pictures).run();
}
