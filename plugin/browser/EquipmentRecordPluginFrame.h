#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "browser/recordList.h"
#include "browser/settings.h"
#include "editor/editorHost.h"
#include "store/equipRecFiles.h"
#include "support/gridLayout.h"
#include "support/iniFile.h"

class TfrmEqRecEditor;
class TgridModel;
class ThelpViewer;
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
/// constructor loads everything, shows a message box for each file that could not be loaded, and offers the changes
/// that a killed program left. The exit button saves the records; the destructor does unless the exit button has just
/// done it. A failed save shows its message box, but the destructor's second try does not.
class TEquipmentRecordPluginFrame : public QWidget, private TeditorHost {
  Q_OBJECT

 public:
  explicit TEquipmentRecordPluginFrame(TframeContext context);
  ~TEquipmentRecordPluginFrame() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  // Construction and saving
  void setUpForm();
  void setUpGrid();
  void setUpKeys();
  void loadData();
  void offerUnsavedChanges();
  void restore(const TlistEdits& unsaved);
  void secureChanges();
  TsaveReport saveRecords();
  static void showReport(const TsaveReport& report);
  void saveLayout();

  // The grid
  void sort();
  void fill();
  void showSteps();
  std::optional<TrowRange> selectedRows() const;
  std::optional<TrowRange> rowsToExport();
  std::vector<TrecordIndex> selectedRecords() const;
  void selectRows(const TrowRange& rows);
  void showRows(const std::optional<TrowRange>& rows);
  void goToSearch();
  void selectSearchText();
  void selectFirstRow();
  QString searchRemark() const;
  void clearSearchBoxes();
  void showAll();

  // The status line
  void say(const QString& event);
  void showStatus();

  // What the editor needs
  const TequipRecTable& records() const override { return list_.records(); }
  void change(TlistChange change) override;
  const TtestProcTable& testProcs() const override { return list_.titles(); }
  std::size_t shownCount() const override { return list_.view().count(); }
  TrecordIndex recordAt(std::size_t row) const override { return list_.view().at(row); }
  std::size_t currentRow() const override;
  void setCurrentRow(std::size_t row) override;
  void refillGrid() override { fill(); }

  /// Edits a record until the editor closes. Returns whether the user cancelled; nothing if the frame was deleted
  /// meanwhile, and then no member may be touched.
  std::optional<bool> editRecord(TrecordIndex index);

  // Commands
  void tblEqRecHeaderPressed(int column);
  void tblEqRecDoubleClicked(const QModelIndex& index);
  void tblEqRecEnterReleased();
  void tblEqRecTyped(const QString& text);
  void tblEqRecScanned(const QString& text);
  void btnSearchClick();
  void btnClearSearchClick();
  void lblAttentionClick();
  void btnAddClick();
  void btnCopyClick();
  void btnDeleteClick();
  void goStep(TstepWay way);
  void tblEqRecMenu(const QPoint& position);
  void changeRows();
  void copyRows();
  void btnExportClick();
  void exportAs();
  void sayExported(std::size_t count, const std::filesystem::path& path);
  void btnOptionsClick();
  void BtnUploadClick();
  void btnPrintClick();
  void btnImportClick();
  void BtnHelpClick();
  void BtnExitClick();

  TframeContext context_;
  TiniFile ini_;
  TequipRecFiles files_;
  TbrowserSettings settings_;
  TgridLayout layout_;
  TrecordList list_;
  /// What the exit button has done since the frame was last shown.
  enum class TexitSave { none, done, failed };
  TexitSave exitSave_ = TexitSave::none;
  bool uploading_ = false;
  QString lastEvent_;  ///< what the status line tells of it
  std::unique_ptr<ThelpViewer> help_;
  // Destroyed before the data it displays. The grid, which outlives it, then has an empty model of its own.
  std::unique_ptr<TgridModel> model_;
  std::unique_ptr<Ui::TEquipmentRecordPluginFrame> ui_;
  QPointer<TfrmEqRecEditor> editor_;  ///< while one is open
};
