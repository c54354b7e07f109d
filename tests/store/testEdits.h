#pragma once

#include <QTest>

#include "store/recordEdits.h"
#include "store/testRecords.h"

/// A row of texts for a test with data.
template <typename... Texts>
void row(const char* name, Texts... texts) {
  (QTest::newRow(name) << ... << QByteArray(texts));
}

/// As `tableOf`, or no records if the text is empty.
inline TequipRecTable listOf(const QByteArray& text) {
  return text.isEmpty() ? TequipRecTable() : tableOf(text);
}

/// A step told as "+A1 7 Pump" (adds at the end), "-0" (removes the record at 0) or "0=A1 7 Pump" (replaces it).
inline TlistStep stepOf(const QByteArray& text, std::size_t count) {
  if (text.startsWith('-')) return TremoveRecords{{text.mid(1).toUInt()}};
  const qsizetype sign = text.indexOf(text.startsWith('+') ? '+' : '=');
  const TequipRec record = tableOf(text.mid(sign + 1)).at(0);
  if (sign > 0) return TreplaceRecord{text.left(sign).toUInt(), record};
  return TinsertRecords{{static_cast<TrecordIndex>(count)}, {record}};
}

/// Makes steps, separated by commas, and returns their edits.
inline TlistEdits editsBy(const QByteArray& steps, TequipRecTable& table) {
  TrecordCounts counts(table);
  TlistEdits edits;
  for (const QByteArray& told : QByteArray(steps).replace(", ", ",").split(',')) {
    const TlistStep step = stepOf(told, table.count());
    for (TlistEdit& edit : editsOf(step, table, counts)) edits.push_back(std::move(edit));
    applyChange(table, TlistChange(step));
  }
  return edits;
}

inline QByteArray textOf(const std::optional<TequipRec>& record) {
  return record ? textOf(TequipRecTable({*record})) : "";
}

/// Each as "A1 7 Pump > A1 7 Lamp 000", with its three counts.
inline QByteArray textOf(const TlistEdits& edits) {
  QByteArrayList texts;
  for (const TlistEdit& edit : edits) {
    texts << textOf(edit.was) + " > " + textOf(edit.became) + ' ' + QByteArray::number(edit.alike) +
                 QByteArray::number(edit.sameNumber) + QByteArray::number(edit.sameContent);
  }
  return texts.join(", ");
}
