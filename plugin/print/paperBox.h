#pragma once

#include <QComboBox>
#include <QPageSize>

/// The choice of paper: the common sizes, and those of the default printer once the list is opened. Asking a printer
/// may take a while, and many reports go to the screen or a file.
class TpaperBox : public QComboBox {
  Q_OBJECT

 public:
  explicit TpaperBox(QWidget* parent);

  QPageSize paper() const;
  /// Adds the paper if the list lacks it.
  void setPaper(const QPageSize& paper);

  void showPopup() override;

 private:
  int indexOf(const QPageSize& paper);

  bool hasPrinterPapers_ = false;
};
