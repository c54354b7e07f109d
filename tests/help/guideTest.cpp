#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocument>

#include "browser/browserMessages.h"
#include "comm/commExceptions.h"
#include "comm/commMessages.h"
#include "help/guideFiles.h"
#include "help/helpTopic.h"
#include "help/windowTopics.h"
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

/// The targets of all links in a page, the contents or the index: pages, anchors, pictures, style sheets.
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

bool isInGuide(const QString& topic) {
  return !topic.isEmpty() && leadsSomewhere({}, topic);
}

/// Adds the messages for these exceptions in both steps of the exchange with the analyzer.
template <typename... Texceptions>
void addExchangeMessages(std::vector<TmessageText>& messages) {
  for (const TcommStep step : {TcommStep::handshake, TcommStep::putData}) {
    (messages.push_back(*runCommStep(step, []() -> TcommOutcome { throw Texceptions(); })), ...);
  }
}

std::vector<TmessageText> allMessages() {
  std::vector<TmessageText> messages = {tooManyRecords,   deleteRecords,      exportNotOpened, nothingToExport,
                                        nothingToPrint,   noRecordsToUpload,  invalidAddress,  noPrinter,
                                        printFailed,      pdfNotWritten,      importCanceled,  recordsExceeded,
                                        recordsMalformed, deviceIdsTruncated, importNotRead,   couldNotCommunicate,
                                        invalidState,     unspecifiedError,   internalError,   corruptTestProcList};
  messages.insert(messages.end(), {noSuchPages, noLandscape, unsavedChangesFound, tooManyToRestore, listsJoined,
                                   listsNotJoined, filesRemoved, exportSelected, exportNotWritten, reportNotSaved});
  for (const char* details : {changesOffered, changesNotSafe}) messages.push_back({details, "When you leave", {}});
  addExchangeMessages<TcommTimeoutException, TnoDeviceAttachedException, TinitializationException,
                      TbadInitializationException, TuninitializedCommModeException, TinvalidDataLengthException,
                      ToperationCancelledException, std::exception>(messages);
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
  void everyLinkLeadsSomewhere() {
    const QStringList contents = targets(QStringLiteral("EquipmentRecord.hhc"));
    QVERIFY(contents.size() > 5);
    for (const QString& from : guideFiles({QStringLiteral("*.html"), QStringLiteral("*.hh[ck]")})) {
      QVERIFY2(contents.contains(from) || !from.endsWith(QStringLiteral(".html")), qPrintable(from));
      for (const QString& target : targets(from)) {
        QVERIFY2(leadsSomewhere(from, target), qPrintable(from + QStringLiteral(": ") + target));
      }
    }
  }

  void everyMessageIsExplained() {
    QTextDocument page;
    page.setHtml(content(QStringLiteral("messages.html")));
    const QString text = page.toPlainText().simplified();
    for (const TmessageText& message : allMessages()) {
      QVERIFY2(text.contains(QString::fromLatin1(message.caption)), message.caption);
      QVERIFY2(text.contains(QString::fromLatin1(message.text).simplified()), message.text);
    }
  }

  void everyWindowAndMessageHasATopic() {
    static const QRegularExpression name(QStringLiteral("<class>(\\w+)</class>"));
    QDirIterator forms(QStringLiteral(PLUGIN_FOLDER), {QStringLiteral("*.ui")}, QDir::Files,
                       QDirIterator::Subdirectories);
    int count = 0;
    for (; forms.hasNext(); ++count) {
      const QString window = name.match(QString::fromUtf8(bytesOf(forms.next().toStdString()))).captured(1);
      if (window == QStringLiteral("ThelpWindow")) continue;
      QVERIFY2(isInGuide(topicOfWindow(window)), qPrintable(window));
    }
    QVERIFY(count > 10);
    for (const TmessageText& message : allMessages()) {
      if (message.caption == std::string("When you leave")) continue;
      const QString topic = topicOfMessage(QString::fromLatin1(message.caption), QString::fromLatin1(message.text));
      QVERIFY2(isInGuide(topic), message.text);
    }
    QVERIFY(topicOfMessage(QStringLiteral("Error"), QStringLiteral("The host's own")).isEmpty());
  }

  void namesTopicByFullPath() {
    const std::string folder = std::filesystem::current_path().generic_string() + "/qt 484/bin";
    QCOMPARE(helpTopic("qt 484/x/.././bin/", "a.html#b").generic_string(), folder + "/EquipmentRecord.chm::/a.html#b");
  }
};
EQREC_TEST(TguideTest);

#include "guideTest.moc"
