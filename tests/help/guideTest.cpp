#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>
#include <vector>

#include "browser/messages.h"
#include "store/loadReport.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

constexpr int patience = 60000;  // milliseconds
const std::filesystem::path guide = GUIDE_FOLDER;

/// The names of the guide's files with one of these endings, relative to its folder.
QStringList guideFiles(const QStringList& endings) {
  QStringList names;
  QDirIterator files(QStringLiteral(GUIDE_FOLDER), endings, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) names << QDir(QStringLiteral(GUIDE_FOLDER)).relativeFilePath(files.next());
  return names;
}

QStringList pages() {
  return guideFiles({QStringLiteral("*.html")});
}

QString content(const QString& name) {
  return QString::fromUtf8(bytesOf(guide / name.toStdString()));
}

/// Where a page, or the contents or the index, leads to: pages with or without an anchor, pictures, style sheets.
QStringList targets(const QString& name) {
  static const QRegularExpression attribute(QStringLiteral(R"re((?:href|src|"Local" value)="([^"]+)")re"));
  QStringList found;
  for (auto match = attribute.globalMatch(content(name)); match.hasNext();) found << match.next().captured(1);
  return found;
}

bool leadsSomewhere(const QString& from, const QString& target) {
  const QString file = target.startsWith(u'#') ? from : target.section(u'#', 0, 0);
  const QString anchor = target.section(u'#', 1);
  const QString text = content(file);
  return !text.isEmpty() && (anchor.isEmpty() || text.contains(QStringLiteral("<a name=\"%1\">").arg(anchor)));
}

/// What the reader of a page sees, with white space simplified. Fails the test where the page is not well-formed.
QString readText(const QString& name) {
  QXmlStreamReader xml(content(name));
  QString text;
  while (!xml.atEnd()) {
    xml.readNext();
    text += xml.isCharacters() ? xml.text().toString() : QStringLiteral(" ");
  }
  if (xml.hasError()) QTest::qFail(qPrintable(name + u' ' + xml.errorString()), __FILE__, __LINE__);
  return text.simplified();
}

std::vector<TmessageText> allMessages() {
  std::vector<TmessageText> messages = {
      tooManyRecords,
      deleteRecords,
      exportNotOpened,
      nothingToExport,
      corruptTestProcList,
      {"No Equipment Records to print.", "No Equipment Records To Print", TmessageIcon::warning},
      {"No Equipment Records to upload.", "No Equipment Records To Upload", TmessageIcon::warning}};
  for (int code = 0; code <= 10; ++code) {
    messages.push_back(exceptionMessage(TERStatus(code)));
    if (const auto message = loadMessage(TERStatus(code))) messages.push_back(*message);
  }
  return messages;
}

}  // namespace

class TguideTest : public QObject {
  Q_OBJECT
 private slots:
  void compiledFileHoldsEveryFileAsItIs();
  void everyLinkLeadsSomewhere();
  void everyPageIsReachedFromStart();
  void everyMessageIsExplained();
};
EQREC_TEST(TguideTest);

void TguideTest::compiledFileHoldsEveryFileAsItIs() {
  const TtestFolder unpacked;
  QProcess tool;
  tool.start(QStringLiteral(EQREC_CHMLS), {QStringLiteral("extractall"), QStringLiteral(COMPILED_GUIDE),
                                           QString::fromStdString(unpacked.path().string())});
  QVERIFY(tool.waitForFinished(patience));
  const QStringList names =
      guideFiles({QStringLiteral("*.html"), QStringLiteral("*.css"), QStringLiteral("*.png"), QStringLiteral("*.hhc")});
  QVERIFY(names.contains(QStringLiteral("EquipmentRecord.html")));
  for (const QString& name : names) {
    QVERIFY2(bytesOf(unpacked / name.toStdString()) == bytesOf(guide / name.toStdString()), qPrintable(name));
  }
}

void TguideTest::everyLinkLeadsSomewhere() {
  QStringList broken;
  for (const QString& from : guideFiles({QStringLiteral("*.html"), QStringLiteral("*.hh[ck]")})) {
    QVERIFY2(!targets(from).isEmpty(), qPrintable(from));
    for (const QString& target : targets(from)) {
      if (!leadsSomewhere(from, target)) broken << from + QStringLiteral(": ") + target;
    }
  }
  QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
}

void TguideTest::everyPageIsReachedFromStart() {
  QStringList reached{QStringLiteral("EquipmentRecord.html")};
  for (int i = 0; i < reached.size(); ++i) {
    for (const QString& page : pages()) {
      if (!reached.contains(page) && content(reached[i]).contains(QStringLiteral("href=\"") + page)) reached << page;
    }
  }
  for (const QString& page : pages()) {
    QVERIFY2(reached.contains(page), qPrintable(page));
    QVERIFY2(targets(QStringLiteral("EquipmentRecord.hhc")).contains(page), qPrintable(page));
  }
}

void TguideTest::everyMessageIsExplained() {
  for (const QString& page : pages()) readText(page);
  const QString text = readText(QStringLiteral("messages.html"));
  for (const TmessageText& message : allMessages()) {
    QVERIFY2(text.contains(QString::fromLatin1(message.caption)), message.caption);
    QVERIFY2(text.contains(QString::fromLatin1(message.text).simplified()), message.text);
  }
}

#include "guideTest.moc"
