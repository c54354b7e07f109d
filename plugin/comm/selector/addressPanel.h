#pragma once

#include <QWidget>
#include <array>
#include <optional>

class QKeyEvent;
class ToctetBox;

/// The four boxes of an IP address in one frame. It looks and works like a single edit box: the cursor moves from box
/// to box as the user types, and a pasted address fills all four.
class TaddressPanel : public QWidget {
  Q_OBJECT

 public:
  static constexpr std::size_t boxCount = 4;
  using Tboxes = std::array<ToctetBox*, boxCount>;

  explicit TaddressPanel(QWidget* parent) : QWidget(parent) {}

  /// Sets the boxes in reading order. They are children of the panel. Called once.
  void setBoxes(const Tboxes& boxes);
  const Tboxes& boxes() const { return boxes_; }

  /// The first box without a number from 0 to 255, if there is one.
  std::optional<std::size_t> firstInvalid() const;

  /// Sets the focus to a box and selects its text.
  void focusBox(std::size_t box);

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool IPKeyPress(std::size_t box, const QKeyEvent& key);
  void IPChange(std::size_t box);
  void IPPaste(std::size_t box, const QString& text);
  void moveToStart(std::size_t box);
  void moveToEnd(std::size_t box);

  Tboxes boxes_{};
  // The third digit has just moved the focus to the next box. A dot typed now does not move it again.
  bool behindThirdDigit_ = false;
};
