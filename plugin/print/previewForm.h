#pragma once

#include <QDialog>
#include <memory>

class Treport;
namespace Ui {
class TfrmPrintPreview;
}

/// The preview: shows one page of a report at a time, with buttons to turn pages and to zoom. A page is laid out when
/// it is shown, so that a long report opens as fast as a short one. The report must outlive the dialog. Print and Save
/// as PDF only say what the user wants; the dialog stays open.
class TfrmPrintPreview : public QDialog {
  Q_OBJECT

 public:
  TfrmPrintPreview(const Treport& report, QWidget* parent);
  ~TfrmPrintPreview() override;

 signals:
  /// The user wants the report on paper or in a PDF file.
  void printAsked();
  void pdfAsked();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// What the zoom adapts to when the window is resized.
  enum class Tfit { width, page, nothing };

  void setUpKeys();
  void edtPageValueChanged(int number);
  void zoomBy(double factor);
  void fit(Tfit fit);

  std::unique_ptr<Ui::TfrmPrintPreview> ui_;
  int pageCount_;
  Tfit fit_ = Tfit::width;
};
