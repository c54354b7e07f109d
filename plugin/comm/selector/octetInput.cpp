#include "comm/selector/octetInput.h"

#include <QKeyEvent>
#include <algorithm>

namespace {

/// Any digits but these are letters here; a value above 255 is still one that was entered.
bool isOctetText(const QString& text) {
  return !text.isEmpty() && text.size() <= octetDigits &&
         std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

std::optional<int> octetValue(const QString& text) {
  if (!isOctetText(text) || text.toInt() > 255) return std::nullopt;
  return text.toInt();
}

QStringList pastedOctets(const QString& text) {
  const QStringList parts = text.trimmed().split(u'.');
  const bool whole = parts.size() == 1 || parts.size() == 4;
  return whole && std::all_of(parts.begin(), parts.end(), isOctetText) ? parts : QStringList();
}

ToctetMove moveByKey(const QKeyEvent& key, const ToctetState& box) {
  if (key.text() == u"." || key.text() == u",") return ToctetMove::nextBox;
  const bool plain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (!plain || box.selected) return ToctetMove::none;
  switch (key.key()) {
    case Qt::Key_Left:
      return box.cursor == 0 ? ToctetMove::previousEnd : ToctetMove::none;
    case Qt::Key_Right:
      return box.cursor == box.text.size() ? ToctetMove::nextStart : ToctetMove::none;
    case Qt::Key_Backspace:
      return box.text.isEmpty() ? ToctetMove::previousEnd : ToctetMove::none;
    default:
      return ToctetMove::none;
  }
}
