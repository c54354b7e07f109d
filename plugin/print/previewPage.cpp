#include "print/previewPage.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "print/report.h"

void TpreviewPage::setReport(const Treport& report) {
  report_ = &report;
}

void TpreviewPage::setPage(std::size_t page) {
  page_ = page;
  update();
}

void TpreviewPage::setZoom(double zoom) {
  zoom_ = zoom;
  setFixedSize((realSize() * zoom).toSize());
  update();
}

double TpreviewPage::zoomForWidth(QSize room) const {
  return room.width() / realSize().width();
}

double TpreviewPage::zoomForPage(QSize room) const {
  return std::min(zoomForWidth(room), room.height() / realSize().height());
}

QSizeF TpreviewPage::realSize() const {
  return report_->paper().fullRect(QPageLayout::Inch).size() * logicalDpiX();
}

void TpreviewPage::paintEvent(QPaintEvent* event) {
  const double dotsPerInch = logicalDpiX() * zoom_;
  QPainter painter(this);
  painter.fillRect(event->rect(), Qt::white);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(report_->paper().paintRect(QPageLayout::Inch).topLeft() * dotsPerInch);
  report_->paintPage(painter, page_, dotsPerInch);
}
