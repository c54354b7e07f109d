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

/// The guided tour: a user's way through host and plug-in, driven by real key and mouse events. It works on a copy of a
/// list, so that it changes nothing of the user's. It prints one line per step, saying what it checked, and saves a
/// picture of every screen.
class Ttour {
 public:
  /// `sample` is the folder with the list and settings to tour, `pictures` the folder for the pictures.
  Ttour(QString modulePath, const QString& sample, const QString& pictures);

  /// Runs all steps. Returns the exit status: 0, or 1 if a step failed.
  int run();

 private:
  using Tcheck = std::function<QString()>;  ///< performs a step, and returns what it checked

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
  void addNumber(const QString& controlNum);
  void editDescription(const QString& text);
  struct Tbox {
    QString caption;
    QString text;
    QString details;
  };
  /// Calls `open`, which shows a message box, and answers it with a key.
  Tbox answerBox(const QString& pictureName, const std::function<void()>& open, Qt::Key key = Qt::Key_Return);

  void tourSampleList();
  void tourEditing();
  void tourStatus();
  void tourPrinting();
  void tourImport();
  void tourUpload();
  void tourUnsaved();
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
  QString undoAndRedo();
  QString changeColumns();
  QString exportList();
  QString exportListAs();
  QString openHelp();
  QString findItAllAgain();
  QString status() const;
  QString findNothing();
  QString showAttention();
  void chooseChange();
  QString changeRecords();
  QString scanNumber();
  void whilePrintIsOpen(const std::function<void(const TuserHands&)>& act);
  QString choosePrint();
  QString leafPreview();
  QString savePdf();
  QString importList();
  QString uploadList();
  QString uploadToNobody();
  QString failSave();
  QString setChangesAside();
  QString restoreChanges();
  QString joinLists();
  QString goBackToBackup();
  QString showEmpty();
  QString showFull();

  QString modulePath_;
  QDir pictureFolder_;
  QTemporaryDir temporary_;
  TboxWatcher boxes_;
  std::unique_ptr<ThostWindow> host_;
  QString list_;  ///< the folder of the toured list
  int stepCount_ = 0;
  int failures_ = 0;
  int widened_ = 0;        ///< the width of a column after dragging its edge
  QStringList lastOrder_;  ///< the order of descriptions, later of control numbers, on leaving the plug-in
};

/// Runs the guided tour of the list in the folder `sample`, with pictures in the folder `pictures`. Returns the exit
/// status: 0, or 1 if a step failed.
int runTour(const QString& modulePath, const QString& sample, const QString& pictures);
