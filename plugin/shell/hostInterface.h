#pragma once

#include <QString>

/// What the plug-in asks of the host application. Implemented by the host; `setup` hands it over.
class THostApplication {
 public:
  virtual ~THostApplication() = default;

  /// The folder of the host's executable, with a trailing separator. It holds both INI files, the export and the help.
  virtual QString programFolder() const = 0;
  /// The folder that holds `DATA`.
  virtual QString workingFolder() const = 0;
};

/// What the plug-in needs of the host's main window. Implemented by the host; `setup` hands it over.
class Tqt484Frame {
 public:
  virtual ~Tqt484Frame() = default;

  /// The user leaves the plug-in. The exit button calls this last; the host may delete the plug-in's frame inside the
  /// call.
  virtual void returnToMainWindow() = 0;
};
