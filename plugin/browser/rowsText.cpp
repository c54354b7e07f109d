#include "browser/rowsText.h"

#include <QStringList>
#include <functional>

#include "support/windows1252.h"

namespace {

QString spreadsheetCell(const std::string& bytes) {
  QString text = fromRecordText(bytes);
  for (const QChar separator : {u'\t', u'\n', u'\r'}) text.replace(separator, u' ');
  if (!text.startsWith(u'"')) return text;
  return u'"' + text.replace(QStringLiteral("\""), QStringLiteral("\"\"")) + u'"';
}

QString spreadsheetLine(const TcolumnLayout& columns, const std::function<std::string(TcolumnId)>& textOf) {
  QStringList cells;
  for (int column = 0; column < columns.count(); ++column) cells << spreadsheetCell(textOf(columns.id(column)));
  return cells.join(u'\t') + u'\n';
}

}  // namespace

QString rowsText(const TrecordList& list, const TrowRange& rows) {
  const TcolumnLayout& columns = list.columns();
  QString text = spreadsheetLine(columns, [&](TcolumnId id) { return columns.header(id); });
  for (std::size_t row = rows.top; row <= rows.bottom; ++row) {
    text += spreadsheetLine(columns, [&](TcolumnId id) { return list.view().cellText(row, id); });
  }
  return text;
}
