#pragma once

#include <QCheckBox>
#include <QStyleOptionButton>

/// A check box that shows its text to the letter, "&" included, which otherwise would mark a shortcut.
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
  void initStyleOption(QStyleOptionButton* option) const override {
    QCheckBox::initStyleOption(option);
    option->text.replace(QLatin1Char('&'), QStringLiteral("&&"));
  }
};
