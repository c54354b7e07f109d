#pragma once

#include <QDialog>
#include <memory>

#include "support/iniFile.h"

namespace Ui {
class TfrmOptions;
}

/// The options dialog: the optional columns of the grid and the captions of the custom fields. It works on the settings
/// file alone, which it reads when it is created and writes on OK.
class TfrmOptions : public QDialog {
  Q_OBJECT

 public:
  TfrmOptions(TiniFile ini, QWidget* parent);
  ~TfrmOptions() override;

 private:
  void showSettings();
  void btnOKClick();

  TiniFile ini_;
  std::unique_ptr<Ui::TfrmOptions> ui_;
};
