#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>

#include "browser/columns.h"
#include "browser/settings.h"
#include "browser/view.h"
#include "store/datastructs.h"
#include "store/equipRecFiles.h"
#include "support/gridLayout.h"
#include "support/iniFile.h"
#include "testproc/autosequenceFileStructs.h"

class TgridModel;
namespace Ui {
class TEquipmentRecordPluginFrame;
}

/// What the frame needs to know of the host.
struct TframeContext {
  std::filesystem::path programFolder;       ///< settings, export and help lie here
  std::filesystem::path workingFolder;       ///< holds the folder `DATA`
  std::function<void()> returnToMainWindow;  ///< called last by the exit button; may delete the frame
};

/// The plug-in's main view: the grid of equipment records with its commands.
///
/// Owns the record table, the test procedure titles and the view for its whole life, on the user-interface thread. The
/// constructor loads everything and shows a message box for each thing that could not be loaded. The records are saved
/// by the exit button and, unless that has just been done, by the destructor; a failed save shows its message box.
class TEquipmentRecordPluginFrame : public QWidget {
  Q_OBJECT

 public:
  explicit TEquipmentRecordPluginFrame(TframeContext context);
  ~TEquipmentRecordPluginFrame() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void setUpForm();
  void loadSettings();
  void loadLayout();
  void loadData();
  void clearSearch();
  void sort();
  void fill();
  void saveRecords();
  void saveLayout();

  void tblEqRecHeaderPressed(int column);
  void BtnExitClick();

  TframeContext context_;
  TiniFile ini_;
  TequipRecFiles files_;
  TequipRecTable records_;
  TtestProcTable titles_;
  TbrowserSettings settings_;
  TgridLayout layout_;
  TcolumnLayout columns_;
  Tview view_;
  bool savedByExit_ = false;
  // Goes before what it shows: the grid, deleted later, then has an empty model of its own.
  std::unique_ptr<TgridModel> model_;
  std::unique_ptr<Ui::TEquipmentRecordPluginFrame> ui_;
};
