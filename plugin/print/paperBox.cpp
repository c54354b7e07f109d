#include "print/paperBox.h"

#include <QGuiApplication>
#include <QPrinterInfo>

#include "print/paper.h"

TpaperBox::TpaperBox(QWidget* parent) : QComboBox(parent) {
  for (const auto id : {QPageSize::A4, QPageSize::Letter, QPageSize::Legal, QPageSize::A3, QPageSize::A5}) {
    indexOf(QPageSize(id));
  }
}

QPageSize TpaperBox::paper() const {
  return paperOfKey(currentData().toString().toStdString());
}

void TpaperBox::setPaper(const QPageSize& paper) {
  setCurrentIndex(indexOf(paper));
}

void TpaperBox::showPopup() {
  if (!std::exchange(hasPrinterPapers_, true)) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const auto papers = QPrinterInfo::defaultPrinter().supportedPageSizes();
    for (const QPageSize& paper : papers) indexOf(paper);
    QGuiApplication::restoreOverrideCursor();
  }
  QComboBox::showPopup();
}

/// Papers without a name could not be kept and are left to the printer's own dialog.
int TpaperBox::indexOf(const QPageSize& paper) {
  const QString key = QString::fromStdString(paperKey(paper));
  const int index = findData(key);
  if (index >= 0 || key.isEmpty()) return index;
  // The name without the one in another standard: "Letter / ANSI A".
  addItem(QPageSize::name(paper.id()).section(QStringLiteral(" / "), 0, 0), key);
  return count() - 1;
}
