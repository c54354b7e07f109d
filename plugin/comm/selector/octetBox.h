#pragma once

#include <QLineEdit>
#include <QStringList>
#include <optional>

/// One of the four boxes of an IP address, each for one octet, and the rules of entering an address in them.

inline constexpr int octetDigits = 3;

/// The number from 0 to 255 in a box; none if the box is empty or holds anything else.
std::optional<int> octetValue(const QString& text);

/// The octets in a pasted text: four for a dotted address, one for a number of at most three digits, else none.
/// Surrounding blanks and line breaks do not count.
QStringList pastedOctets(const QString& text);

enum class ToctetMove {
  none,         ///< the box handles the key itself
  nextBox,      ///< to the next box, and selects its text so that typing replaces it
  nextStart,    ///< to the beginning of the next box
  previousEnd,  ///< to the end of the previous box
};

/// Accepts at most three digits, however they are entered. A pasted text may be meant for all boxes, so the box only
/// reports it.
class ToctetBox : public QLineEdit {
  Q_OBJECT

 public:
  explicit ToctetBox(QWidget* parent);

  /// Wide enough for the digits and a small margin.
  QSize sizeHint() const override;

  /// Where a key moves the cursor. A dot or a comma (the dot of many number pads) moves to the next box; Left and Right
  /// at the ends, and Backspace in an empty box, move to the neighbours.
  ToctetMove moveByKey(const QKeyEvent& key) const;

  /// Replaces the slot of the base class, which the context menu finds by its name.
  Q_SLOT void paste();

 signals:
  /// The user wants to paste this text; the box has not changed.
  void pasted(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
};
