#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <cstddef>
#include <memory>

namespace Ui {
class TfrmPrintProgress;
}

/// How far printing has come, with a button to cancel it. Comes up only when printing takes a noticeable time.
class TfrmPrintProgress : public QDialog {
  Q_OBJECT

 public:
  TfrmPrintProgress(std::size_t pageCount, QWidget* parent);
  ~TfrmPrintProgress() override;

  /// Shows that a page, counted from 0, begins, and once in sight lets the user act. False: the user has cancelled, or
  /// the dialog was destroyed meanwhile, after which nothing of it may be touched.
  bool startPage(std::size_t page);

 private:
  std::unique_ptr<Ui::TfrmPrintProgress> ui_;
  std::size_t pageCount_;
  QElapsedTimer sinceStart_;
  bool cancelled_ = false;
};
