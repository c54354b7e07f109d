#include "host/tour/userHands.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMessageBox>
#include <QScrollArea>
#include <QStringList>
#include <QTest>
#include <QWindow>
#include <exception>

namespace {

constexpr int mostTabs = 60;

QPoint headingCentre(const QHeaderView* header, int column) {
  return {header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2};
}

}  // namespace

void expect(bool holds, const QString& why) {
  if (!holds) throw TstepFailed(why);
}

void TuserHands::click(QWidget* widget) const {
  QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow(widget, widget->rect().center()));
}

void TuserHands::clickHeading(QTableView* grid, int column) const {
  QHeaderView* header = grid->horizontalHeader();
  QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    inWindow(header->viewport(), headingCentre(header, column)));
}

void TuserHands::dragColumnEdge(QTableView* grid, int column, int pixels) const {
  QHeaderView* header = grid->horizontalHeader();
  const QPoint edge(header->sectionViewportPosition(column) + header->sectionSize(column) - 1, header->height() / 2);
  const QPoint from = inWindow(header->viewport(), edge);
  QWindow* window = window_->windowHandle();
  QTest::mouseMove(window, from);
  QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
  QTest::mouseMove(window, from + QPoint(pixels / 2, 0));
  QTest::mouseMove(window, from + QPoint(pixels, 0));
  QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, from + QPoint(pixels, 0));
}

void TuserHands::type(const QString& text) const {
  for (const QChar character : text) QTest::keyClick(window_->windowHandle(), character.toLatin1());
}

void TuserHands::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
  QTest::keyClick(window_->windowHandle(), key, modifiers);
}

void TuserHands::tabTo(QWidget* widget) const {
  for (int i = 0; i < mostTabs && QApplication::focusWidget() != widget; ++i) press(Qt::Key_Tab);
  expect(QApplication::focusWidget() == widget, QStringLiteral("Tab does not reach %1").arg(widget->objectName()));
}

QString TuserHands::controlNames() const {
  QStringList names;
  for (const QWidget* child : window_->findChildren<QWidget*>()) {
    if (!child->objectName().startsWith(QStringLiteral("qt_"))) names << child->objectName();
  }
  return names.join(QStringLiteral(", "));
}

/// Scrolls there first where the window scrolls.
QPoint TuserHands::inWindow(QWidget* widget, QPoint position) const {
  for (QWidget* above = widget->parentWidget(); above != nullptr; above = above->parentWidget()) {
    auto* area = qobject_cast<QScrollArea*>(above);
    if (area == nullptr) continue;
    const QPoint there = widget->mapTo(area->widget(), position);
    area->ensureVisible(there.x(), there.y());
  }
  return widget->mapTo(window_, position);
}

bool isBroughtToFront(QWidget* window) {
  if (!window->isActiveWindow()) window->activateWindow();
  const bool takesKeys = window->focusWidget() == nullptr || window->focusWidget()->hasFocus();
  return window->isActiveWindow() && QApplication::focusWindow() == window->windowHandle() && takesKeys;
}

bool comesToFront(QWidget* window) {
  return QTest::qWaitFor([window] { return isBroughtToFront(window); }, windowPatience);
}

void whileDialogIsOpen(const QString& dialog, const std::function<void()>& open,
                       const std::function<void(const TuserHands&)>& act) {
  constexpr int often = 10;
  std::exception_ptr failure;
  bool acted = false;
  const QPointer<QWidget> opener = QApplication::activeWindow();
  QElapsedTimer sinceOpen;
  sinceOpen.start();
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    QWidget* window = QApplication::activeModalWidget();
    const bool found = window != nullptr && (window->objectName() == dialog || window->inherits(qPrintable(dialog)));
    const bool isLate = sinceOpen.hasExpired(windowPatience);
    if (acted || !found || (!isBroughtToFront(window) && !isLate)) return;
    acted = true;
    try {
      expect(!isLate, QStringLiteral("%1 does not become active").arg(dialog));
      act(TuserHands(window));
    } catch (const TstepFailed&) {
      failure = std::current_exception();
      window->close();
    }
  });
  timer.start(often);
  open();
  if (failure) std::rethrow_exception(failure);
  expect(acted, QStringLiteral("%1 does not open").arg(dialog));
  if (opener.isNull() || opener->isHidden()) return;  // it closed together with the dialog
  expect(comesToFront(opener), QStringLiteral("the window behind %1 does not come back").arg(dialog));
}

QString cellText(const QTableView* grid, int row, int column) {
  return grid->model()->index(row, column).data().toString();
}

QString headingText(const QTableView* grid, int column) {
  return grid->model()->headerData(column, Qt::Horizontal).toString();
}

int columnOf(const QTableView* grid, const QString& heading) {
  for (int column = 0; column < grid->model()->columnCount(); ++column) {
    if (headingText(grid, column) == heading) return column;
  }
  throw TstepFailed(QStringLiteral("no column %1").arg(heading));
}

TboxWatcher::TboxWatcher() {
  constexpr int often = 50;
  connect(&timer_, &QTimer::timeout, this, &TboxWatcher::closeBox);
  timer_.start(often);
}

QString TboxWatcher::takeText() {
  QString said;
  said.swap(said_);
  return said;
}

void TboxWatcher::closeBox() {
  auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) return;
  said_ += QStringLiteral("[%1] %2 ").arg(box->windowTitle(), box->text());
  box->done(QMessageBox::Ok);
}
