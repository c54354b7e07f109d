#include "host/tour/userHands.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMessageBox>
#include <QRadioButton>
#include <QScrollArea>
#include <QStringList>
#include <QTest>
#include <QWindow>
#include <exception>

namespace {

constexpr int mostTabs = 60;
constexpr int mostRadioButtons = 5;

QPoint headingCentre(const QHeaderView* header, int column) {
  return {header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2};
}

}  // namespace

void expect(bool holds, const QString& why) {
  if (!holds) throw TstepFailed(why);
}

void TuserHands::click(QWidget* widget) const {
  if (!hasMouse_) return pressByKeys(widget);
  QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow(widget, widget->rect().center()));
}

void TuserHands::pressByKeys(QWidget* widget) const {
  if (const auto* radioButton = qobject_cast<QRadioButton*>(widget)) {
    tabToRadioButton(radioButton);
  } else {
    tabTo(widget);
  }
  if (qobject_cast<QAbstractButton*>(widget) != nullptr) press(Qt::Key_Space);
}

/// Of a group of radio buttons Tab reaches one, and the arrow keys the others.
void TuserHands::tabToRadioButton(const QRadioButton* button) const {
  const auto isInGroup = [button](const QWidget* widget) {
    return qobject_cast<const QRadioButton*>(widget) != nullptr && widget->parentWidget() == button->parentWidget();
  };
  for (int i = 0; i < mostTabs && !isInGroup(QApplication::focusWidget()); ++i) press(Qt::Key_Tab);
  for (int i = 0; i < 2 * mostRadioButtons && QApplication::focusWidget() != button; ++i) {
    press(i < mostRadioButtons ? Qt::Key_Down : Qt::Key_Up);
  }
  expect(QApplication::focusWidget() == button, QStringLiteral("no key reaches %1").arg(button->objectName()));
}

void TuserHands::clickHeading(QTableView* grid, int column) const {
  if (!hasMouse_) {
    tabTo(grid);
    return press(column == 9 ? Qt::Key_0 : static_cast<Qt::Key>(Qt::Key_1 + column), Qt::ControlModifier);
  }
  QHeaderView* header = grid->horizontalHeader();
  QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    inWindow(header->viewport(), headingCentre(header, column)));
}

void TuserHands::dragColumnEdge(QTableView* grid, int column, int pixels) const {
  if (!hasMouse_) {
    tabTo(grid);
    for (int i = 0; i < pixels / 10; ++i) press(Qt::Key_Right, Qt::ControlModifier);
    return;
  }
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

void TuserHands::pressMenuKey() const {
  QWidget* target = QApplication::focusWidget();
  const QPoint there = target->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
  QContextMenuEvent event(QContextMenuEvent::Keyboard, there, target->mapToGlobal(there));
  QCoreApplication::sendEvent(target, &event);
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
