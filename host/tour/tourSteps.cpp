#include <QApplication>
#include <QHeaderView>
#include <QLayout>
#include <QScreen>
#include <QTest>
#include <algorithm>
#include <cstdlib>

#include "host/tour/listFolders.h"
#include "host/tour/tour.h"

namespace {

constexpr int recordLimit = 18432;
const QString description = QStringLiteral("Description");

/// The record numbers in the list's file, ordered by description, byte by byte.
QStringList numbersByDescription(const QString& folder) {
  QList<QPair<QByteArray, int>> records;
  for (const QByteArray& line : fileContent(folder, infoFile).split('\n')) {
    const QByteArray fields = line.mid(line.indexOf("\",\"") + 3);
    if (!line.isEmpty()) records.append({fields.left(fields.indexOf('"')), static_cast<int>(records.size()) + 1});
  }
  std::sort(records.begin(), records.end());
  QStringList numbers;
  for (const auto& record : records) numbers << QString::number(record.second);
  return numbers;
}

}  // namespace

void Ttour::tourSampleList() {
  step(QStringLiteral("open the host"), [this] { return openHost(); });
  step(QStringLiteral("open the plug-in"), [this] { return openPlugin(); });
  step(QStringLiteral("sort"), [this] { return sortByDescription(); });
  step(QStringLiteral("sort backwards"), [this] { return sortBackwards(); });
  step(QStringLiteral("select"), [this] { return selectWithKeyboard(); });
  step(QStringLiteral("widen a column"), [this] { return widenColumn(); });
  step(QStringLiteral("leave"), [this] { return leaveWithKeyboard(); });
  step(QStringLiteral("open again"), [this] { return openAgain(); });
}

void Ttour::tourEmptyList() {
  step(QStringLiteral("empty list"), [this] { return showEmpty(); });
}

void Ttour::tourFullList() {
  step(QStringLiteral("full list"), [this] { return showFull(); });
}

QString Ttour::openHost() {
  startHost(list_);
  const auto* button = host().button("btnLaunch");
  expect(button->text() == QStringLiteral("Equipment Record\nEditor"),
         QStringLiteral("the button has another caption"));
  pictures(host_.get(), QStringLiteral("host"));
  return QStringLiteral("the launch button has the plug-in's caption");
}

QString Ttour::openPlugin() {
  launch();
  const auto lines = fileContent(list_, dataFile).count('\n');
  expect(grid()->model()->rowCount() == lines, QStringLiteral("the grid has not as many rows as the file has lines"));
  const QWidget* window = frame().window();
  const QSize opening(792, 536);
  const bool fitsScreen = opening == opening.boundedTo(window->screen()->availableSize());
  const bool fitsFont = window->layout()->totalMinimumHeightForWidth(opening.width()) <= opening.height();
  expect(!fitsScreen || !fitsFont || window->size() == opening,
         QStringLiteral("the window has the wrong opening size"));
  pictures(frame().window(), QStringLiteral("frame"));
  return QStringLiteral("%1 records in %2 columns").arg(lines).arg(grid()->model()->columnCount());
}

QString Ttour::sortByDescription() {
  const int column = columnOf(grid(), description);
  frame().clickHeading(grid(), column);
  const QStringList texts = columnTexts(column);
  expect(columnTexts(0) == numbersByDescription(list_), QStringLiteral("the rows are not in order"));
  picture(frame().window(), QStringLiteral("frame-sorted"));
  return QStringLiteral("by description, from '%1' to '%2'").arg(texts.first(), texts.last());
}

QString Ttour::sortBackwards() {
  const QStringList before = columnTexts(0);
  frame().clickHeading(grid(), columnOf(grid(), description));
  QStringList after = columnTexts(0);
  std::reverse(after.begin(), after.end());
  expect(before == after, QStringLiteral("the order is not exactly reversed"));
  return QStringLiteral("the exact reverse order, record by record");
}

QString Ttour::selectWithKeyboard() {
  frame().tabTo(grid());
  frame().press(Qt::Key_Home, Qt::ControlModifier);
  frame().press(Qt::Key_Down);
  frame().press(Qt::Key_Down, Qt::ShiftModifier);
  frame().press(Qt::Key_Down, Qt::ShiftModifier);
  const auto rows = grid()->selectionModel()->selectedRows();
  expect(rows.size() == 3 && rows.first().row() == 1, QStringLiteral("%1 rows selected").arg(rows.size()));
  picture(frame().window(), QStringLiteral("frame-selected"));
  return QStringLiteral("rows 2 to 4 with Shift and the arrow keys");
}

QString Ttour::widenColumn() {
  const int column = columnOf(grid(), description);
  const int before = grid()->columnWidth(column);
  frame().dragColumnEdge(grid(), column, 60);
  widened_ = grid()->columnWidth(column);
  expect(widened_ == before + 60, QStringLiteral("%1 pixels became %2").arg(before).arg(widened_));
  return QStringLiteral("Description dragged from %1 to %2 pixels, without sorting").arg(before).arg(widened_);
}

QString Ttour::leaveWithKeyboard() {
  const QByteArray data = fileContent(list_, dataFile);
  const QByteArray info = fileContent(list_, infoFile);
  lastOrder_ = columnTexts(columnOf(grid(), description));
  leave();
  expect(fileContent(list_, dataFile) == data && fileContent(list_, infoFile) == info,
         QStringLiteral("the files have changed"));
  const QByteArray settings = fileContent(list_, QStringLiteral("EquipmentRecord.ini"));
  expect(settings.contains("SORTASC=0"), QStringLiteral("the sort order was not stored"));
  return QStringLiteral("records saved byte for byte, layout stored, back in the host");
}

QString Ttour::openAgain() {
  launch();
  expect(columnTexts(columnOf(grid(), description)) == lastOrder_, QStringLiteral("the order is lost"));
  const int width = grid()->columnWidth(columnOf(grid(), description));
  expect(std::abs(width - widened_) <= 1, QStringLiteral("the width is lost"));  // stored for texts of the usual size
  leave();
  return QStringLiteral("the order and the column width are unchanged");
}

QString Ttour::showEmpty() {
  const QString folder = temporary_.filePath(QStringLiteral("empty"));
  expect(makeEmptyList(list_, folder), QStringLiteral("cannot prepare the list"));
  startHost(folder);
  launch();
  expect(grid()->model()->rowCount() == 1 && cellText(grid(), 0, 0).isEmpty(),
         QStringLiteral("the grid has not exactly one blank row"));
  pictures(frame().window(), QStringLiteral("frame-empty"));
  leave();
  return QStringLiteral("headings and one blank row");
}

QString Ttour::showFull() {
  const QString folder = temporary_.filePath(QStringLiteral("full"));
  expect(makeLongList(list_, folder, recordLimit), QStringLiteral("cannot prepare the list"));
  startHost(folder);
  launch();
  expect(grid()->model()->rowCount() == recordLimit, QStringLiteral("records are missing"));
  frame().clickHeading(grid(), 0);
  frame().tabTo(grid());
  frame().press(Qt::Key_End, Qt::ControlModifier);
  expect(grid()->currentIndex().row() == recordLimit - 1, QStringLiteral("Ctrl+End does not go to the last row"));
  pictures(frame().window(), QStringLiteral("frame-full"));
  leave();
  return QStringLiteral("%1 records, scrolled to the last one").arg(recordLimit);
}
