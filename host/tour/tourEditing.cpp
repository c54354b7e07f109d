#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QTest>

#include "host/tour/listFolders.h"
#include "host/tour/tour.h"
#include "host/tour/tourHelp.h"

namespace {

const QString editorName = QStringLiteral("TfrmEqRecEditor");
const QString optionsName = QStringLiteral("TfrmOptions");

QLineEdit* edit(const TuserHands& hands, const char* name) {
  return hands.control<QLineEdit>(QString::fromLatin1(name));
}

}  // namespace

void Ttour::tourEditing() {
  step(QStringLiteral("search"), [this] { return searchPumps(); });
  step(QStringLiteral("clear"), [this] { return clearSearch(); });
  step(QStringLiteral("edit"), [this] { return editWithNextAndPrevious(); });
  step(QStringLiteral("new"), [this] { return addRecord(); });
  step(QStringLiteral("copy"), [this] { return copyRecords(); });
  step(QStringLiteral("delete"), [this] { return deleteRecords(); });
  step(QStringLiteral("undo"), [this] { return undoAndRedo(); });
  step(QStringLiteral("options"), [this] { return changeColumns(); });
  step(QStringLiteral("export"), [this] { return exportList(); });
  step(QStringLiteral("export as"), [this] { return exportListAs(); });
  step(QStringLiteral("help"), [this] { return openHelp(); });
  step(QStringLiteral("reopen"), [this] { return findItAllAgain(); });
}

QString Ttour::searchPumps() {
  launch();
  const QString sought = QStringLiteral("PUMP");
  const int column = columnOf(grid(), QStringLiteral("Description"));
  const auto matching = columnTexts(column).filter(sought, Qt::CaseInsensitive);
  frame().click(edit(frame(), "txtDescSearch"));
  frame().type(sought);
  frame().press(Qt::Key_Return);
  expect(columnTexts(column) == matching, QStringLiteral("not the records with that description"));
  picture(frame().window(), QStringLiteral("frame-search"));
  return QStringLiteral("%1 records with 'pump' in their description").arg(rows());
}

QString Ttour::clearSearch() {
  const auto all = fileContent(list_, dataFile).count('\n');
  frame().click(frame().button("btnClearSearch"));
  expect(rows() == all, QStringLiteral("%1 rows of %2").arg(rows()).arg(all));
  frame().clickHeading(grid(), 0);
  return QStringLiteral("all %1 records again, sorted by number").arg(all);
}

QString Ttour::editWithNextAndPrevious() {
  selectFirstRows(1);
  const QString before = cellText(grid(), 0, controlNumColumn);
  whileDialogIsOpen(
      editorName, [this] { frame().press(Qt::Key_Return); },
      [&](const TuserHands& editor) {
        picture(editor.window(), QStringLiteral("editor"));
        editor.press(Qt::Key_End);
        editor.type(QStringLiteral("-T"));
        editor.click(editor.button("btnNext"));
        expect(edit(editor, "txtControlNum")->text() == cellText(grid(), 1, controlNumColumn),
               QStringLiteral("Next does not show the next record"));
        editor.click(editor.button("btnPrev"));
        expect(edit(editor, "txtControlNum")->text() == before + QStringLiteral("-T"),
               QStringLiteral("the change was not stored"));
        editor.click(editor.button("btnOk"));
      });
  expect(cellText(grid(), 0, controlNumColumn) == before + QStringLiteral("-T"),
         QStringLiteral("the grid does not show the change"));
  return QStringLiteral("'%1' became '%2', stored by Next and Previous")
      .arg(before, cellText(grid(), 0, controlNumColumn));
}

QString Ttour::addRecord() {
  const int before = rows();
  addNumber(QStringLiteral("TOUR-1"));
  expect(rows() == before + 1 && cellText(grid(), before, controlNumColumn) == QStringLiteral("TOUR-1"),
         QStringLiteral("the record is not at the end of the list"));
  return QStringLiteral("record %1, typed as by a barcode scanner").arg(rows());
}

void Ttour::addNumber(const QString& controlNum) {
  whileDialogIsOpen(
      editorName, [this] { frame().press(Qt::Key_N, Qt::ControlModifier); },
      [&](const TuserHands& editor) {
        editor.type(controlNum);
        editor.press(Qt::Key_Return);  // as a barcode scanner does
        editor.click(editor.button("btnOk"));
      });
}

QString Ttour::copyRecords() {
  selectFirstRows(2);
  const int before = rows();
  frame().press(Qt::Key_D, Qt::ControlModifier);
  expect(rows() == before + 2 && cellText(grid(), before, controlNumColumn).isEmpty(),
         QStringLiteral("there are not two copies"));
  expect(grid()->selectionModel()->selectedRows().size() == 2, QStringLiteral("the copies are not selected"));
  picture(frame().window(), QStringLiteral("frame-copied"));
  return QStringLiteral("two copies without control numbers, selected at the end");
}

QString Ttour::deleteRecords() {
  const int before = rows();
  boxes_.pause();
  whileDialogIsOpen(
      QStringLiteral("QMessageBox"), [this] { frame().press(Qt::Key_Delete); },
      [this](const TuserHands& box) {
        picture(box.window(), QStringLiteral("delete-question"));
        box.press(Qt::Key_Y, Qt::AltModifier);
      });
  boxes_.resume();
  expect(rows() == before - 2, QStringLiteral("%1 rows").arg(rows()));
  return QStringLiteral("the two copies, after confirming");
}

QString Ttour::undoAndRedo() {
  const int before = rows();
  frame().press(Qt::Key_Z, Qt::ControlModifier);
  expect(rows() == before + 2 && grid()->selectionModel()->selectedRows().size() == 2,
         QStringLiteral("the two records are not back and selected"));
  picture(frame().window(), QStringLiteral("frame-undone"));
  frame().press(Qt::Key_Y, Qt::ControlModifier);
  expect(rows() == before, QStringLiteral("%1 rows").arg(rows()));
  return QStringLiteral("the two copies came back and went again");
}

QString Ttour::changeColumns() {
  const int before = grid()->model()->columnCount();
  whileDialogIsOpen(
      optionsName, [this] { frame().click(frame().button("btnOptions")); },
      [this](const TuserHands& options) {
        options.tabTo(options.control<QCheckBox>(QStringLiteral("chkCustom3")));
        options.press(Qt::Key_Space);
        options.tabTo(edit(options, "txtCustom3"));
        options.type(QStringLiteral("Notes & more"));
        picture(options.window(), QStringLiteral("options"));
        options.click(options.button("btnOK"));
      });
  expect(grid()->model()->columnCount() == before + 1, QStringLiteral("no column was added"));
  return QStringLiteral("column %1 is '%2'").arg(before + 1).arg(headingText(grid(), before));
}

QString Ttour::openHelp() {
  frame().press(Qt::Key_F1);
  const ThelpShown shown = awaitHelp();
  expect(shown.isThere, QStringLiteral("no help window"));
  if (shown.window != nullptr) picture(shown.window, QStringLiteral("help"));
  frame().window()->activateWindow();
  expect(comesToFront(frame().window()), QStringLiteral("the plug-in's window stays behind the help"));
  return shown.how;
}

QString Ttour::findItAllAgain() {
  lastOrder_ = columnTexts(controlNumColumn);
  const QString heading = headingText(grid(), grid()->model()->columnCount() - 1);
  leave();
  expect(!isHelpOpen(), QStringLiteral("the help window does not close"));
  launch();
  expect(columnTexts(controlNumColumn) == lastOrder_, QStringLiteral("the records have changed"));
  expect(headingText(grid(), grid()->model()->columnCount() - 1) == heading, QStringLiteral("the column is lost"));
  leave();
  return QStringLiteral("%1 records, including the new and the changed one").arg(lastOrder_.size());
}
