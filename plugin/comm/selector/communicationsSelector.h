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

/// The dialog in which the user chooses how the analyzer is connected. Works through the settings file: read when the
/// dialog is made, written however it closes. To be shown once, by `exec`, on the user-interface thread.
///
/// Making the dialog begins the search for free serial ports, and waits for it a moment; the ports that it finds later
/// join the list in the open dialog. The dialog closes only when the search is over, so that no port is held open
/// afterwards: where a driver keeps the search waiting, it stays for that time, disabled, with the event loop running.
class TcomSelectFrm : public QDialog {
  Q_OBJECT

 public:
  /// `canOpen` is called on the search's thread, for as long as the dialog lives at most.
  TcomSelectFrm(TiniFile ini, TfreePortSearch::TcanOpen canOpen, QWidget* parent);
  /// Writes the settings where the dialog is still open, as when its owner goes; waits for the search.
  ~TcomSelectFrm() override;

  /// What the controls say; once `exec` has returned `Accepted`, an address that was chosen is valid.
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
  bool methodChosen_ = false;   ///< by the user, in this dialog
  bool portChosen_ = false;     ///< likewise
  std::optional<int> closing_;  ///< with this result, as soon as the search is over
};
