#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QListWidget>
#include <QProcess>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <functional>

#include "browser/messages.h"
#include "comm/commExceptions.h"
#include "comm/commMessages.h"
#include "comm/selector/messages.h"
#include "help/helpTopic.h"
#include "help/helpViewer.h"
#include "import/messages.h"
#include "print/messages.h"
#include "store/loadReport.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/testFiles.h"
#include "tools/testList.h"
#include "upload/messages.h"

namespace {

const std::filesystem::path guide = GUIDE_FOLDER;

/// The guide's files with one of these endings, relative to its folder.
QStringList guideFiles(const QStringList& endings) {
  QStringList names;
  QDirIterator files(QStringLiteral(GUIDE_FOLDER), endings, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) names << QDir(QStringLiteral(GUIDE_FOLDER)).relativeFilePath(files.next());
  return names;
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

QWidgetList openHelp() {
  QWidgetList windows;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QStringLiteral("ThelpWindow") && window->isVisible()) windows << window;
  }
  return windows;
}

template <typename T>
T* control(const char* name) {
  return openHelp().value(0)->findChild<T*>(QString::fromLatin1(name));
}

QTextBrowser* page() {
  return control<QTextBrowser>("txtPage");
}

void clickLink(const QString& target) {
  QTextCursor cursor(page()->document());
  while (cursor.charFormat().anchorHref() != target && cursor.movePosition(QTextCursor::NextCharacter)) continue;
  page()->setTextCursor(cursor);
  page()->ensureCursorVisible();
  QTest::mouseClick(page()->viewport(), Qt::LeftButton, {}, page()->cursorRect(cursor).center());
}

const QString startPage = QStringLiteral("EquipmentRecord.html");
const QString messagesPage = QStringLiteral("messages.html");

}  // namespace

/// The guide's pages, and the window that shows them.
class ThelpTest : public QObject {
  Q_OBJECT

  std::unique_ptr<QWidget> owner_;
  std::unique_ptr<ThelpViewer> viewer_;

 private slots:
  void init();
  void compiledFileHoldsEveryFileAsItIs();
  void everyLinkLeadsSomewhere();
  void everyMessageIsExplained();
  void linksAndButtonsTurnPages();
  void contentsTurnPages();
  void closesAndOpensAgain();
  void namesTopicByFullPath();
};
EQREC_TEST(ThelpTest);

void ThelpTest::init() {
  viewer_ = makeHelpViewer();
  owner_ = std::make_unique<QWidget>();
  owner_->show();
  viewer_->show({}, owner_.get());
}

void ThelpTest::compiledFileHoldsEveryFileAsItIs() {
  const TtestFolder unpacked;
  QProcess::execute(QStringLiteral(EQREC_CHMLS), {QStringLiteral("extractall"), QStringLiteral(COMPILED_GUIDE),
                                                  QString::fromStdString(unpacked.path().string())});
  for (const QString& name : guideFiles(
           {QStringLiteral("*.html"), QStringLiteral("*.css"), QStringLiteral("*.png"), QStringLiteral("*.hhc")})) {
    QVERIFY2(bytesOf(unpacked / name.toStdString()) == bytesOf(guide / name.toStdString()), qPrintable(name));
  }
}

void ThelpTest::everyLinkLeadsSomewhere() {
  const QStringList contents = targets(QStringLiteral("EquipmentRecord.hhc"));
  for (const QString& from : guideFiles({QStringLiteral("*.html"), QStringLiteral("*.hh[ck]")})) {
    QVERIFY2(contents.contains(from) || !from.endsWith(QStringLiteral(".html")), qPrintable(from));
    for (const QString& target : targets(from)) {
      QVERIFY2(leadsSomewhere(from, target), qPrintable(from + QStringLiteral(": ") + target));
    }
  }
}

void ThelpTest::everyMessageIsExplained() {
  page()->setHtml(content(QStringLiteral("messages.html")));
  const QString text = page()->toPlainText().simplified();
  for (const TmessageText& message : allMessages()) {
    QVERIFY2(text.contains(QString::fromLatin1(message.caption)), message.caption);
    QVERIFY2(text.contains(QString::fromLatin1(message.text).simplified()), message.text);
  }
}

void ThelpTest::linksAndButtonsTurnPages() {
  QCOMPARE(page()->source().fileName(), startPage);
  QCOMPARE(page()->horizontalScrollBar()->maximum(), 0);  // the picture fits
  clickLink(messagesPage);
  QCOMPARE(page()->source().fileName(), messagesPage);
  clickLink(QStringLiteral("#nodata"));
  QVERIFY(page()->verticalScrollBar()->value() > 0);
  control<QAbstractButton>("btnBack")->click();
  control<QAbstractButton>("btnBack")->click();
  QCOMPARE(page()->source().fileName(), startPage);
  QTest::keyClick(page(), Qt::Key_Right, Qt::AltModifier);
  QCOMPARE(page()->source().fileName(), messagesPage);
  control<QAbstractButton>("btnContents")->click();
  QCOMPARE(page()->source().fileName(), startPage);
}

void ThelpTest::contentsTurnPages() {
  auto* contents = control<QListWidget>("lstContents");
  for (int row = 0; row < contents->count(); ++row) {
    contents->setCurrentRow(row);
    QVERIFY2(page()->toPlainText().startsWith(contents->item(row)->text()), qPrintable(contents->item(row)->text()));
  }
  viewer_->show({}, owner_.get());
  QCOMPARE(openHelp().size(), 1);
  QCOMPARE(contents->currentRow(), 0);
}

void ThelpTest::closesAndOpensAgain() {
  const std::vector<std::function<void()>> ways = {
      [] { QTest::keyClick(page(), Qt::Key_Escape); }, [this] { viewer_->closeAll(); },
      [] { makeHelpViewer()->closeAll(); }, [this] { viewer_ = makeHelpViewer(); }, [this] { owner_.reset(); }};
  for (const auto& close : ways) {
    close();
    QVERIFY(openHelp().isEmpty());
    viewer_->show({}, owner_.get());
    QCOMPARE(openHelp().size(), 1);
  }
}

void ThelpTest::namesTopicByFullPath() {
  const std::string folder = std::filesystem::current_path().string() + "/qt 484/bin";
  QCOMPARE(helpTopic("qt 484/x/.././bin/").string(), folder + "/EquipmentRecord.chm::/EquipmentRecord.html");
}

#include "helpTest.moc"
