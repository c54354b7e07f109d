#pragma once

#include <QWidget>
#include <cstddef>

class Treport;

/// One page of a report on the screen. The report must outlive the widget.
class TpreviewPage : public QWidget {
  Q_OBJECT

 public:
  explicit TpreviewPage(QWidget* parent = nullptr) : QWidget(parent) {}

  void setReport(const Treport& report);
  /// Shows another page, counted from 0.
  void setPage(std::size_t page);
  /// 1 is the paper's real size, as far as the screen's resolution is known.
  void setZoom(double zoom);
  double zoom() const { return zoom_; }
  /// The zoom at which the paper is as wide as `room`, and the one at which all of it fits into `room`.
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
