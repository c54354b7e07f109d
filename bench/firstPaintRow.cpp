#include <QApplication>
#include <QHeaderView>
#include <QTableWidget>
#include <memory>

#include "bench/rows.h"
#include "browser/EquipmentRecordPluginFrame.h"
#include "support/headedGrid.h"

namespace {

/// Detects the first paint of a grid's cells.
class TpaintWatch : public QObject {
 public:
  explicit TpaintWatch(const QAbstractScrollArea& area) { area.viewport()->installEventFilter(this); }

  /// Processes events until the paint is done.
  void await() const {
    while (!painted_) QApplication::processEvents();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return QObject::eventFilter(watched, event);
  }

 private:
  bool painted_ = false;
};

/// Content and size of the frame's grid, for a table that shows the same.
struct TgridContent {
  explicit TgridContent(const TheadedGrid& grid);

  QSize size;
  int rowHeight;
  std::vector<int> widths;
  std::vector<QStringList> rows;
};

TgridContent::TgridContent(const TheadedGrid& grid) : size(grid.size()), rowHeight(grid.rowHeight(0)) {
  const QAbstractItemModel& model = *grid.model();
  for (int column = 0; column < model.columnCount(); ++column) widths.push_back(grid.columnWidth(column));
  for (int row = 0; row < model.rowCount(); ++row) {
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column) texts << model.index(row, column).data().toString();
    rows.push_back(texts);
  }
}

void fill(QTableWidget& table, const TgridContent& content) {
  table.setColumnCount(static_cast<int>(content.widths.size()));
  table.setRowCount(static_cast<int>(content.rows.size()));
  for (int column = 0; column < table.columnCount(); ++column) {
    table.setColumnWidth(column, content.widths[static_cast<std::size_t>(column)]);
  }
  for (int row = 0; row < table.rowCount(); ++row) {
    const QStringList& texts = content.rows[static_cast<std::size_t>(row)];
    for (int column = 0; column < texts.size(); ++column)
      table.setItem(row, column, new QTableWidgetItem(texts[column]));
  }
}

double measureTable(const TgridContent& content) {
  std::unique_ptr<QTableWidget> table;
  return millisecondsOf([&] {
    table = std::make_unique<QTableWidget>();
    const TpaintWatch watch(*table);
    table->verticalHeader()->hide();
    table->verticalHeader()->setMinimumSectionSize(content.rowHeight);
    table->verticalHeader()->setDefaultSectionSize(content.rowHeight);
    table->resize(content.size);
    fill(*table, content);
    table->show();
    watch.await();
  });
}

/// Opens and shows a frame. Its destruction, which saves the list, is not measured.
double measureFrame(const TframeContext& context, const std::function<void(const TheadedGrid&)>& look = {}) {
  std::unique_ptr<TEquipmentRecordPluginFrame> frame;
  const TheadedGrid* grid = nullptr;
  const double milliseconds = millisecondsOf([&] {
    frame = std::make_unique<TEquipmentRecordPluginFrame>(context);
    grid = frame->findChild<TheadedGrid*>();
    const TpaintWatch watch(*grid);
    frame->show();
    watch.await();
  });
  if (look) look(*grid);
  return milliseconds;
}

/// Compares opening the frame, from the files on the disk to the first paint of its grid, with a table of prepared
/// items whose texts are already in memory.
Tsides prepareFirstPaint(const TbenchFolders& folders) {
  const auto ownCopy = folders.scratch / "frame";
  std::filesystem::copy(folders.data, ownCopy, std::filesystem::copy_options::recursive);
  const TframeContext context{ownCopy, ownCopy, {}};
  std::shared_ptr<const TgridContent> content;
  measureFrame(context, [&](const TheadedGrid& grid) { content = std::make_shared<TgridContent>(grid); });
  require(content->rows.size() == equipRecLimit, "the frame does not show the full list");
  return {[context] { return measureFrame(context); }, [content] { return measureTable(*content); }};
}

}  // namespace

std::vector<Trow> firstPaintRows(const TbenchFolders& folders) {
  return {{"first-paint", "ms", 0.333, 15, [folders] { return prepareFirstPaint(folders); }}};
}
