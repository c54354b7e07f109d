#pragma once

#include <QDialog>
#include <memory>

class Treport;
namespace Ui {
class TfrmPrintPreview;
}

/// The preview: one page of a report at a time, to leaf through and to zoom. A page is laid out when it is shown, so
/// that a long report opens as fast as a short one. The report must outlive it.
class TfrmPrintPreview : public QDialog {
  Q_OBJECT

 public:
  TfrmPrintPreview(const Treport& report, QWidget* parent);
  ~TfrmPrintPreview() override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// What the zoom follows when the window changes its size.
  enum class Tfit { width, page, nothing };

  void setUpKeys();
  void edtPageValueChanged(int number);
  void zoomBy(double factor);
  void fit(Tfit fit);

  std::unique_ptr<Ui::TfrmPrintPreview> ui_;
  int pageCount_;
  Tfit fit_ = Tfit::width;
};
