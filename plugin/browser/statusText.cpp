#include "browser/statusText.h"

#include <QStringList>

namespace {

QString countsText(const Tstatus& status) {
  if (!status.isSearching && status.shown == status.total) return recordCountText(status.total);
  const QString verb = status.total == 1 ? QStringLiteral("matches") : QStringLiteral("match");
  const QString hits = QStringLiteral("%1 of %2 %3").arg(status.shown).arg(recordCountText(status.total), verb);
  return status.shown > 0 ? hits : hits + QStringLiteral(". Press Clear to see all.");
}

}  // namespace

QString recordCountText(std::size_t count) {
  return count == 1 ? QStringLiteral("1 record") : QStringLiteral("%1 records").arg(count);
}

QString statusText(const Tstatus& status) {
  QStringList parts(countsText(status));
  if (status.selected > 1) parts << QStringLiteral("%1 selected").arg(status.selected);
  if (!status.event.isEmpty()) parts << status.event;
  return parts.join(QStringLiteral(" \u00B7 "));
}

QString attentionText(std::size_t count) {
  if (count == 0) return {};
  return recordCountText(count) + (count == 1 ? QStringLiteral(" needs attention") : QStringLiteral(" need attention"));
}

QString uploadWarning(std::size_t count, std::size_t total) {
  if (count == 0) return {};
  return QStringLiteral("%1 of %2 %3 no control number, or one that others have.")
      .arg(QString::number(count), recordCountText(total), count == 1 ? QStringLiteral("has") : QStringLiteral("have"));
}

QString emptyGridText(const Tstatus& status) {
  if (status.shown > 0) return {};
  if (status.total > 0) return countsText(status);
  return QStringLiteral("No records yet. Press New to add one, or Import to read a file.");
}
