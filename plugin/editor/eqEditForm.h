#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>

#include "editor/recordFields.h"
#include "editor/testProcList.h"
#include "store/datastructs.h"
#include "support/gridLayout.h"
#include "support/iniFile.h"

class TeditorHost;
class TtestProcModel;
namespace Ui {
class TfrmEqRecEditor;
}

/// The dialog in which one equipment record is edited; Previous and Next walk the rows of the browser's grid.
///
/// Works on the record table in memory only, on the user-interface thread. Shown by `exec`, whose result is `Accepted`
/// however the dialog was left: `isCancelled` tells Cancel, Esc and the close box from OK. Records that were left with
/// Previous or Next keep their changes in either case. The host must outlive every call, but not the dialog itself: a
/// host that goes first, and takes the dialog along, is not touched any more.
class TfrmEqRecEditor : public QDialog {
  Q_OBJECT

 public:
  static constexpr std::int32_t noRecord = -1;

  TfrmEqRecEditor(TeditorHost& host, TiniFile ini, QWidget* parent);
  /// Stores the place on the screen and the list's layout.
  ~TfrmEqRecEditor() override;

  /// Stores the boxes into the record shown so far, then shows another one. `noRecord` shows the present record as it
  /// is in the table. Where there is none to show, or the browser shows no records, the boxes are empty afterwards.
  void showRecord(std::int32_t index);

  bool isCancelled() const { return cancelled_; }
  void clearCancelled() { cancelled_ = false; }

  /// Stores place and size on every way out.
  void done(int result) override;
  /// Esc and the close box.
  void reject() override;
  void setVisible(bool visible) override;

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void setUpForm();
  void connectControls();
  void nameCustomFields();
  void fixSize();
  void place();
  void loadLayout();

  template <typename Visit>
  void forEachBox(Visit visit) const;
  const TequipRec* currentRecord() const;
  TrecordFields boxes() const;
  void showBoxes(const TrecordFields& fields);
  void store();
  void replaceCurrent(TequipRec record);
  void showNoRecord();
  void goToRow(std::size_t row);

  void refillSorted();
  void markTestProc();
  std::optional<unsigned> markedTestProc() const;

  void btnPrevClick();
  void btnNextClick();
  void btnOkClick();
  void btnCancelClick();
  void btnSearchClick();
  void btnClearSearchClick();
  void lstTestProcHeaderPressed(int column);
  void lstTestProcMarkChanged();

  TeditorHost& host_;
  TiniFile ini_;
  TgridLayout layout_;
  TtestProcList list_;
  std::int32_t currentIndex_ = noRecord;
  bool cancelled_ = false;
  // Goes before what it shows: the grid, deleted later, then has an empty model of its own.
  std::unique_ptr<TtestProcModel> model_;
  std::unique_ptr<Ui::TfrmEqRecEditor> ui_;
};
