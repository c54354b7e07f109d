#pragma once

#include <QWidget>
#include <cstddef>

class Treport;

/// One page of a report on the screen, painted when it comes in sight. The report must outlive it.
class TpreviewPage : public QWidget {
  Q_OBJECT

 public:
  explicit TpreviewPage(QWidget* parent = nullptr) : QWidget(parent) {}

  void setReport(const Treport& report);
  /// Shows another page, counted from 0.
  void setPage(std::size_t page);
  /// 1 shows the paper in its real size, as far as the screen's resolution is known.
  void setZoom(double zoom);
  double zoom() const { return zoom_; }
  /// The zoom at which the paper is as wide as `room`, and that at which all of it fits in there.
  double zoomForWidth(QSize room) const;
  double zoomForPage(QSize room) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QSizeF realSize() const;

  const Treport* report_ = nullptr;
  std::size_t page_ = 0;
  double zoom_ = 1;
};
