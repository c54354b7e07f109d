#include "browser/frameFixture.h"

#include <QHeaderView>
#include <QTest>

TframeFixture::TframeFixture() {
  writeRecords(folder.path(), {"c", "a", "b"}, {"same", "same", "Alone"});
}

void TframeFixture::open() {
  frame.reset();
  frame = std::make_unique<TEquipmentRecordPluginFrame>(
      TframeContext{folder.path(), folder.path(), [this] { onReturn(); }});
  frame->show();
  QVERIFY(QTest::qWaitForWindowActive(frame.get()));
}

void TframeFixture::pressHeading(int column, Qt::MouseButton button) const {
  const QHeaderView* header = grid()->horizontalHeader();
  const QPoint centre(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, 5);
  QTest::mouseClick(header->viewport(), button, Qt::NoModifier, centre);
}

QString TframeFixture::column(int column) const {
  QStringList cells;
  for (int row = 0; row < grid()->model()->rowCount(); ++row) {
    cells << grid()->model()->index(row, column).data(Qt::DisplayRole).toString();
  }
  return cells.join(QLatin1Char(' '));
}

QList<int> TframeFixture::selectedRows() const {
  QList<int> rows;
  for (const QModelIndex& index : grid()->selectionModel()->selectedRows()) rows << index.row();
  std::sort(rows.begin(), rows.end());
  return rows;
}

void writeRecords(const std::filesystem::path& folder, const QByteArrayList& controlNums,
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
