#pragma once

#include <QString>

/// What the plug-in asks of the host application. Implemented by the host; `setup` hands it over.
class THostApplication {
 public:
  virtual ~THostApplication() = default;

  /// The folder of the host's executable, with its trailing separator: both INI files, the export and the help lie
  /// here.
  virtual QString programFolder() const = 0;
  /// The folder that holds `DATA`.
  virtual QString workingFolder() const = 0;
};

/// The host's main window, as far as the plug-in knows it. Implemented by the host; `setup` hands it over.
class Tqt484Frame {
 public:
  virtual ~Tqt484Frame() = default;

  /// The user leaves the plug-in: the last thing that the exit button does. The host may delete the plug-in's frame
  /// from inside this call.
  virtual void returnToMainWindow() = 0;
};
