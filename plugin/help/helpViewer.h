#pragma once

#include <filesystem>
#include <memory>

class QWidget;

/// Shows the user's guide in a window of its own, beside which work goes on. To be used on the user-interface thread.
/// Destroying the viewer closes its window.
class ThelpViewer {
 public:
  ThelpViewer() = default;
  ThelpViewer(const ThelpViewer&) = delete;
  ThelpViewer& operator=(const ThelpViewer&) = delete;
  virtual ~ThelpViewer() = default;

  /// Shows the guide's start page. A window that is open already is brought to the front. `programFolder` is where the
  /// compiled guide lies, for viewers that need it. `owner` is the widget in front of whose window the guide stands;
  /// the guide goes when the owner does. Where there is no guide or nothing to show it with, nothing happens.
  virtual void show(const std::filesystem::path& programFolder, QWidget* owner) = 0;

  /// Closes every help window of this process.
  virtual void closeAll() = 0;
};

/// The viewer of the machine: on Windows that of compiled help, elsewhere a window that shows the same pages.
std::unique_ptr<ThelpViewer> makeHelpViewer();
