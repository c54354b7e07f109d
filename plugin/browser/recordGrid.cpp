#include "browser/recordGrid.h"

#include "browser/gridPainting.h"

namespace {

constexpr int pixelsPerRow = 18;
constexpr int minimumColumnWidth = 12;

}  // namespace

TrecordGrid::TrecordGrid(QWidget* parent) : QTableView(parent), header_(new TgridHeader(this)) {
  setHorizontalHeader(header_);
  header_->setFixedHeight(pixelsPerRow);
  header_->setMinimumSectionSize(minimumColumnWidth);
  verticalHeader()->hide();
  verticalHeader()->setMinimumSectionSize(pixelsPerRow);
  verticalHeader()->setDefaultSectionSize(pixelsPerRow);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  setItemDelegate(new TgridDelegate(this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(ContiguousSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  connect(header_, &QHeaderView::sectionPressed, this, &TrecordGrid::headerPressed);
}

void TrecordGrid::showSort(int column, bool ascending) {
  header_->showSort(column, ascending);
}
