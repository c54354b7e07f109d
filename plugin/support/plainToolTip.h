#pragma once

#include <QString>
#include <QTextDocument>

/// A tooltip that shows the text as it is, even where it looks like formatted text.
inline QString plainToolTip(const QString& text) {
  return Qt::mightBeRichText(text) ? QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped()) : text;
}
