#include "support/readableLink.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double leastContrast = 4.5;  // what readers of a screen need

double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// From 1 to 21.
double contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace

QColor readableLink(const QPalette& palette, QPalette::ColorRole background) {
  const QColor link = palette.color(QPalette::Link);
  const bool isReadable = contrast(link, palette.color(background)) >= leastContrast;
  return isReadable ? link : palette.color(QPalette::Text);
}
