#include <QDir>
#include <QMessageBox>

#include "host/tour/listFolders.h"
#include "host/tour/tour.h"

// Saves that fail, changes that are offered again, and a list that another program changes meanwhile.

namespace {

const QString unsavedFile = QStringLiteral("EquipmentRecord.unsaved");

}  // namespace

void Ttour::tourUnsaved() {
  step(QStringLiteral("failed save"), [this] { return failSave(); });
  step(QStringLiteral("set aside"), [this] { return setChangesAside(); });
  step(QStringLiteral("restore"), [this] { return restoreChanges(); });
  step(QStringLiteral("two programs"), [this] { return joinLists(); });
  step(QStringLiteral("yesterday's list"), [this] { return goBackToBackup(); });
}

Ttour::Tbox Ttour::answerBox(const QString& pictureName, const std::function<void()>& open, Qt::Key key) {
  Tbox said;
  boxes_.pause();
  whileDialogIsOpen(QStringLiteral("QMessageBox"), open, [&](const TuserHands& hands) {
    const auto* box = qobject_cast<QMessageBox*>(hands.window());
    said = {box->windowTitle(), box->text(), box->informativeText()};
    picture(hands.window(), pictureName);
    hands.press(key);
  });
  boxes_.resume();
  return said;
}

/// Types a text at the beginning of the first row's description.
void Ttour::editDescription(const QString& text) {
  selectFirstRows(1);
  whileDialogIsOpen(
      QStringLiteral("TfrmEqRecEditor"), [this] { frame().press(Qt::Key_Return); },
      [&](const TuserHands& editor) {
        editor.tabTo(editor.control<QWidget>(QStringLiteral("txtDescription")));
        editor.press(Qt::Key_Home, Qt::ControlModifier);
        editor.type(text);
        editor.click(editor.button("btnOk"));
      });
}

QString Ttour::failSave() {
  const QDir folder(list_);
  const QByteArray before = fileContent(list_, infoFile);
  launch();
  editDescription(QStringLiteral("Checked: "));
  addNumber(QStringLiteral("TOUR-2"));
  expect(folder.exists(unsavedFile), QStringLiteral("the changes are not on the disk"));
  expect(QDir(list_).rename(QStringLiteral("DATA"), QStringLiteral("AWAY")), QStringLiteral("cannot rename DATA"));
  const Tbox box = answerBox(QStringLiteral("save-failed"), [this] { leave(); });
  expect(QDir(list_).rename(QStringLiteral("AWAY"), QStringLiteral("DATA")), QStringLiteral("cannot rename AWAY"));
  expect(box.caption == QStringLiteral("ER1STFILENOTFOUND"), QStringLiteral("the message is: ") + box.caption);
  expect(box.details.startsWith(QStringLiteral("Your changes are not lost.")),
         QStringLiteral("it says of the changes: ") + box.details);
  expect(fileContent(list_, infoFile) == before, QStringLiteral("the list has changed"));
  expect(folder.exists(unsavedFile), QStringLiteral("the changes are lost"));
  return QStringLiteral("without the folder DATA; the changes are in ") + unsavedFile;
}

/// Does not restore the changes, then has them offered again as the user's guide advises.
QString Ttour::setChangesAside() {
  const auto before = fileContent(list_, dataFile).count('\n');
  answerBox(
      QStringLiteral("unsaved-changes"), [this] { launch(); }, Qt::Key_Escape);
  expect(rows() == before, QStringLiteral("the list has changed"));
  leave();
  expect(QDir(list_).rename(unsavedFile + QStringLiteral(".kept-1"), unsavedFile), QStringLiteral("nothing is kept"));
  return QStringLiteral("with Escape; then renamed back");
}

QString Ttour::restoreChanges() {
  const Tbox box = answerBox(QStringLiteral("unsaved-changes"), [this] { launch(); });
  expect(box.caption == QStringLiteral("Unsaved Changes Found"), QStringLiteral("the message is: ") + box.caption);
  expect(columnTexts(controlNumColumn).contains(QStringLiteral("TOUR-2")),
         QStringLiteral("the new record is not back"));
  const QString undo = frame().button("btnUndo")->toolTip();
  expect(undo == QStringLiteral("Undo the restoration of 2 records (Ctrl+Z)"), QStringLiteral("Undo says: ") + undo);
  picture(frame().window(), QStringLiteral("frame-restored"));
  leave();
  expect(fileContent(list_, dataFile).contains("\"TOUR-2\"") && fileContent(list_, infoFile).contains("\"Checked: "),
         QStringLiteral("the changes are not saved"));
  expect(!QDir(list_).exists(unsavedFile), unsavedFile + QStringLiteral(" is still there"));
  return box.details + QStringLiteral(": restored and saved");
}

QString Ttour::joinLists() {
  launch();
  editDescription(QStringLiteral("Ours: "));
  addNumber(QStringLiteral("TOUR-3"));
  expect(changeList(list_, "\"Checked: ", "\"Theirs: ", "TOUR-4"), QStringLiteral("cannot change the list"));
  const QByteArray theirs = fileContent(list_, infoFile);
  const Tbox box = answerBox(QStringLiteral("list-changed-meanwhile"), [this] { leave(); });
  expect(box.caption == QStringLiteral("List Changed Meanwhile"), QStringLiteral("the message is: ") + box.caption);
  const QByteArray data = fileContent(list_, dataFile);
  expect(data.contains("\"TOUR-3\"") && data.contains("\"TOUR-4\""), QStringLiteral("a new record is missing"));
  const QByteArray info = fileContent(list_, infoFile);
  expect(info.contains("\"Ours: ") && !info.contains("\"Theirs: "), QStringLiteral("our description does not count"));
  expect(fileContent(list_, infoFile + QStringLiteral(".kept-1")) == theirs, QStringLiteral("no copy of their list"));
  return box.details;
}

/// Does what the user's guide advises.
QString Ttour::goBackToBackup() {
  const QDir backups(QDir(list_).filePath(QStringLiteral("DATA/BACKUP")));
  const QStringList days = backups.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
  expect(!days.isEmpty(), QStringLiteral("there is no backup"));
  const QString data = QDir(list_).filePath(QStringLiteral("DATA"));
  for (const QString& name : {dataFile, infoFile}) expect(QFile::remove(QDir(list_).filePath(name)), name);
  expect(copyFolder(backups.filePath(days.first()), data), QStringLiteral("cannot copy the backup"));
  launch();
  const QStringList numbers = columnTexts(controlNumColumn);
  expect(rows() == fileContent(list_, dataFile).count('\n'), QStringLiteral("%1 rows").arg(rows()));
  expect(numbers.filter(QStringLiteral("TOUR-")).isEmpty(), QStringLiteral("it is not the list before the tour"));
  leave();
  return QStringLiteral("%1 records of %2, before the tour's changes").arg(numbers.size()).arg(days.first());
}
