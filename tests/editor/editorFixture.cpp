#include "editor/editorFixture.h"

#include <QApplication>
#include <QClipboard>

TeditorFixture::TeditorFixture() {
  const std::initializer_list<std::pair<unsigned, const char*>> titles = {
      {2, "Zoom"}, {3, "defibrillator"}, {5, "Pump \xC4rzte"}, {7, " (UNUSED) "}, {9, "Zoom"}, {500, "Defib \"X\""}};
  for (const auto& [number, title] : titles) browser->titles.set(number, title);
  for (const unsigned testProc : {3U, 7U, 5U}) {
    TequipRec record;
    record.setText(fieldControlNum, "r" + std::to_string(browser->records().count()));
    record.setTestProc(testProc);
    browser->records().append(record);
  }
  browser->rows = {2, 0, 1};
}

void TeditorFixture::open(std::size_t row) {
  editor.reset();
  editor = std::make_unique<TfrmEqRecEditor>(*browser, TiniFile(folder / "e.ini"), nullptr);
  browser->current = row;
  if (!browser->rows.empty()) editor->showRecord(static_cast<std::int32_t>(browser->rows.at(row)));
  editor->show();
  QVERIFY(QTest::qWaitForWindowActive(editor.get()));
}

void TeditorFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
  QTest::keyClick(editor->windowHandle(), key, modifiers);
}

void TeditorFixture::type(const char* box, const QString& text) const {
  control<QWidget>(box)->setFocus();
  press(Qt::Key_End, Qt::ControlModifier);
  for (const QChar character : text) {
    QTest::sendKeyEvent(QTest::Click, control<QWidget>(box), Qt::Key_unknown, QString(character), Qt::NoModifier);
  }
}

void TeditorFixture::paste(const char* box, const QString& text) const {
  QApplication::clipboard()->setText(text);
  control<QWidget>(box)->setFocus();
  press(Qt::Key_V, Qt::ControlModifier);
}

QString TeditorFixture::text(const char* name) const {
  const auto* memo = editor->findChild<QPlainTextEdit*>(QString::fromLatin1(name));
  return memo != nullptr ? memo->document()->toRawText() : control<QWidget>(name)->property("text").toString();
}

QString TeditorFixture::listed() const {
  QStringList numbers;
  for (int row = 0; row < list()->model()->rowCount(); ++row) {
    numbers << list()->model()->index(row, 0).data().toString();
  }
  return numbers.join(QLatin1Char(' '));
}

int TeditorFixture::marked() const {
  const QModelIndexList rows = list()->selectionModel()->selectedRows();
  return rows.isEmpty() ? 0 : rows.front().data().toInt();
}

void TeditorFixture::clickListed(int row) const {
  const QRect cell = list()->visualRect(list()->model()->index(row, 1));
  QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
}
