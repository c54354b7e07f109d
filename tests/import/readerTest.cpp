#include <QTest>
#include <ios>
#include <sstream>

#include "import/rowReader.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

constexpr qsizetype chunkSize = 65536;
constexpr qsizetype lookedAt = 16 << 20;  // bytes that decide about a larger file

/// Lines at a semicolon.
const TimportOptions byLines{{}, ';', 1, false, false, Tcharset::windows1252};
const TimportOptions bySpreadsheet{{}, ';', 1, false, true, Tcharset::windows1252};

TimportOptions in(Tcharset charset, TimportOptions options = bySpreadsheet) {
  options.charset = charset;
  return options;
}

/// A row as "[field][field] column:character", and a letter for what is wrong with it.
QByteArray shown(const TimportRow& row) {
  QByteArray text;
  for (std::size_t i = 1; i < row.fields.size(); ++i) {
    text += '[' + QByteArray(row.fields[i].data(), static_cast<qsizetype>(row.fields[i].size())) + ']';
  }
  for (const auto& [column, character] : row.replaced) {
    text += ' ' + QByteArray::number(static_cast<int>(column)) + ':' + QByteArray::number(character, 16);
  }
  return text + (row.isCut ? " cut" : "") + (row.isQuoteOpen ? " open" : "") + (row.hasOtherBreak ? " break" : "");
}

QByteArrayList rowsOf(const QByteArray& text, const TimportOptions& options) {
  std::istringstream file(text.toStdString());
  TrowReader reader(file, options);
  QByteArrayList rows;
  for (TimportRow row; reader.next(row); rows << shown(row)) {
  }
  return reader.position() == static_cast<std::uint64_t>(text.size()) ? rows : QByteArrayList{"not read to the end"};
}

QByteArray utf16(const char16_t* text, bool isBigEndian = false) {
  QByteArray bytes;
  for (; *text != 0; ++text) {
    const char low = static_cast<char>(*text & 0xFFU);
    const char high = static_cast<char>(*text >> 8U);
    bytes += isBigEndian ? QByteArray{1, high} + low : QByteArray{1, low} + high;
  }
  return bytes;
}

/// A file whose first read succeeds, and the next one does not.
class TbrokenFile : public std::stringbuf {
 public:
  explicit TbrokenFile(const std::string& start) : std::stringbuf(start, std::ios::in) {}

 protected:
  int_type underflow() override { throw std::ios_base::failure("broken"); }
};

}  // namespace

/// Rows from the bytes of a file.
class TreaderTest : public QObject {
  Q_OBJECT
 private slots:
  void spreadsheetRows() {
    const std::initializer_list<std::pair<QByteArray, QByteArrayList>> files = {
        {"", {}},
        {"a;b\r\nc\rd\n\n;\n", {"[a][b]", "[c]", "[d]", "", "[][]"}},
        {"\"a;\"\"b\"\"\r\nc\rd\ne\";f", {"[a;\"b\" c d e][f]"}},
        {"\"\";a\"b\"; \"c\"", {"[][a\"b\"][ \"c\"]"}},
        {"\"ab\"c\"d\";e\"\"f", {"[abc\"d\"][e\"\"f]"}},
        {"a;\"b;\"\"c\nd;e\n", {"[a][b;\"c] open", "[d][e]"}},
        {"\"a\nb;\"c", {"[a b;c]"}},
        {"\"", {"[] open"}},
        {"\xEF\xBB\xBF\"a\"\r\r\n", {"[a]", ""}},
        {"a\x1A;b\n\x1A\x1A", {"[a\x1A][b]"}},
        {'"' + QByteArray(1048575, 'x') + '"', {'[' + QByteArray(4095, 'x') + "] cut"}},
        {"\"\n" + QByteArray(1048575, 'x') + '"', {"[] open", '[' + QByteArray(4095, 'x') + "] cut"}},
        {QByteArray(4094, 'x') + ";yz;a\nb", {'[' + QByteArray(4094, 'x') + "][y] cut", "[b]"}},
        {QByteArray(4095, 'x') + ";;\n", {'[' + QByteArray(4095, 'x') + "][][]"}},
        {QByteArray(4095, ';'), {QByteArray("[]").repeated(4095) + " cut"}}};
    for (const auto& [file, rows] : files) QCOMPARE(rowsOf(file, bySpreadsheet), rows);
    auto options = bySpreadsheet;
    options.delimiter = '"';
    QCOMPARE(rowsOf("\"a\"b\n", options), QByteArrayList{"[][a][b]"});
  }

  void linesTellWhatIsWrong() {
    const QByteArray most(4095, 'x');
    for (const char* end : {"", "\n", "\r\n", "\r", "y", "y\n", "y\r\n", "\ry\n"}) {
      const bool isCut = QByteArray(end).contains('y');
      for (const qsizetype before :
           {qsizetype{1}, chunkSize - 4000, chunkSize - 4095, chunkSize - 4096, chunkSize - 4097}) {
        const QByteArrayList rows = rowsOf(QByteArray(before, '\n') + most + end, byLines);
        QCOMPARE(rows.last(), '[' + most + ']' + (isCut ? " cut" : ""));
      }
      QCOMPARE(rowsOf("\xEF\xBB\xBF" + most + end, byLines).last(), '[' + most + ']' + (isCut ? " cut" : ""));
    }
    QCOMPARE(rowsOf("a;b\rc;d\r", byLines), QByteArrayList{"[a][b\rc][d] break"});
    QCOMPARE(rowsOf("a;\x1A\n\x1A", byLines), QByteArrayList{"[a][\x1A]"});
  }

  void charsetsAreRead() {
    const QByteArray mark = "\xEF\xBB\xBF";
    const QByteArray notQuiteUtf8 = "\xC3\xA4\xC3";
    const std::initializer_list<std::tuple<Tcharset, QByteArray, QByteArray>> files = {
        {Tcharset::automatic, "a\xC3\xA4\xE2\x82\xAC", "[a\xE4\x80]"},
        {Tcharset::automatic, notQuiteUtf8, '[' + notQuiteUtf8 + ']'},
        {Tcharset::automatic, mark + "a" + notQuiteUtf8, "[a\xE4?] 1:fffd"},
        {Tcharset::automatic, "a;ae\xCC\x88\xCC\x81;\xC5\x81", "[a][a\xEB?][L] 2:301 3:141"},
        {Tcharset::automatic, utf16(u"\uFEFFa\u20AC"), "[a\x80]"},
        {Tcharset::automatic, utf16(u"\uFEFF\u20ACa", true),
         "[\x80"
         "a]"},
        {Tcharset::automatic, utf16(u"ab;\u00FC"), "[ab][\xFC]"},
        {Tcharset::automatic, utf16(u"ab;\u00FC", true), "[ab][\xFC]"},
        {Tcharset::automatic, {"a\0b", 3}, {"[a\0b]", 5}},
        {Tcharset::utf8, mark + "\xED\xA0\x80\xF0\x9F\x98\x80\xC3", "[?????] 1:fffd 1:fffd 1:fffd 1:1f600 1:fffd"},
        {Tcharset::utf16, utf16(u"\uFEFF\u20AC\xD800x\xDC00") + 'y', "[\x80?x??] 1:fffd 1:fffd 1:fffd"},
        {Tcharset::windows1252, "\xC3\xA4", "[\xC3\xA4]"},
        // Neither the meaning of a sign nor a mark of its own is dropped.
        {Tcharset::utf8, "\xE2\x89\xA0\xEF\xBB\xBF\xC7\x9E", "[??\xC4] 1:2260 1:feff 1:1de"}};
    for (const auto& [charset, file, row] : files) {
      QCOMPARE(rowsOf(file, in(charset)), QByteArrayList{row});
      QCOMPARE(rowsOf(file, in(charset, byLines)), QByteArrayList{row});
    }
  }

  void chunksDoNotMatter() {
    for (const QByteArray& end : {QByteArray("\r\nb"), QByteArray("\"\"\"\r\n\"b"), QByteArray("e\xCC\x81\xE2\x82\xAC"),
                                  QByteArray("\x1A\x1A"), QByteArray("\x1A\x1A;\x1A"), QByteArray("\"b\"\"c\";d"),
                                  QByteArray("\xC5\x81;\xC5\x81"), QByteArray("\xC3\n"), QByteArray("\xEF\xBB\xBF;")}) {
      for (const auto& options : {in(Tcharset::automatic), in(Tcharset::automatic, byLines), byLines, bySpreadsheet}) {
        const QByteArrayList expected = rowsOf("\n\n" + end, options).mid(2);
        for (qsizetype before = chunkSize - 8; before < chunkSize; ++before) {
          const QByteArray padding = QByteArray(before, 'x') + '\n' + QByteArray(chunkSize - 1, 'x') + '\n';
          QCOMPARE(rowsOf(padding + end, options).mid(2), expected);
        }
      }
    }
  }

  void charsetIsDetected() {
    const std::initializer_list<std::pair<QByteArray, Tcharset>> files = {
        {"", Tcharset::windows1252},
        {QByteArray(chunkSize, 'x') + "\xC3\xA4", Tcharset::utf8},
        {"\xC3\xA4" + QByteArray(chunkSize, 'x') + "\xC3", Tcharset::windows1252},
        {"\xC3\xA4" + QByteArray(lookedAt - 4, 'x') + "\xC3", Tcharset::windows1252},
        {"\xC3\xA4" + QByteArray(lookedAt - 2, 'x') + "\xC3", Tcharset::utf8},
        {utf16(u"a;b"), Tcharset::utf16}};
    for (const auto& [text, charset] : files) {
      std::istringstream file(text.toStdString());
      QVERIFY(detectCharset(file) == charset);
      QVERIFY(file.good() && file.tellg() == 0);
    }
  }

  void failureIsNoEnd() {
    for (const auto& options : {byLines, bySpreadsheet, in(Tcharset::automatic), in(Tcharset::utf8)}) {
      TbrokenFile broken("a\n" + std::string(3 * chunkSize, 'b'));
      std::istream file(&broken);
      TimportRow row;
      TrowReader reader(file, options);
      QVERIFY(reader.next(row) && !reader.next(row) && reader.failed());
      std::istringstream text("a\nb");
      TrowReader stopped(text, options, [] { return false; });
      QVERIFY(!stopped.next(row) && !stopped.failed() && stopped.position() == 0);
      QVERIFY(detectCharset(file) == Tcharset::windows1252 && file.bad());
    }
  }
};
EQREC_TEST(TreaderTest);

#include "readerTest.moc"
