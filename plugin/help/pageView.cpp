#include "help/pageView.h"

#include <QTextDocument>
#include <algorithm>

TpageView::TpageView(QWidget* parent) : QTextBrowser(parent) {
  document()->setDocumentMargin(14);
  document()->setIndentWidth(24);
}

QVariant TpageView::loadResource(int type, const QUrl& name) {
  QVariant resource = QTextBrowser::loadResource(type, name);
  if (type != QTextDocument::ImageResource) return resource;
  const auto picture = QImage::fromData(resource.toByteArray());
  if (picture.isNull()) return resource;
  pictures_.insert(name, picture);
  return fitted(picture);
}

void TpageView::resizeEvent(QResizeEvent* event) {
  for (auto picture = pictures_.cbegin(); picture != pictures_.cend(); ++picture) {
    document()->addResource(QTextDocument::ImageResource, picture.key(), fitted(picture.value()));
  }
  if (!pictures_.isEmpty()) document()->markContentsDirty(0, document()->characterCount());
  QTextBrowser::resizeEvent(event);
}

QImage TpageView::fitted(const QImage& picture) const {
  const int width = std::max(1, viewport()->width() - 2 * qRound(document()->documentMargin()));
  if (picture.width() <= width) return picture;
  // On a high-density screen the picture keeps more of its pixels.
  const int pixels = std::min(picture.width(), qRound(width * devicePixelRatioF()));
  QImage result = picture.scaledToWidth(pixels, Qt::SmoothTransformation);
  result.setDevicePixelRatio(static_cast<qreal>(pixels) / width);
  return result;
}
