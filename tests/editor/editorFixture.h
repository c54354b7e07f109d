#pragma once

#include <QApplication>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTest>
#include <memory>
#include <optional>
#include <vector>

#include "editor/editorHost.h"
#include "editor/eqEditForm.h"
#include "testproc/autosequenceFileStructs.h"
#include "tools/dialogs.h"
#include "tools/recordChanges.h"
#include "tools/testFiles.h"

/// Stands in for a browser window: the rows that it shows, and what the editor asked it to do.
class TeditorBrowser final : public QWidget, public TeditorHost {
 public:
  const TequipRecTable& records() const override { return records_; }
  void change(TlistChange change) override { applyChange(records_, std::move(change)); }
  const TtestProcTable& testProcs() const override { return titles; }
  std::size_t shownCount() const override { return rows.size(); }
  TrecordIndex recordAt(std::size_t row) const override { return rows.at(row); }
  std::size_t currentRow() const override { return current; }
  void setCurrentRow(std::size_t row) override { current = row; }
  void refillGrid() override { ++refills; }

  TtestProcTable titles;
  std::vector<TrecordIndex> rows{2, 0, 1};
  std::size_t current = 0;
  int refills = 0;

 private:
  TequipRecTable records_;
};

/// An editor on a browser that shows three records in the order 2, 0, 1. Their control numbers are r0, r1 and r2, their
/// test procedures 3, 7 (titled "(UNUSED)") and 5.
class TeditorFixture {
 public:
  /// Opens the editor on a row where one is given.
  explicit TeditorFixture(std::optional<std::size_t> row = {}) {
    const std::initializer_list<std::pair<unsigned, const char*>> titles = {
        {2, "Zoom"}, {3, "defibrillator"}, {5, "Pump \xC4rzte"}, {7, " (UNUSED) "}, {9, "Zoom"}, {500, "Defib \"X\""}};
    for (const auto& [number, title] : titles) browser->titles.set(number, title);
    for (const unsigned testProc : {3U, 7U, 5U}) {
      const auto count = browser->records().count();
      browser->change(
          TlistChange::append(count, {makeRecord({std::string("r").append(std::to_string(count))}, testProc)}));
    }
    if (row) open(*row);
  }

  /// Opens the editor on one of the browser's rows and waits until it is active.
  void open(std::size_t row = 1) {
    editor.reset();
    editor = std::make_unique<TfrmEqRecEditor>(*browser, TiniFile(folder / "e.ini"), nullptr);
    browser->current = row;
    if (!browser->rows.empty()) editor->showRecord(static_cast<std::int32_t>(browser->rows.at(row)));
    editor->show();
    QVERIFY(QTest::qWaitForWindowActive(editor.get()));
  }

  template <typename Control = QWidget>
  Control* control(const char* name) const {
    return ::control<Control>(editor.get(), name);
  }
  void click(const char* button) const { QTest::mouseClick(control(button), Qt::LeftButton); }
  /// Presses a key in the control that has the focus.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
    QTest::keyClick(editor->windowHandle(), key, modifiers);
  }
  /// Types at the end of a box.
  void type(const char* box, const QString& text) const {
    control(box)->setFocus();
    press(Qt::Key_End, Qt::ControlModifier);
    for (const QChar character : text) {
      QTest::sendKeyEvent(QTest::Click, control(box), Qt::Key_unknown, QString(character), Qt::NoModifier);
    }
  }
  void paste(const char* box, const QString& text) const {
    QApplication::clipboard()->setText(text);
    control(box)->setFocus();
    press(Qt::Key_V, Qt::ControlModifier);
  }
  /// The text of a label, a line or a memo.
  QString text(const char* name) const {
    const auto* memo = qobject_cast<QPlainTextEdit*>(control(name));
    return memo != nullptr ? memo->document()->toRawText() : control(name)->property("text").toString();
  }
  const char* field(TrecordIndex record, int id) const { return browser->records().at(record).text(id); }

  /// The numbers in the list, joined by blanks.
  QString listed() const {
    QStringList numbers;
    const auto* model = list()->model();
    for (int row = 0; row < model->rowCount(); ++row) numbers << model->index(row, 0).data().toString();
    return numbers.join(QLatin1Char(' '));
  }
  /// The number selected in the list; 0 for none.
  int marked() const { return list()->selectionModel()->selectedRows().value(0).data().toInt(); }
  void clickListed(int row) const {
    const QRect cell = list()->visualRect(list()->model()->index(row, 1));
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
  }
  QTableView* list() const { return control<QTableView>("lstTestProc"); }
  QByteArray ini() const { return linesOf(folder / "e.ini"); }

  TtestFolder folder;
  std::unique_ptr<TeditorBrowser> browser = std::make_unique<TeditorBrowser>();
  std::unique_ptr<TfrmEqRecEditor> editor;
};
