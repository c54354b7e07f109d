#include "host/look.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

namespace {

QPalette darkPalette() {
  const QColor window(0x2B, 0x2B, 0x2B);
  const QColor text(0xF0, 0xF0, 0xF0);
  const QColor disabled(0x80, 0x80, 0x80);
  QPalette palette(QColor(0x3C, 0x3C, 0x3C), window);  // leaves the links in dark blue, as some desktops do
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, disabled);
  }
  palette.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::ToolTipBase, window);
  palette.setColor(QPalette::PlaceholderText, QColor(0xA0, 0xA0, 0xA0));
  palette.setColor(QPalette::Highlight, QColor(0x2A, 0x82, 0xDA));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

}  // namespace

void setLook(int points, bool isDark) {
  QFont font = QApplication::font();
  font.setPointSize(points);
  QApplication::setFont(font);
  if (!isDark) return;
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));  // others take colours from the desktop
  QApplication::setPalette(darkPalette());
}
