#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <cstddef>
#include <memory>

namespace Ui {
class TfrmPrintProgress;
}

/// The progress of printing, with a button to cancel. Appears only when printing takes a noticeable time.
class TfrmPrintProgress : public QDialog {
  Q_OBJECT

 public:
  TfrmPrintProgress(std::size_t pageCount, QWidget* parent);
  ~TfrmPrintProgress() override;

  /// Reports that a page, counted from 0, begins, and processes the user's input while the dialog is visible. False:
  /// the user has cancelled, or the dialog was destroyed meanwhile and must not be touched.
  bool startPage(std::size_t page);

 private:
  std::unique_ptr<Ui::TfrmPrintProgress> ui_;
  std::size_t pageCount_;
  QElapsedTimer sinceStart_;
  bool cancelled_ = false;
};
