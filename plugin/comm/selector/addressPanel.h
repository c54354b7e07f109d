#pragma once

#include <QWidget>
#include <array>
#include <optional>

class QKeyEvent;
class ToctetBox;

/// The four boxes of an IP address in one frame, which looks and is used like a single edit box: the cursor wanders
/// from box to box as the address is typed, and a pasted address fills all four.
class TaddressPanel : public QWidget {
  Q_OBJECT

 public:
  static constexpr std::size_t boxCount = 4;
  using Tboxes = std::array<ToctetBox*, boxCount>;

  explicit TaddressPanel(QWidget* parent) : QWidget(parent) {}

  /// The boxes in reading order, children of the panel; to be told once.
  void setBoxes(const Tboxes& boxes);
  const Tboxes& boxes() const { return boxes_; }

  /// The first box that holds no number from 0 to 255; nothing where all do.
  std::optional<std::size_t> firstInvalid() const;

  /// Puts the focus into a box and selects what it holds.
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
  // The third digit has just moved on: a dot that is typed now belongs behind it and moves no further.
  bool behindThirdDigit_ = false;
};
