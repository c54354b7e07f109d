#pragma once

#include <QHash>
#include <QImage>
#include <QTextBrowser>

/// Shows a page of the guide, and scales pictures wider than the view down to its width.
class TpageView : public QTextBrowser {
  Q_OBJECT

 public:
  explicit TpageView(QWidget* parent);

  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QImage fitted(const QImage& picture) const;

  QHash<QUrl, QImage> pictures_;  // in their original size
};
