#include <QRegularExpression>
#include <QTest>
#include <QTextDocument>

#include "browser/browserMessages.h"
#include "comm/commExceptions.h"
#include "comm/commMessages.h"
#include "help/guideFiles.h"
#include "help/helpTopic.h"
#include "import/importMessages.h"
#include "print/printMessages.h"
#include "store/loadReport.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/testFiles.h"
#include "tools/testList.h"
#include "upload/uploadMessages.h"

namespace {

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
  const QString text = content(target.startsWith(u'#') ? from : target.section(u'#', 0, 0));
  const QString anchor = target.section(u'#', 1);
  return !text.isEmpty() && (anchor.isEmpty() || text.contains(QStringLiteral("<a name=\"%1\">").arg(anchor)));
}

/// What the user is told of an exception in either step of the exchange with the analyzer.
template <typename Texception>
void addExchangeMessages(const Texception& exception, std::vector<TmessageText>& messages) {
  for (const TcommStep step : {TcommStep::handshake, TcommStep::putData}) {
    messages.push_back(*runCommStep(step, [&]() -> TcommOutcome { throw Texception(exception); }));
  }
}

std::vector<TmessageText> allMessages() {
  std::vector<TmessageText> messages = {tooManyRecords, deleteRecords,     exportNotOpened, nothingToExport,
                                        nothingToPrint, noRecordsToUpload, invalidAddress};
  for (const auto& message : {noPrinter, printFailed, pdfNotWritten}) messages.push_back(message);
  for (const auto& message : {importCanceled, recordsExceeded, recordsMalformed, deviceIdsTruncated, importNotRead}) {
    messages.push_back(message);
  }
  for (const auto& message : {couldNotCommunicate, invalidState, unspecifiedError, internalError}) {
    messages.push_back(message);
  }
  addExchangeMessages(TcommTimeoutException(), messages);
  addExchangeMessages(TnoDeviceAttachedException(), messages);
  addExchangeMessages(TinitializationException(), messages);
  addExchangeMessages(TbadInitializationException(), messages);
  addExchangeMessages(TuninitializedCommModeException(), messages);
  addExchangeMessages(TinvalidDataLengthException(), messages);
  addExchangeMessages(ToperationCancelledException(), messages);
  addExchangeMessages(std::exception(), messages);
  messages.push_back(corruptTestProcList);
  for (int code = 0; code <= 10; ++code) {
    messages.push_back(exceptionMessage(TERStatus(code)));
    if (const auto message = loadMessage(TERStatus(code))) messages.push_back(*message);
  }
  return messages;
}

}  // namespace

/// The guide's pages.
class TguideTest : public QObject {
  Q_OBJECT
 private slots:
  void everyLinkLeadsSomewhere();
  void everyMessageIsExplained();
  void namesTopicByFullPath();
};
EQREC_TEST(TguideTest);

void TguideTest::everyLinkLeadsSomewhere() {
  const QStringList contents = targets(QStringLiteral("EquipmentRecord.hhc"));
  for (const QString& from : guideFiles({QStringLiteral("*.html"), QStringLiteral("*.hh[ck]")})) {
    QVERIFY2(contents.contains(from) || !from.endsWith(QStringLiteral(".html")), qPrintable(from));
    for (const QString& target : targets(from)) {
      QVERIFY2(leadsSomewhere(from, target), qPrintable(from + QStringLiteral(": ") + target));
    }
  }
}

void TguideTest::everyMessageIsExplained() {
  QTextDocument page;
  page.setHtml(content(QStringLiteral("messages.html")));
  const QString text = page.toPlainText().simplified();
  for (const TmessageText& message : allMessages()) {
    QVERIFY2(text.contains(QString::fromLatin1(message.caption)), message.caption);
    QVERIFY2(text.contains(QString::fromLatin1(message.text).simplified()), message.text);
  }
}

void TguideTest::namesTopicByFullPath() {
  const std::string folder = std::filesystem::current_path().generic_string() + "/qt 484/bin";
  QCOMPARE(helpTopic("qt 484/x/.././bin/").generic_string(), folder + "/EquipmentRecord.chm::/EquipmentRecord.html");
}

#include "guideTest.moc"
