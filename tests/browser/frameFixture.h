#pragma once

#include <QHeaderView>
#include <QLineEdit>
#include <QMap>
#include <QStringList>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <functional>
#include <memory>

#include "browser/EquipmentRecordPluginFrame.h"
#include "tools/dialogs.h"
#include "tools/messageRecorder.h"
#include "tools/testFiles.h"

/// Writes both record files. Each record has a control number and a description.
inline void writeRecords(const std::filesystem::path& folder, const QByteArrayList& controlNums,
                         const QByteArrayList& descriptions) {
  QByteArray data;
  QByteArray info;
  for (qsizetype i = 0; i < controlNums.size(); ++i) {
    data += '"' + controlNums[i] + "\"," + QByteArray::number(i % 500 + 1) + '\n';
    info += '"' + controlNums[i] + "\",\"" + descriptions[i] + R"(","","","","","")" + '\n';
  }
  writeBytes(folder / "DATA/eq.dat", data);
  writeBytes(folder / "DATA/eqinfo.dat", info);
}

/// The cells of a grid's first rows as its view paints them: looked at again only where the model reports a change.
class TpaintedCells final : public QObject {
 public:
  explicit TpaintedCells(const QAbstractItemModel* model) : model_(model) {
    const QModelIndex last = model->index(model->rowCount() - 1, model->columnCount() - 1);
    look(model->index(0, 0), last);
    connect(model, &QAbstractItemModel::dataChanged, this, &TpaintedCells::look);
  }
  QString at(int row, int column) const { return texts_.value({row, column}); }

 private:
  void look(const QModelIndex& first, const QModelIndex& last) {
    for (int row = first.row(); row <= std::min(last.row(), 100); ++row) {
      for (int column = first.column(); column <= last.column(); ++column) {
        texts_[{row, column}] = model_->index(row, column).data(Qt::DisplayRole).toString();
      }
    }
  }

  const QAbstractItemModel* model_;
  QMap<std::pair<int, int>, QString> texts_;
};

/// A frame with files in a folder of its own.
class TframeFixture {
 public:
  /// Three records: c, a, b, with the descriptions "same", "same" and "Alone €".
  TframeFixture() { writeRecords(folder.path(), {"c", "a", "b"}, {"same", "same", "Alone \x80"}); }

  void writeIni(const QByteArray& text) const { writeBytes(folder / "EquipmentRecord.ini", text); }
  QByteArray ini() const { return linesOf(folder / "EquipmentRecord.ini"); }
  QByteArray data() const { return bytesOf(folder / "DATA/eq.dat"); }

  /// Builds the frame, shows it and waits until it is active.
  void open() {
    frame.reset();
    frame = std::make_unique<TEquipmentRecordPluginFrame>(
        TframeContext{folder.path(), folder.path(), [this] { onReturn(); }});
    painted = std::make_unique<TpaintedCells>(grid()->model());
    frame->show();
    QVERIFY(QTest::qWaitForWindowActive(frame.get()));
  }

  template <typename Control = QLineEdit>
  Control* control(const char* name) const {
    return ::control<Control>(frame.get(), name);
  }
  QTableView* grid() const { return control<QTableView>("tblEqRec"); }
  void click(const char* button) const { ::click(frame.get(), button); }
  /// Presses a key in the control that has the focus.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
    QTest::keyClick(frame->windowHandle(), key, modifiers);
  }
  void search(const char* box, const QString& text) const {
    control(box)->setText(text);
    click("btnSearch");
  }
  void pressHeading(int column, Qt::MouseButton button = Qt::LeftButton) const {
    const QHeaderView* header = grid()->horizontalHeader();
    const QPoint centre(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, 5);
    QTest::mouseClick(header->viewport(), button, Qt::NoModifier, centre);
  }
  /// The cells of a column as they are on the screen, joined by blanks.
  QString column(int column) const {
    QStringList cells;
    for (int row = 0; row < grid()->model()->rowCount(); ++row) {
      cells << painted->at(row, column);
    }
    return cells.join(QLatin1Char(' '));
  }
  QList<int> selectedRows() const {
    QList<int> rows;
    for (const QModelIndex& index : grid()->selectionModel()->selectedRows()) rows << index.row();
    std::sort(rows.begin(), rows.end());
    return rows;
  }

  TtestFolder folder;
  TmessageRecorder messages;
  std::function<void()> onReturn = [] {};
  std::unique_ptr<TEquipmentRecordPluginFrame> frame;
  std::unique_ptr<TpaintedCells> painted;
};

/// A frame that is open.
struct TopenFrame : public TframeFixture {
  explicit TopenFrame(const QByteArray& ini = {}) {
    if (!ini.isEmpty()) writeIni(ini);
    open();
  }
};
