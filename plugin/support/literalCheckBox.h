#pragma once

#include <QCheckBox>
#include <QStyle>
#include <QStyleOptionButton>

/// A check box that shows its text to the letter, "&" included, which otherwise would mark a shortcut. A text that has
/// no room ends in an ellipsis; a short one leaves the rest of the box as good a place to click.
class TliteralCheckBox : public QCheckBox {
  Q_OBJECT

 public:
  using QCheckBox::QCheckBox;

  void setLiteralText(const QString& text) {
    setText(text);
    setShortcut(QKeySequence());
    setAccessibleName(text);
  }

 protected:
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }

  void initStyleOption(QStyleOptionButton* option) const override {
    QCheckBox::initStyleOption(option);
    const int room = style()->subElementRect(QStyle::SE_CheckBoxContents, option, this).width();
    option->text = fontMetrics().elidedText(option->text, Qt::ElideRight, room);
    option->text.replace(QLatin1Char('&'), QStringLiteral("&&"));
  }
};
