#pragma once

#include <QString>
#include <QStringList>
#include <optional>

class QKeyEvent;

/// The rules of the four boxes that an IP address is entered in, each for one octet of at most three digits.

inline constexpr int octetDigits = 3;

/// The number from 0 to 255 that a box holds; nothing where it is empty or holds anything else.
std::optional<int> octetValue(const QString& text);

/// What a pasted text enters: four octets where it is a dotted address, one where it is a number of at most three
/// digits, none otherwise. Blanks and line breaks around it do not matter.
QStringList pastedOctets(const QString& text);

/// A box as a key finds it.
struct ToctetState {
  QString text;
  int cursor = 0;
  bool selected = false;  ///< whether any of it is
};

enum class ToctetMove {
  none,         ///< the key is the box's own
  nextBox,      ///< to the next box, whose text it selects, that typing replaces it
  nextStart,    ///< to the beginning of the next box
  previousEnd,  ///< to the end of the previous box
};

/// Where a key moves to: a dot or a comma (the number pad's dot in many countries) to the next box; Left and Right at
/// the ends, and Backspace in an empty box, to its neighbours.
ToctetMove moveByKey(const QKeyEvent& key, const ToctetState& box);
