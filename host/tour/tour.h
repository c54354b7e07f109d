#pragma once

#include <QDir>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "host/hostWindow.h"
#include "host/tour/userHands.h"

inline constexpr int controlNumColumn = 1;  ///< of the plug-in's grid

/// The guided tour: a user's way through host and plug-in, driven by real key and mouse events on a copy of a list, so
/// that nothing of the user's is changed. Prints one line a step, saying what was checked, and puts a picture of every
/// screen into a folder.
class Ttour {
 public:
  /// `sample` is the folder whose list and settings are toured, `pictures` where the pictures go.
  Ttour(QString modulePath, const QString& sample, const QString& pictures);

  /// Runs all steps. Returns the exit status: 0, or 1 where a step failed.
  int run();

 private:
  using Tcheck = std::function<QString()>;  ///< does a step, and tells what was checked

  void step(const QString& name, const Tcheck& check);
  void picture(QWidget* window, const QString& name);
  void pictures(QWidget* window, const QString& name);

  void startHost(const QString& folder);
  TuserHands host() const { return TuserHands(host_.get()); }
  TuserHands frame() const;
  QTableView* grid() const;
  void launch();
  void leave();
  int rows() const;
  void selectFirstRows(int count);
  QStringList columnTexts(int column) const;

  void tourSampleList();
  void tourEditing();
  void tourPrinting();
  void tourImport();
  void tourUpload();
  void tourEmptyList();
  void tourFullList();

  QString openHost();
  QString openPlugin();
  QString sortByDescription();
  QString sortBackwards();
  QString selectWithKeyboard();
  QString widenColumn();
  QString leaveWithKeyboard();
  QString openAgain();
  QString searchPumps();
  QString clearSearch();
  QString editWithNextAndPrevious();
  QString addRecord();
  QString copyRecords();
  QString deleteRecords();
  QString changeColumns();
  QString exportList();
  QString openHelp();
  QString findItAllAgain();
  void whilePrintIsOpen(const std::function<void(const TuserHands&)>& act);
  QString choosePrint();
  QString leafPreview();
  QString savePdf();
  QString importList();
  QString uploadList();
  QString uploadToNobody();
  QString showEmpty();
  QString showFull();

  QString modulePath_;
  QDir pictureFolder_;
  QTemporaryDir temporary_;
  TboxWatcher boxes_;
  std::unique_ptr<ThostWindow> host_;
  QString list_;  ///< the folder being toured
  int stepCount_ = 0;
  int failures_ = 0;
  int widened_ = 0;        ///< the width that a column was dragged to
  QStringList lastOrder_;  ///< the descriptions, later the control numbers, as they stood when the plug-in was left
};
