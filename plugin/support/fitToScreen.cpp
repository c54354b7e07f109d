#include "support/fitToScreen.h"

#include <QAbstractButton>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace {

/// A designed least size would be the limit even where the text needs more.
void fitButtons(const QWidget& window) {
  for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
    const QSize designed = button->minimumSize();
    if (designed.isNull()) continue;
    button->setMinimumSize(designed.expandedTo(button->minimumSizeHint()).boundedTo(button->maximumSize()));
  }
}

/// What the screen has for a window without its title bar and edges, which nobody knows before it is shown.
QSize roomOn(const QWidget& window) {
  const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
  const int edge = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
  return window.screen()->availableSize() - QSize(2 * edge, title + edge);
}

QSize neededBy(const QWidget& window, int width) {
  const QSize least = window.minimumSizeHint().expandedTo(window.minimumSize());
  return {least.width(), std::max(least.height(), window.layout()->totalMinimumHeightForWidth(width))};
}

/// The size that the window has or needs. A wider one needs less height.
QSize openingSize(const QWidget& window, const QSize& room) {
  const QSize size = window.size().expandedTo(window.minimumSizeHint());
  const QSize full = size.expandedTo(neededBy(window, size.width()));
  return full.height() <= room.height() ? full : QSize(room.width(), full.height()).boundedTo(room);
}

/// Moves all contents of the window into an area that scrolls.
void makeScroll(QWidget& window) {
  const QPointer<QWidget> focus = window.focusWidget();
  auto* contents = new QWidget(&window);
  window.layout()->setSizeConstraint(QLayout::SetDefaultConstraint);
  contents->setLayout(window.layout());
  auto* area = new QScrollArea(&window);
  area->setObjectName(QStringLiteral("scrContents"));
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidgetResizable(true);
  area->setWidget(contents);
  auto* layout = new QVBoxLayout(&window);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(area);
  area->show();  // or else, in a window that is open, the focus would not come back
  if (focus) focus->setFocus();
}

void scrollContents(QWidget& window, const QSize& needed) {
  const QSize room = roomOn(window);
  const int bar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &window);
  makeScroll(window);
  window.setMinimumSize(0, 0);
  window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  window.resize(QSize(needed.width() + bar, needed.height() + bar).expandedTo(window.size()).boundedTo(room));
}

/// A message box arranges itself, and only in a smaller font does it get smaller: about by the square.
void shrinkFont(QWidget& box) {
  constexpr int leastPoints = 9;
  const double excess = static_cast<double>(box.height()) / roomOn(box).height();
  QFont font = box.font();
  if (excess <= 1 || font.pointSize() <= leastPoints) return;
  font.setPointSize(std::max(leastPoints, static_cast<int>(font.pointSize() / std::sqrt(excess)) - 1));
  box.setFont(font);
}

/// Some dialogs grow while they are open.
class TgrowthWatcher : public QObject {
 public:
  explicit TgrowthWatcher(QWidget& window) : QObject(&window), window_(window) { window.installEventFilter(this); }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Resize) {
      QMetaObject::invokeMethod(
          this, [this] { look(); }, Qt::QueuedConnection);
    }
    return false;
  }

  /// Returns whether the contents fit.
  bool look() {
    if (qobject_cast<QMessageBox*>(&window_) != nullptr) {
      shrinkFont(window_);
      return true;
    }
    const QSize room = roomOn(window_);
    const QSize needed = neededBy(window_, room.width());
    const bool fits = needed == needed.boundedTo(room);
    if (!fits) scrollContents(window_, needed);
    return fits;
  }

 private:
  QWidget& window_;
};

}  // namespace

void fitToScreen(QWidget& window) {
  if (window.layout() == nullptr) return;
  const QString name = QStringLiteral("growthWatcher");
  if (window.findChild<QObject*>(name, Qt::FindDirectChildrenOnly) != nullptr) return;
  auto* watcher = new TgrowthWatcher(window);
  watcher->setObjectName(name);
  fitButtons(window);
  if (watcher->look() && qobject_cast<QMessageBox*>(&window) == nullptr)
    window.resize(openingSize(window, roomOn(window)));
}
