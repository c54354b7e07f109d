#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

// Controls that show a caption chosen by the user: exactly as it is ("&" included, which otherwise marks a shortcut),
// in one line, and with an ellipsis when it does not fit.

class TcaptionLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  /// A long caption does not widen its window.
  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }
  QSize sizeHint() const override { return minimumSizeHint(); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    QPainter(this).drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
  }
};

/// A click anywhere in the box counts, also beside a short caption.
class TcaptionCheckBox : public QCheckBox {
  Q_OBJECT

 public:
  using QCheckBox::QCheckBox;

  void setCaption(const QString& caption) {
    setText(caption);
    setShortcut(QKeySequence());
    setAccessibleName(caption);
  }

 protected:
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }

  void initStyleOption(QStyleOptionButton* option) const override {
    QCheckBox::initStyleOption(option);
    const int width = style()->subElementRect(QStyle::SE_CheckBoxContents, option, this).width();
    option->text = fontMetrics().elidedText(option->text, Qt::ElideRight, width);
    option->text.replace(QLatin1Char('&'), QStringLiteral("&&"));
  }
};
