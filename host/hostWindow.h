#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "host/pluginModule.h"
#include "shell/hostInterface.h"

namespace Ui {
class ThostWindow;
}

/// The host's folders.
struct ThostFolders {
  QString program;  ///< settings, export and help
  QString working;  ///< holds `DATA`
};

/// The stand-in host's main window. It loads the plug-in, shows its launch button, and hides while the plug-in's frame
/// is open.
class ThostWindow : public QWidget, public THostApplication, public Tqt484Frame {
  Q_OBJECT

 public:
  ThostWindow(const QString& modulePath, ThostFolders folders);
  ~ThostWindow() override;

  QString programFolder() const override;
  QString workingFolder() const override;
  void returnToMainWindow() override;

  /// The plug-in's frame while one is open.
  QWidget* pluginFrame() const { return pluginFrame_; }
  /// Why the plug-in cannot be used; empty if it can.
  QString pluginError() const;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void btnLaunchClick();
  void pluginFrameDestroyed();

  TpluginModule plugin_;
  ThostFolders folders_;
  bool pluginReady_;
  QPointer<QWidget> pluginFrame_;
  std::unique_ptr<Ui::ThostWindow> ui_;
};
