#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>
#include <optional>

#include "comm/selector/connectionSettings.h"
#include "comm/selector/freePorts.h"
#include "support/iniFile.h"

namespace Ui {
class TcomSelectFrm;
}

/// The dialog in which the user chooses how the analyzer is connected. Reads the settings file when it is created and
/// writes it however it closes. Shown once, by `exec`, on the user-interface thread.
///
/// The constructor starts the search for free serial ports and waits for it for a moment. Ports that are found later
/// join the list in the open dialog. The dialog closes only after the search has ended, so that no port is open
/// afterwards. If a driver is slow, the dialog stays open until then, disabled, with the event loop running.
class TcomSelectFrm : public QDialog {
  Q_OBJECT

 public:
  /// `canOpen` is called on the search's thread, and never after the dialog was destroyed.
  TcomSelectFrm(TiniFile ini, TfreePortSearch::TcanOpen canOpen, QWidget* parent);
  /// Writes the settings if the dialog is still open, for example because its owner was destroyed. Waits for the
  /// search.
  ~TcomSelectFrm() override;

  /// The choice in the controls. After `exec` has returned `Accepted`, a chosen address is valid.
  TconnectionChoice choice() const;

  void done(int result) override;

 private:
  void setUpForm();
  void connectControls();
  void showMethod(TcommMethod method);
  void enableFields();
  void showPorts();
  void addPorts(const std::vector<int>& ports);
  TcommMethod method() const;
  TconnectionSettings settings() const;

  void radMethodClick();
  void serialPortSelectorActivated() { portChosen_ = true; }
  void btnConnectClick();
  void searchTimer();

  TiniFile ini_;
  TconnectionSettings stored_;
  TfreePortSearch search_;
  QTimer timer_;
  std::unique_ptr<Ui::TcomSelectFrm> ui_;
  std::size_t shownPorts_ = 0;
  bool methodChosen_ = false;   ///< by the user in this dialog
  bool portChosen_ = false;     ///< by the user in this dialog
  std::optional<int> closing_;  ///< closes with this result after the end of the search
};
