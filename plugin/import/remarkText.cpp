#include "import/remarkText.h"

#include <QStringList>
#include <initializer_list>
#include <utility>

#include "support/windows1252.h"

namespace {

/// "Ω (U+03A9), 漢 (U+6F22)"
QString characterNames(const std::u32string& characters) {
  QStringList names;
  for (const char32_t character : characters) {
    const QString code = QString::number(character, 16).toUpper().rightJustified(4, u'0');
    names << QStringLiteral("%1 (U+%2)").arg(QString::fromUcs4(&character, 1), code);
  }
  return names.join(QStringLiteral(", "));
}

/// "%1" stands for the field's name, "%2" for what was there, "%3" for the field's longest length.
QString pattern(TremarkKind kind) {
  switch (kind) {
    case TremarkKind::noDeviceId:
      return QStringLiteral("No Device ID. The row was not imported.");
    case TremarkKind::knownSkipped:
      return QStringLiteral("This Device ID is in use. The row was skipped.");
    case TremarkKind::knownSeveral:
      return QStringLiteral("Several records have this Device ID. None was updated.");
    case TremarkKind::beyondLimit:
      return QStringLiteral("Beyond 18432 records. This row and the new ones after it were not imported.");
    case TremarkKind::otherBreak:
      return QStringLiteral("The row holds line ends of another kind. It may be several rows.");
    case TremarkKind::rowCut:
      return QStringLiteral("The row is longer than 4095 characters. Its end was left out.");
    case TremarkKind::quoteNotClosed:
      return QStringLiteral("A quote is not closed. The field ends with its line.");
    case TremarkKind::otherFieldCount:
      return QStringLiteral("Other number of fields: %2.");
    case TremarkKind::deviceIdCut:
    case TremarkKind::fieldCut:
      return QStringLiteral("%1 cut to %3 characters, from \"%2\".");
    case TremarkKind::cutAtZero:
      return QStringLiteral("%1 cut at a zero byte, after \"%2\".");
    case TremarkKind::characterReplaced:
      return QStringLiteral("%1: the record cannot hold %2. It was replaced.");
    case TremarkKind::procedureUnreadable:
      return QStringLiteral("%1 not readable: \"%2\".");
  }
  return {};
}

}  // namespace

QString importFieldName(std::size_t field, const Tcaptions& captions) {
  if (field == importTestProc) return QStringLiteral("Test Procedure Number");
  if (field == fieldControlNum) return QStringLiteral("Device ID");
  if (field == fieldDescription) return QStringLiteral("Device Description");
  return fromRecordText(columnHeading(static_cast<TcolumnId>(field), captions));
}

QString remarkText(const TimportFinding& finding, const Tcaptions& captions) {
  const bool hasField = finding.field < importFieldCount;
  const QString name = hasField ? importFieldName(finding.field, captions) : QString();
  const QString was = finding.characters.empty() ? fromRecordText(finding.was) : characterNames(finding.characters);
  const std::size_t size = finding.field < textFields.size() ? textFields.at(finding.field).size : 1;
  QString text = pattern(finding.kind);
  // The text from the file comes last, because it may hold a placeholder.
  return text.replace(QStringLiteral("%1"), name)
      .replace(QStringLiteral("%3"), QString::number(size - 1))
      .replace(QStringLiteral("%2"), was);
}

QString importSummary(const TimportRun& run) {
  const std::initializer_list<std::pair<std::size_t, const char*>> parts = {{run.records.size(), "added"},
                                                                            {run.updated, "updated"},
                                                                            {run.skipped, "skipped"},
                                                                            {run.withoutDeviceId, "without Device ID"},
                                                                            {run.withRemarks, "with remarks"}};
  QStringList texts;
  if (run.records.empty() && run.updated == 0) texts << QStringLiteral("Nothing added");
  for (const auto& [count, what] : parts) {
    if (count > 0) texts << QStringLiteral("%1 %2").arg(count).arg(QLatin1String(what));
  }
  return texts.join(QStringLiteral(", "));
}
