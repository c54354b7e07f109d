#pragma once

#include <QDialog>
#include <memory>

#include "support/iniFile.h"

namespace Ui {
class TfrmOptions;
}

/// The options dialog: which optional columns the grid shows, and what the custom fields are called. Works through the
/// settings file alone: read when the dialog is made, written on OK.
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
