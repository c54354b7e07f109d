#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include "host/tour/dialogChain.h"
#include "host/tour/tour.h"

// What the window says: its status line, the link at the line's end, and the menu of the list.

void Ttour::tourStatus() {
  step(QStringLiteral("nothing found"), [this] { return findNothing(); });
  step(QStringLiteral("attention"), [this] { return showAttention(); });
  step(QStringLiteral("change"), [this] { return changeRecords(); });
  step(QStringLiteral("scan"), [this] { return scanNumber(); });
}

QString Ttour::status() const {
  return frame().control<QLabel>(QStringLiteral("lblStatus"))->text();
}

QString Ttour::findNothing() {
  launch();
  frame().press(Qt::Key_F, Qt::ControlModifier);
  frame().type(QStringLiteral("no such device"));
  frame().press(Qt::Key_Return);
  QString said = status();
  expect(said.startsWith(QStringLiteral("0 of ")), QStringLiteral("the line says: ") + said);
  picture(frame().window(), QStringLiteral("frame-nothing-found"));
  frame().press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
  return said;
}

QString Ttour::showAttention() {
  const int all = rows();
  auto* link = frame().control<QLabel>(QStringLiteral("lblAttention"));
  QString said = link->accessibleName();
  frame().tabTo(link);
  frame().press(Qt::Key_Return);
  expect(rows() < all && said.startsWith(QString::number(rows())), QStringLiteral("%1 rows").arg(rows()));
  picture(frame().window(), QStringLiteral("frame-attention"));
  frame().press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
  return said;
}

/// Opens the list's menu by its key, and chooses Change...
void Ttour::chooseChange() {
  frame().pressMenuKey();
  expect(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }, windowPatience),
         QStringLiteral("no menu"));
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  picture(menu, QStringLiteral("menu"));
  const auto* change = menu->findChild<QAction*>(QStringLiteral("mnuChange"));
  for (int i = 0; i < menu->actions().size() && menu->activeAction() != change; ++i) {
    QTest::keyClick(menu, Qt::Key_Down);
  }
  QTest::keyClick(menu, Qt::Key_Return);
}

QString Ttour::changeRecords() {
  selectFirstRows(3);
  whileDialogIsOpen(
      QStringLiteral("TfrmChange"), [this] { chooseChange(); },
      [this](const TuserHands& change) {
        auto* field = change.control<QComboBox>(QStringLiteral("cbField"));
        change.tabTo(field);
        change.press(Qt::Key_End);
        change.press(Qt::Key_Home);
        change.tabTo(change.control<QWidget>(QStringLiteral("txtValue")));
        change.type(QStringLiteral("Infusion pump"));
        picture(change.window(), QStringLiteral("change"));
        change.press(Qt::Key_Return);
      });
  QString said = status();
  expect(said.endsWith(QStringLiteral("3 records changed")), QStringLiteral("the line says: ") + said);
  picture(frame().window(), QStringLiteral("frame-changed"));
  frame().press(Qt::Key_Z, Qt::ControlModifier);
  return said;
}

QString Ttour::scanNumber() {
  const QString number = cellText(grid(), rows() - 1, controlNumColumn);
  frame().tabTo(grid());
  frame().type(number);
  QString typed = status();
  whileDialogIsOpen(
      QStringLiteral("TfrmEqRecEditor"), [this] { frame().press(Qt::Key_Return); },
      [&](const TuserHands& editor) {
        expect(editor.control<QLineEdit>(QStringLiteral("txtControlNum"))->text() == number,
               QStringLiteral("another record opens"));
        editor.press(Qt::Key_Escape);
      });
  leave();
  return typed;
}
