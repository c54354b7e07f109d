#include <QTest>

#include "import/importOptions.h"
#include "import/suggestion.h"
#include "tools/testList.h"

namespace {

QByteArray suggestedFor(const QByteArray& file) {
  const auto found = TimportSuggestion::of({file.constData(), static_cast<std::size_t>(file.size())}, {"Raum"});
  return found ? QByteArray::fromStdString(found->text()) : QByteArray("nothing");
}

QByteArray utf16(const char* text) {
  const QString characters = QString::fromUtf8(text);
  return {reinterpret_cast<const char*>(characters.utf16()), characters.size() * 2};  // little-endian, as the machine
}

}  // namespace

/// What a file seems to be.
class TsuggestionTest : public QObject {
  Q_OBJECT
 private slots:
  void fileSeemsToBe() {
    const std::initializer_list<std::pair<QByteArray, QByteArray>> files = {
        {"", "nothing"},
        {"\n\n", "nothing"},
        {"A 1\nA 2\nA 3\n", "nothing"},
        {"A letter, to you.\nIt says nothing, or little, or less.\nBye.\n", "nothing"},
        {"Inventarnummer\n7\n", "Comma, headings in row 1"},
        {"<index>,<control nun>,<description>\n0,a,x, y\n1,b\n", "Comma, headings in row 1"},
        {"1;5,0;Pump, small\n2;7,5;Bed, large\n", "Semi-Colon"},
        {"a|b\rc|d\r", "Vertical Pipe, quotes as spreadsheets write them"},
        {"a\tb\nc\t5\" rail\n", "Tab"},
        {"a|\"Blue\" ward|x\nb|\"Red\" ward|y\nc|\"\"|z\n", "Vertical Pipe"},
        {"a,\"b;c;d\"\nb,\"e;f;g\"\n", "Comma, quotes as spreadsheets write them"},
        {"\"a\", \"b\"\n\"c\" ,\"d, e\"\n", "Comma, every field in quotes"},
        {"\"a\",\"b\"\n\"c\",\"d, e\"\n", "Comma, quotes as spreadsheets write them"},
        {"a b c\nd e f\n", "Space"},
        {"a^b\nc^d\n", "Other (^)"},
        {"sep=#\r\nTag#Raum\r\n1#2\r\n", "Other (#), headings in row 2"},
        {"Devices of 2026\n\nID,Name,Brand\n1,\"5\"\" rail\",x\n2,y,z\n",
         "Comma, quotes as spreadsheets write them, headings in row 3"},
        {"Ger\xE4te-ID;Typ\n1;2\n", "Semi-Colon, Windows-1252, headings in row 1"},
        {"Ger\xC3\xA4te-ID;Typ\n1;2\n", "Semi-Colon, UTF-8, headings in row 1"},
        {utf16("\uFEFFGer\u00E4te-ID\tTyp\r\n1\t2\r\n"), "Tab, UTF-16, headings in row 1"}};
    for (const auto& [file, suggested] : files) QCOMPARE(suggestedFor(file), suggested);
  }

  void cutStartIsEnough() {
    QByteArray rows = "\"ID\";\"Name\"\r\n";
    while (rows.size() < 65535) rows += "\"a\";\"x\nx\xC3\xA4\"\r\n";
    for (const int size : {65536, 65537, 65538}) {
      const QByteArray moved = QByteArray(65540 - size, '\n') + rows;
      QCOMPARE(
          suggestedFor(moved.left(65536)),
          "Semi-Colon, quotes as spreadsheets write them, UTF-8, headings in row " + QByteArray::number(65541 - size));
    }
  }

  void whatIsSetIsNotSuggested() {
    const auto suggestion = TimportSuggestion::of("ID;\"Na\xC3\xA4me\"\n1;\"2;3\"\n", {});
    TimportChoices choices;
    choices.quotes = true;
    QVERIFY(!suggestion->isSetIn(choices));
    suggestion->setIn(choices);
    QVERIFY(suggestion->isSetIn(choices));
    QVERIFY(choices.delimiter == 4 && !choices.quotes && choices.spreadsheet && choices.charset == 0);
    QCOMPARE(choices.startRow, 2);
    choices.quotes = true;  // does not count for a spreadsheet's file
    QVERIFY(suggestion->isSetIn(choices));
    choices.charset = static_cast<int>(Tcharset::windows1252);
    QVERIFY(!suggestion->isSetIn(choices));
    suggestion->setIn(choices);
    QVERIFY(suggestion->isSetIn(choices) && charsetOf(choices.charset) == Tcharset::utf8);
    choices.startRow = 1;
    QVERIFY(!suggestion->isSetIn(choices));
  }
};
EQREC_TEST(TsuggestionTest);

#include "suggestionTest.moc"
