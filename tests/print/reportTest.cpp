#include <QDate>
#include <QImage>
#include <QLocale>
#include <QPrintEngine>
#include <QPrinter>
#include <QRegularExpression>
#include <QTest>

#include "print/paper.h"
#include "print/printFixture.h"
#include "print/report.h"
#include "print/reportOutput.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

const TpageStart goOn = [](std::size_t) { return true; };

QStringList pagesOf(const std::filesystem::path& pdf) {
  return poppler("pdftotext", {QStringLiteral("-layout")}, pdf).split(u'\f', Qt::SkipEmptyParts);
}

QStringList found(const QString& text, const char* pattern) {
  QStringList result;
  for (auto match = QRegularExpression(QString::fromLatin1(pattern)).globalMatch(text); match.hasNext();) {
    result << match.next().captured();
  }
  return result;
}

/// Words on one line do not overlap.
void checkWords(const std::filesystem::path& pdf) {
  double right = 0;
  double top = -1;
  const QString words = poppler("pdftotext", {QStringLiteral("-bbox")}, pdf);
  const QRegularExpression box(QStringLiteral(R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)")re"));
  for (auto word = box.globalMatch(words); word.hasNext();) {
    const auto match = word.next();
    const double wordTop = match.captured(2).toDouble();
    QVERIFY2(wordTop != top || match.captured(1).toDouble() >= right - 0.5, qPrintable(match.captured()));
    top = wordTop;
    right = match.captured(3).toDouble();
  }
  QVERIFY(right > 0);
}

/// The print fills each page up to its margins and no further.
void checkPictures(const std::filesystem::path& pdf, qsizetype count) {
  const TtestFolder folder;
  TchildProcess(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("36"), QStringLiteral("-gray"),
                                             nameOf(pdf), nameOf(folder / "page")})
      .readAll();
  QCOMPARE(namesIn(folder.path()).size(), count);
  for (const QByteArray& name : namesIn(folder.path())) {
    const QImage picture(nameOf(folder / name.toStdString()));
    const bool isLying = picture.width() > picture.height();
    const QRect inside = picture.rect().adjusted(isLying ? 17 : 27, isLying ? 27 : 17, -17, -17);  // room for binding
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        if (qGray(picture.pixel(x, y)) < 160) ink |= QRect(x, y, 1, 1);
      }
    }
    QVERIFY(inside.contains(ink));
    QVERIFY(ink.width() > inside.width() * 0.9 && ink.height() > inside.height() * 0.9);
  }
}

/// Takes no job, but notes when one is aborted.
struct TabortEngine final : QPrintEngine {
  void setProperty(PrintEnginePropertyKey /*key*/, const QVariant& /*value*/) override {}
  QVariant property(PrintEnginePropertyKey /*key*/) const override { return {}; }
  bool newPage() override { return false; }
  bool abort() override { return isAborted = true; }
  int metric(QPaintDevice::PaintDeviceMetric /*metric*/) const override { return 0; }
  QPrinter::PrinterState printerState() const override { return QPrinter::Idle; }

  bool isAborted = false;
};

struct TabortPrinter final : QPrinter {
  TabortPrinter() { setEngines(&engine, nullptr); }

  TabortEngine engine;
};

}  // namespace

/// Reports printed to PDF files and read back.
class TreportTest : public QObject {
  Q_OBJECT
 private slots:
  void pdfHoldsEveryRecordOnceAndInOrder() {
    const std::string words = "\xC4rzte & Pflege, final office, 3\xB0 \x80";
    const std::initializer_list<std::tuple<bool, std::size_t, std::string>> cases = {
        {false, 2, words},
        {true, 2, words},
        {true, printColumnCount, words},
        {false, printColumnCount, std::string(63, 'W')},
        {false, printColumnCount, "AVA ffi To. \x95\t-\x81"}};  // kerning, ligatures, control characters
    for (const auto& [landscape, fields, text] : cases) {
      const TprintFixture f(150, text);
      const Treport report(f.table(fields), reportPageLayout(QPageSize(QPageSize::A4), landscape));
      const TtestFolder folder;
      QCOMPARE(savePdf(report, nameOf(folder / "r.pdf"), goOn), ToutputResult::done);

      const QStringList pages = pagesOf(folder / "r.pdf");
      QCOMPARE(pages.size(), qsizetype(report.pageCount()));
      QVERIFY(pages.size() > 2);
      const QString date = QLocale().toString(QDate::currentDate(), QLocale::LongFormat);
      QStringList printed;
      for (qsizetype i = 0; i < pages.size(); ++i) {
        printed << found(pages[i], "ID\\d{5}");
        const QString number = QStringLiteral("Page %1 of %2").arg(i + 1).arg(pages.size());
        for (const QString& part : {QStringLiteral("QT484"), QStringLiteral("Equipment Records"), date, number,
                                    QStringLiteral("No."), QStringLiteral("Description")}) {
          QVERIFY2(pages[i].contains(part), qPrintable(part));
        }
        QCOMPARE(pages[i].contains(QStringLiteral("R&D")), fields == printColumnCount);
        QCOMPARE(pages[i].contains(QStringLiteral("Number of records: 150")), i + 1 == pages.size());
      }
      QCOMPARE(printed, f.shownControlNums());
      QVERIFY(fields == printColumnCount || pages[0].contains(QStringLiteral("Ärzte & Pflege, final office, 3° €")));
      checkWords(folder / "r.pdf");
      checkPictures(folder / "r.pdf", pages.size());
    }
  }

  void headNamesTheSearch() {
    const TprintFixture f(150);
    TprintJob job = f.job();
    std::string words;
    while (words.size() < 2000) words += "MM ";
    job.search = "Description \"pump\", General \"" + words + '"';
    const Treport report({job, job.shown, {}}, reportPageLayout(QPageSize(QPageSize::A4), false));
    const TtestFolder folder;
    QCOMPARE(savePdf(report, nameOf(folder / "r.pdf"), goOn), ToutputResult::done);
    QStringList printed;
    for (const QString& page : pagesOf(folder / "r.pdf")) {
      QVERIFY(page.contains(u"Search: Description \"pump\", General \"MM"));
      QCOMPARE(page.count(u'\u2026'), 1);
      printed << found(page, "ID\\d{5}");
    }
    QCOMPARE(printed, f.shownControlNums());
    checkWords(folder / "r.pdf");
    checkPictures(folder / "r.pdf", qsizetype(report.pageCount()));
  }

  void pagesAndPapersAreThoseThatExist() {
    using Trange = std::pair<int, int>;
    for (const auto& [from, to, expected] : {std::tuple(0, 0, Trange(0, 9)),
                                             {1, 9, Trange(0, 9)},
                                             {9, 9, Trange(8, 9)},
                                             {3, 0, Trange(2, 9)},
                                             {9, 10, Trange()},
                                             {10, 12, Trange()},
                                             {5, 4, Trange()}}) {
      const auto pages = chosenPages(from, to, 9);
      QCOMPARE(pages ? Trange(pages->first, pages->end) : Trange(), expected);
    }
    for (const auto& [locale, key] : {std::pair("en_GB", "A4"),
                                      {"en_US", "Letter"},
                                      {"es_MX", "Letter"},
                                      {"de_DE", "A4"},
                                      {"en_CA", "Letter"},
                                      {"C", "A4"}}) {
      QCOMPARE(paperKey(usualPaper(QLocale(QString::fromLatin1(locale)))), key);
    }
    for (const char* key : {"A4", "Letter", "Legal", "A3", "A5", "Tabloid"}) QCOMPARE(paperKey(paperOfKey(key)), key);
    for (const char* key : {"", "Custom", "A99"}) QCOMPARE(paperOfKey(key).id(), usualPaper().id());
  }

  void printerPrintsTheSame() {
    const TprintFixture f(150);
    const TtestFolder folder;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFileName(nameOf(folder / "printer.pdf"));
    printer.setPageLayout(reportPageLayout(QPageSize(QPageSize::Letter), true));
    const Treport report(f.table(), printer.pageLayout());
    QCOMPARE(savePdf(report, nameOf(folder / "r.pdf"), goOn), ToutputResult::done);
    QCOMPARE(printReport(report, printer, {1, 3}, goOn), ToutputResult::done);
    QCOMPARE(pagesOf(folder / "printer.pdf"), pagesOf(folder / "r.pdf").mid(1, 2));
  }

  void cellsAreThoseOfTheRecord() {
    const TprintFixture f(3, " \tx ");
    const TreportTable table = f.table();
    QVERIFY(table.text(0, 0) + table.text(0, 1) + table.text(0, 2) + table.text(0, 6) == "3ID00002xx");
  }

  void cancelledPrintIsAborted() {
    const TprintFixture f(1);
    const Treport report(f.table(), reportPageLayout(usualPaper(), false));
    TabortPrinter printer;
    QCOMPARE(printReport(report, printer, {0, 1}, [](std::size_t) { return false; }), ToutputResult::cancelled);
    QVERIFY(printer.engine.isAborted);
  }

  void nothingIsLeftOfAFailure() {
    const TprintFixture f(150);
    const Treport report(f.table(), reportPageLayout(usualPaper(), false));
    const TtestFolder folder;
    writeBytes(folder / "old.pdf", "old");
    QCOMPARE(savePdf(report, nameOf(folder / "missing/r.pdf"), goOn), ToutputResult::failed);
    QCOMPARE(savePdf(report, nameOf(folder.path()), goOn), ToutputResult::failed);
    const auto untilThird = [](std::size_t page) { return page < 2; };
    QCOMPARE(savePdf(report, nameOf(folder / "old.pdf"), untilThird), ToutputResult::cancelled);
    const auto blockPlace = [&](std::size_t) {
      return std::filesystem::create_directories(folder / "blocked.pdf"), true;
    };
    QCOMPARE(savePdf(report, nameOf(folder / "blocked.pdf"), blockPlace), ToutputResult::failed);
    QCOMPARE(namesIn(folder.path()), QByteArrayList({"blocked.pdf", "old.pdf"}));
    QCOMPARE(bytesOf(folder / "old.pdf"), "old");
  }
};
EQREC_TEST(TreportTest);

#include "reportTest.moc"
