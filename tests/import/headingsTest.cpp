#include <QTest>

#include "import/columnMapping.h"
#include "import/headings.h"
#include "support/iniFile.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

TfieldList cellsOf(const char* line) {
  return tokenise(line, ',', false);
}

QByteArray textOf(const TcolumnMapping& mapping) {
  QByteArrayList columns;
  for (const int column : mapping.columns) columns << QByteArray::number(column);
  return columns.join(' ');
}

/// "1 2 0": the columns of the first fields; the others have none.
TcolumnMapping mappingOf(const QByteArray& columns) {
  TcolumnMapping mapping;
  std::size_t field = 0;
  for (const QByteArray& column : columns.split(' ')) mapping.columns.at(field++) = column.toInt();
  return mapping;
}

}  // namespace

/// What headings say, and what they say against a stored mapping.
class TheadingsTest : public QObject {
  Q_OBJECT
 private slots:
  void germanNames() {
    for (const char* row : {"Inventar-Nr.,Bezeichnung,Hersteller,Typ,Pr\xFC"
                            "fablauf",
                            "GER\xC4TENUMMER,Ger\xE4"
                            "tebezeichnung,Hersteller,Modell,Pruefablaufnummer",
                            "Geraete-ID,Beschreibung,Fabrikat,Typenbezeichnung,Pr\xFC"
                            "fprozedur-Nr."}) {
      QCOMPARE(textOf(TcolumnMapping::fromHeadings(cellsOf(row), defaultCaptions())), "1 2 3 4 0 0 0 5");
    }
  }

  void rowLooksLikeHeadings() {
    for (const char* headings : {"Asset Tag,Description,,4711", "<index>,<control nun>,<model>", "Inventarnummer",
                                 "Inventarnummer,Raum,Standort"}) {
      QVERIFY2(looksLikeHeadings(cellsOf(headings), {}), headings);
    }
    for (const char* data : {"", "0815,Device,Brand,Model", "TAG,Pump,,", "ID,Monitor 7", "A-1,Pump,Brand,Typ"}) {
      QVERIFY2(!looksLikeHeadings(cellsOf(data), {}), data);
    }
    const TfieldList title = cellsOf("Devices of ward 3");
    const TfieldList named = cellsOf("Tag,Name");
    QVERIFY(&headingRow(title, named, {}) == &named && &headingRow(named, cellsOf("ID"), {}) == &named);
    QVERIFY(&headingRow(title, title, {}) == &title);
  }

  void writtenHeadingsAreFoundAgain() {
    const std::initializer_list<std::pair<Tcaptions, QByteArray>> rows = {
        {{"Room", "Serial No.", "Notes, more"}, "Room|Serial No.|Notes, more"},
        {{"Model", "custom-1", ""}, "Custom 1|Custom 2|Custom 3"},
        {{"Custom 2", "Room", "ROOM"}, "Custom 1|Custom 2|Custom 3"},
        {{"Room", "Custom 1", "Tag"}, "Room|Custom 2|Custom 3"},
        {{"Index", "Ger\xE4t", "Raum"}, "Custom 1|Custom 2|Raum"}};
    for (const auto& [captions, customs] : rows) {
      std::vector<std::string> written(1);
      for (std::size_t field = 0; field < importFieldCount; ++field) written.push_back(writtenHeading(field, captions));
      const TfieldList headings(written.begin(), written.end());
      QCOMPARE(textOf(TcolumnMapping::fromHeadings(headings, captions)), "1 2 3 4 5 6 7 8");
      QCOMPARE(QByteArray::fromStdString(written[5] + '|' + written[6] + '|' + written[7]), customs);
      const TfieldList old = cellsOf("<index>,<control nun>,<model>,<custom1>,<custom2>,<custom3>");
      QCOMPARE(textOf(TcolumnMapping::fromHeadings(old, captions)), "2 0 0 3 4 5 6 0");
    }
  }

  void headingsThatContradictWin() {
    // stored, headings, start
    for (const char* row :
         {"~Tag,Brand~1 0 2 0 0 0 0 0", "0 2 3~Tag,Brand~1 0 2 0 0 0 0 0", "3 2~Name,Model~3 2 0 0 0 0 0 0",
          "1 0 3~Tag,Name,Brand~1 0 3 0 0 0 0 0", "2 1 4 3~Tag,x,Model,y~1 0 4 3 0 0 0 0",
          "1 4 2 3~Tag,Name,x,Model~1 2 0 4 0 0 0 0", "3~Tag,Name~1 2 0 0 0 0 0 0"}) {
      const QByteArrayList cells = QByteArray(row).split('~');
      const auto stored = cells[0].isEmpty() ? std::nullopt : std::optional(mappingOf(cells[0]));
      QCOMPARE(textOf(startMapping(stored, cellsOf(cells[1]), {})), cells[2]);
    }
  }

  void mappingWithoutDeviceIdIsNone() {
    const TtestFolder folder;
    const TiniFile ini(folder / "e.ini");
    mappingOf("0 1 2").save(ini);
    QVERIFY(!TcolumnMapping::load(ini, 9));
    mappingOf("4 1 2").save(ini);
    QVERIFY(TcolumnMapping::load(ini, 4) && !TcolumnMapping::load(ini, 3));
  }
};
EQREC_TEST(TheadingsTest);

#include "headingsTest.moc"
