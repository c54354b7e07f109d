#include "comm/selector/addressPanel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QStyleOptionFrame>
#include <algorithm>
#include <utility>

#include "comm/selector/octetBox.h"

void TaddressPanel::setBoxes(const Tboxes& boxes) {
  boxes_ = boxes;
  for (std::size_t i = 0; i < boxCount; ++i) {
    ToctetBox* box = boxes_.at(i);
    box->installEventFilter(this);
    connect(box, &ToctetBox::textEdited, this, [this, i] { IPChange(i); });
    connect(box, &ToctetBox::pasted, this, [this, i](const QString& text) { IPPaste(i, text); });
  }
  for (QLabel* dot : findChildren<QLabel*>()) dot->setForegroundRole(QPalette::Text);
}

std::optional<std::size_t> TaddressPanel::firstInvalid() const {
  const auto valid = [](const ToctetBox* box) { return octetValue(box->text()).has_value(); };
  const auto found = std::find_if_not(boxes_.begin(), boxes_.end(), valid);
  return found == boxes_.end() ? std::nullopt : std::optional<std::size_t>(found - boxes_.begin());
}

void TaddressPanel::focusBox(std::size_t box) {
  boxes_.at(box)->setFocus();
  boxes_.at(box)->selectAll();
}

bool TaddressPanel::eventFilter(QObject* watched, QEvent* event) {
  const auto box = std::find(boxes_.begin(), boxes_.end(), watched);
  if (box == boxes_.end()) return false;
  switch (event->type()) {
    case QEvent::KeyPress:
      return IPKeyPress(static_cast<std::size_t>(box - boxes_.begin()), *static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      behindThirdDigit_ = false;
      update();
      return false;
    default:
      return false;
  }
}

bool TaddressPanel::IPKeyPress(std::size_t box, const QKeyEvent& key) {
  switch (boxes_.at(box)->moveByKey(key)) {
    case ToctetMove::none:
      return false;
    case ToctetMove::nextBox:
      if (!std::exchange(behindThirdDigit_, false) && box + 1 < boxCount) focusBox(box + 1);
      break;
    case ToctetMove::nextStart:
      if (box + 1 < boxCount) moveToStart(box + 1);
      break;
    case ToctetMove::previousEnd:
      if (box > 0) moveToEnd(box - 1);
      break;
  }
  return true;
}

void TaddressPanel::IPChange(std::size_t box) {
  behindThirdDigit_ = false;
  if (boxes_.at(box)->text().size() < octetDigits || box + 1 == boxCount) return;
  focusBox(box + 1);
  behindThirdDigit_ = true;
}

void TaddressPanel::IPPaste(std::size_t box, const QString& text) {
  const QStringList octets = pastedOctets(text);
  if (octets.size() == 1) boxes_.at(box)->insert(octets.first());
  if (octets.size() != static_cast<qsizetype>(boxCount)) return;
  for (std::size_t i = 0; i < boxCount; ++i) boxes_.at(i)->setText(octets.at(static_cast<qsizetype>(i)));
  moveToEnd(boxCount - 1);
}

void TaddressPanel::moveToStart(std::size_t box) {
  boxes_.at(box)->setFocus();
  boxes_.at(box)->home(false);
}

void TaddressPanel::moveToEnd(std::size_t box) {
  boxes_.at(box)->setFocus();
  boxes_.at(box)->end(false);
}

/// Paints one frame in the platform's style. The boxes have none of their own.
void TaddressPanel::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionFrame option;
  option.initFrom(this);
  option.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, this);
  option.state |= QStyle::State_Sunken;
  if (std::any_of(boxes_.begin(), boxes_.end(), [](const ToctetBox* box) { return box->hasFocus(); })) {
    option.state |= QStyle::State_HasFocus;
  }
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
}
