#include "host/tour/pictureFile.h"

#include <QHash>
#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype mostColors = 128;

using Tcounts = QHash<QRgb, int>;

Tcounts countColors(const QImage& picture) {
  Tcounts counts;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
  }
  return counts;
}

/// The colours that occur most.
QList<QRgb> commonColors(const Tcounts& counts) {
  QList<QRgb> colors = counts.keys();
  std::sort(colors.begin(), colors.end(),
            [&](QRgb a, QRgb b) { return std::pair(-counts[a], a) < std::pair(-counts[b], b); });
  return colors.first(std::min(colors.size(), mostColors));
}

int nearest(const QList<QRgb>& colors, QRgb sought) {
  const auto distance = [sought](QRgb color) {
    const int red = qRed(color) - qRed(sought);
    const int green = qGreen(color) - qGreen(sought);
    const int blue = qBlue(color) - qBlue(sought);
    return red * red + green * green + blue * blue;
  };
  const auto found =
      std::min_element(colors.begin(), colors.end(), [&](QRgb a, QRgb b) { return distance(a) < distance(b); });
  return static_cast<int>(found - colors.begin());
}

}  // namespace

bool savePicture(const QImage& picture, const QString& path) {
  const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
  const Tcounts counts = countColors(opaque);
  const QList<QRgb> colors = commonColors(counts);
  QHash<QRgb, int> places;
  for (auto color = counts.keyBegin(); color != counts.keyEnd(); ++color) places[*color] = nearest(colors, *color);
  QImage small(opaque.size(), QImage::Format_Indexed8);
  small.setColorTable(colors);
  for (int y = 0; y < small.height(); ++y) {
    for (int x = 0; x < small.width(); ++x) small.scanLine(y)[x] = static_cast<uchar>(places[opaque.pixel(x, y)]);
  }
  return small.save(path, nullptr, 0);  // packed as tightly as possible
}
