#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>
#include <optional>
#include <vector>

#include "comm/selector/connectionSettings.h"
#include "comm/selector/freePorts.h"
#include "comm/selector/portList.h"
#include "support/iniFile.h"

namespace Ui {
class TcomSelectFrm;
}

/// The dialog in which the user chooses how the analyzer is connected. Reads the settings file when it is created and
/// writes it however it closes. Shown once, by `exec`, on the user-interface thread.
///
/// The constructor starts the search for free serial ports and waits for it for a moment. While the dialog is open, the
/// list follows the ports that are found, plugged in and unplugged. What the settings name is shown until the search
/// has tried every port, and stays in the settings unless the user chooses or connects otherwise.
///
/// The dialog closes at once, and the search ends in the background. Only Connect over a serial port waits: for the
/// port to be found, and then for the search's end, so that no port is open afterwards. Cancel ends that wait.
class TcomSelectFrm : public QDialog {
  Q_OBJECT

 public:
  /// `calls` may be called on the search's thread until `endPortSearches` has returned.
  TcomSelectFrm(TiniFile ini, TportCalls calls, QWidget* parent);
  /// Writes the settings if the dialog is still open, for example because its owner was destroyed.
  ~TcomSelectFrm() override;

  /// Shows a line about the list that is to be sent; none for an empty text.
  void showListWarning(const QString& text);

  /// The choice in the controls. After `exec` has returned `Accepted`, a chosen address is valid and a chosen port was
  /// free.
  TconnectionChoice choice() const;

  void done(int result) override;

 private:
  void setUpForm();
  void connectControls();
  void showMethod();
  void enableFields();
  void showPorts();
  void selectPort(int before);
  void showNote();
  const TportItem& selectedPort() const;
  TcommMethod method() const;
  TconnectionSettings settings(bool accepted) const;
  void connectOverPort(std::chrono::milliseconds atMost);
  void waitToConnect(int port);
  void waitNoMore();

  void radMethodClick();
  void serialPortSelectorActivated();
  void btnConnectClick();
  void lookTimer();

  TiniFile ini_;
  TconnectionSettings stored_;
  TportCalls calls_;
  std::optional<TfreePortSearch> search_;
  TfoundPorts found_;
  std::vector<TportItem> items_;  ///< of the list of ports
  QTimer timer_;
  std::unique_ptr<Ui::TcomSelectFrm> ui_;
  TcommMethod wantedMethod_;  ///< as stored, or by the user in this dialog
  int wantedPort_;            ///< the same; 0 for none
  bool methodChosen_ = false;
  bool portChosen_ = false;
  std::optional<int> connectTo_;  ///< the port that Connect waits for, or for the search's end
};
