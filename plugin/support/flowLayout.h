#pragma once

#include <QLayout>
#include <memory>
#include <vector>

/// Lays out widgets in rows from left to right, in as many rows as they need. So a row of buttons fits any window and
/// any font. A spacer moves what follows it in its row to the right.
class TflowLayout : public QLayout {
  Q_OBJECT

 public:
  explicit TflowLayout(QWidget* parent);
  ~TflowLayout() override;

  /// Takes the place of the layout that a widget has, with its items and margins.
  static void replaceLayoutOf(QWidget* widget);

  void addItem(QLayoutItem* item) override;
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;

  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& place) override;

 private:
  /// The items of the row that begins with item `first`: the index behind its last one, and its size.
  struct Trow {
    int end;
    QSize size;
  };
  Trow rowAt(int first, int width) const;
  void placeRow(int first, const Trow& row, const QRect& place) const;
  QSize margins() const;

  std::vector<std::unique_ptr<QLayoutItem>> items_;
};
