#pragma once

#include <QDialog>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

#include "editor/testProcList.h"
#include "store/datastructs.h"
#include "support/gridLayout.h"
#include "support/iniFile.h"

class TeditorHost;
class TtestProcModel;
namespace Ui {
class TfrmEqRecEditor;
}

/// The dialog that edits one equipment record; Previous and Next walk the rows of the browser's grid.
///
/// Each record that the user leaves with OK, Previous or Next becomes a list change, which the host makes. `exec`
/// always returns `Accepted`; `isCancelled` distinguishes Cancel, Esc and the close box from OK. Cancel keeps the
/// changes to records left with Previous or Next. Used on the user-interface thread. The host must outlive every call,
/// but may be destroyed before the dialog: the destructor does not touch it.
class TfrmEqRecEditor : public QDialog {
  Q_OBJECT

 public:
  static constexpr std::int32_t noRecord = -1;

  TfrmEqRecEditor(TeditorHost& host, TiniFile ini, QWidget* parent);
  /// Saves the position on the screen and the list's layout.
  ~TfrmEqRecEditor() override;

  /// Stores the boxes into the current record, then shows another one. `noRecord` reloads the current record from the
  /// table. When there is no record to show, or the browser shows none, the boxes become empty.
  void showRecord(std::int32_t index);

  bool isCancelled() const { return cancelled_; }
  void clearCancelled() { cancelled_ = false; }

  /// Saves position and size whenever the dialog closes.
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
  void showTexts(const TequipRec& record);
  /// Changes the current record, if any, to the boxes' texts, trimmed, and to the test procedure if one is given.
  void store(std::optional<unsigned> testProc = std::nullopt);
  void showNoRecord();
  void goToRow(std::size_t row);

  // What the editor remarks (editorRemarks.cpp)
  void setUpRemarks();
  void showRemark();
  void addLeftOut(const QString& text);
  std::optional<TrecordIndex> otherWithControlNum() const;
  void showProcedureMark();

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
  QString leftOut_;  ///< the end of the last input, for which there was no room
  // Destroyed before the list that it displays. The grid, deleted later, then has an empty model of its own.
  std::unique_ptr<TtestProcModel> model_;
  std::unique_ptr<Ui::TfrmEqRecEditor> ui_;
};
