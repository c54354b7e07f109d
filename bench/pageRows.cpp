#include <QApplication>
#include <memory>

#include "bench/rows.h"
#include "browser/columnLayout.h"
#include "browser/gridModel.h"
#include "browser/settings.h"
#include "browser/view.h"
#include "store/datastructs.h"
#include "support/headedGrid.h"
#include "testproc/autosequenceFileStructs.h"

namespace {

constexpr std::size_t shortList = 100;
constexpr QSize gridSize(1100, 700);

/// The grid's model, which counts how often the grid asks it about a cell.
class TcountingModel : public TgridModel {
 public:
  using TgridModel::TgridModel;

  QVariant data(const QModelIndex& index, int role) const override {
    ++asked;
    return TgridModel::data(index, role);
  }

  mutable int asked = 0;
};

TcolumnLayout everyColumn() {
  TbrowserSettings settings;
  settings.shown.fill(true);
  TcolumnLayout columns;
  columns.build(settings);
  return columns;
}

/// A grid with all columns, shown and scrolled to its last page. It holds the last records of the full list, so that a
/// short grid paints the same page as a long one.
class Tpage {
 public:
  Tpage(const TbenchFolders& folders, std::size_t recordCount) {
    TequipRecTable all;
    all = fullTable(folders);
    loadTitles(folders, titles_);
    std::vector<TequipRec> last;
    for (std::size_t i = all.count() - recordCount; i < all.count(); ++i) {
      last.push_back(all.at(static_cast<TrecordIndex>(i)));
    }
    records_ = TequipRecTable(std::move(last));
    view_.showAll();
    model_.refill();
    grid_.setModel(&model_);
    grid_.resize(gridSize);
    grid_.show();
    grid_.scrollToBottom();
    QApplication::processEvents();
  }
  Tpage(const Tpage&) = delete;
  Tpage& operator=(const Tpage&) = delete;

  void refill() { model_.refill(); }
  void paint() { grid_.viewport()->repaint(); }

  int takeAsked() { return std::exchange(model_.asked, 0); }

  /// The number of cells at least partly within the viewport.
  int visibleCells() const {
    const QRect page = grid_.viewport()->rect();
    int cells = 0;
    for (int row = grid_.rowAt(0); row >= 0 && row < model_.rowCount(); ++row) {
      for (int column = 0; column < model_.columnCount(); ++column) {
        cells += grid_.visualRect(model_.index(row, column)).intersects(page) ? 1 : 0;
      }
    }
    return cells;
  }

 private:
  TequipRecTable records_;
  TtestProcTable titles_;
  Tview view_{records_, titles_};
  TcolumnLayout columns_ = everyColumn();
  TcountingModel model_{view_, columns_, [](TrecordIndex) { return QString(); }};
  TheadedGrid grid_{nullptr};
};

/// Does the same to a grid with the full list and to one with the short list, often enough for the clock's precision.
Tsides compareLists(const TbenchFolders& folders, int repetitions, void (*work)(Tpage&)) {
  const auto full = std::make_shared<Tpage>(folders, equipRecLimit);
  const auto few = std::make_shared<Tpage>(folders, shortList);
  const auto measure = [repetitions, work](Tpage& page) {
    const auto repeat = [&] {
      for (int i = 0; i < repetitions; ++i) work(page);
    };
    return millisecondsOf(repeat) / repetitions;
  };
  return {[=] { return measure(*full); }, [=] { return measure(*few); }};
}

/// Compares how often the model is asked when the full list is refilled and painted with the number of cells shown.
Tsides prepareCells(const TbenchFolders& folders) {
  const auto page = std::make_shared<Tpage>(folders, equipRecLimit);
  const auto ask = [page] {
    page->takeAsked();
    page->refill();
    page->paint();
    const int asked = page->takeAsked();
    require(asked >= page->visibleCells(), "the page was not painted");
    return double(asked);
  };
  return {ask, [page] { return double(page->visibleCells()); }};
}

Tsides preparePaint(const TbenchFolders& folders) {
  return compareLists(folders, 5, [](Tpage& page) { page.paint(); });
}

Tsides prepareRefill(const TbenchFolders& folders) {
  return compareLists(folders, 500, [](Tpage& page) { page.refill(); });
}

Tsides prepareRefillAndPaint(const TbenchFolders& folders) {
  return compareLists(folders, 5, [](Tpage& page) {
    page.refill();
    page.paint();
  });
}

}  // namespace

std::vector<Trow> pageRows(const TbenchFolders& folders) {
  return {{"page-cells", "calls", 3.0, 3, [folders] { return prepareCells(folders); }},
          {"page-paint", "ms", 1.5, 31, [folders] { return preparePaint(folders); }},
          {"refill", "ms", 2.0, 31, [folders] { return prepareRefill(folders); }},
          {"refill-and-paint", "ms", 1.5, 31, [folders] { return prepareRefillAndPaint(folders); }}};
}
