#include <QApplication>
#include <QFileDialog>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <functional>

#include "help/guideFiles.h"
#include "help/helpViewer.h"
#include "tools/dialogs.h"
#include "tools/runProgram.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

QWidgetList openHelp() {
  QWidgetList windows;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QStringLiteral("ThelpWindow") && window->isVisible()) windows << window;
  }
  return windows;
}

QTextBrowser* page() {
  return control<QTextBrowser>(openHelp().first(), "txtPage");
}

void clickLink(const QString& target) {
  QTextCursor cursor(page()->document());
  while (cursor.charFormat().anchorHref() != target && cursor.movePosition(QTextCursor::NextCharacter)) continue;
  page()->setTextCursor(cursor);
  page()->ensureCursorVisible();
  QTest::mouseClick(page()->viewport(), Qt::LeftButton, {}, page()->cursorRect(cursor).center());
}

/// The first picture of the page shown.
QUrl pictureOf(const QTextBrowser* page) {
  for (auto block = page->document()->begin(); block.isValid(); block = block.next()) {
    for (const auto& part : block.textFormats()) {
      if (part.format.isImageFormat()) return QUrl(part.format.toImageFormat().name());
    }
  }
  return {};
}

const QString startPage = QStringLiteral("EquipmentRecord.html");
const QString messagesPage = QStringLiteral("messages.html");

}  // namespace

/// The window that shows the guide.
class ThelpViewerTest : public QObject {
  Q_OBJECT

  std::unique_ptr<QWidget> owner_;
  std::unique_ptr<ThelpViewer> viewer_;

 private slots:
  void init() {
    viewer_ = makeHelpViewer({});
    owner_ = std::make_unique<QWidget>();
    owner_->show();
    viewer_->show(owner_.get(), startPage);
  }

  void compiledFileHoldsEveryFileAsItIs() {
    const TtestFolder unpacked;
    runProgram(QStringLiteral(EQREC_CHMLS),
               {QStringLiteral("extractall"), QStringLiteral(COMPILED_GUIDE_FOLDER "/EquipmentRecord.chm"),
                nameOf(unpacked.path())});
    for (const QString& name : guideFiles(
             {QStringLiteral("*.html"), QStringLiteral("*.css"), QStringLiteral("*.png"), QStringLiteral("*.hhc")})) {
      QVERIFY2(bytesOf(unpacked / name.toStdString()) == bytesOf(guide / name.toStdString()), qPrintable(name));
    }
  }

  void linksAndButtonsTurnPages() {
    QCOMPARE(page()->source().fileName(), startPage);
    QCOMPARE(page()->horizontalScrollBar()->maximum(), 0);  // the picture fits
    clickLink(messagesPage);
    QCOMPARE(page()->source().fileName(), messagesPage);
    clickLink(QStringLiteral("#nodata"));
    QVERIFY(page()->verticalScrollBar()->value() > 0);
    click(openHelp().first(), "btnBack");
    click(openHelp().first(), "btnBack");
    QCOMPARE(page()->source().fileName(), startPage);
    QTest::keyClick(page(), Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(page()->source().fileName(), messagesPage);
    click(openHelp().first(), "btnContents");
    QCOMPARE(page()->source().fileName(), startPage);
  }

  void contentsTurnPages() {
    auto* contents = control<QListWidget>(openHelp().first(), "lstContents");
    for (int row = 0; row < contents->count(); ++row) {
      contents->setCurrentRow(row);
      QVERIFY2(page()->toPlainText().startsWith(contents->item(row)->text()), qPrintable(contents->item(row)->text()));
    }
    viewer_->show(owner_.get(), startPage);
    QCOMPARE(openHelp().size(), 1);
    QCOMPARE(contents->currentRow(), 0);
  }

  void f1OpensTheWindowsSection() {
    QDialog dialog(owner_.get());
    dialog.setObjectName(QStringLiteral("TfrmPrintPreview"));
    QMessageBox box(QMessageBox::Warning, QStringLiteral("No Data"), QStringLiteral("text"), {}, &dialog);
    QFileDialog files(&dialog);  // has the section of its dialog
    const std::initializer_list<std::tuple<QDialog*, const char*, const char*>> windows = {
        {&dialog, "TfrmPrintPreview", "printing.html#preview"},
        {&box, "QMessageBox", "messages.html#nodata"},
        {&files, "QFileDialog", "printing.html#preview"}};
    for (const auto& [window, name, topic] : windows) {
      whenOpen(name, [&, topic = topic](QWidget* open) {
        QKeyEvent pressed(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
        QApplication::sendEvent(open, &pressed);
        QVERIFY(pressed.isAccepted());
        QCOMPARE(page()->source().fileName() + u'#' + page()->source().fragment(), QLatin1String(topic));
        QTest::keyClick(openHelp().first()->windowHandle(), Qt::Key_Escape);  // although the dialog is modal
        QVERIFY(openHelp().isEmpty() && open->isVisible());
        open->close();
      }).during([window = window] { window->exec(); });
    }
    QKeyEvent elsewhere(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QApplication::sendEvent(owner_.get(), &elsewhere);
    QVERIFY(openHelp().isEmpty() && !elsewhere.isAccepted());  // left to the host
  }

  void minimizedWindowComesBack() {
    openHelp().first()->showMinimized();
    viewer_->show(owner_.get(), messagesPage);
    QVERIFY(openHelp().size() == 1 && !openHelp().first()->isMinimized());
  }

  void picturesFollowTheWidth() {
    const auto pictureWidth = [] {
      const auto picture = page()->document()->resource(QTextDocument::ImageResource, pictureOf(page()));
      return picture.value<QImage>().deviceIndependentSize().width();
    };
    const auto before = pictureWidth();
    openHelp().first()->resize(openHelp().first()->width() - 100, openHelp().first()->height());
    QTRY_VERIFY(pictureWidth() > 0 && pictureWidth() < before);
  }

  void closesAndOpensAgain() {
    const std::vector<std::function<void()>> ways = {
        [] { QTest::keyClick(page(), Qt::Key_Escape); }, [this] { viewer_->closeAll(); },
        [] { makeHelpViewer({})->closeAll(); }, [this] { viewer_ = makeHelpViewer({}); }, [this] { owner_.reset(); }};
    for (const auto& close : ways) {
      close();
      QVERIFY(openHelp().isEmpty());
      viewer_->show(owner_.get(), startPage);
      QCOMPARE(openHelp().size(), 1);
    }
  }
};
EQREC_TEST(ThelpViewerTest);

#include "helpViewerTest_posix.moc"
