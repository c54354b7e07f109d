#pragma once

#include <filesystem>
#include <memory>

class QWidget;

/// Shows the user's guide in a window of its own, which does not block the other windows. Use it on the user-interface
/// thread. The destructor closes the window.
class ThelpViewer {
 public:
  ThelpViewer() = default;
  ThelpViewer(const ThelpViewer&) = delete;
  ThelpViewer& operator=(const ThelpViewer&) = delete;
  virtual ~ThelpViewer() = default;

  /// Shows the guide's start page, and brings a window that is already open to the front. `programFolder` holds the
  /// compiled guide, for viewers that need it. The guide stays in front of the window of `owner`, and closes when
  /// `owner` is destroyed. If there is no guide or no viewer for it, nothing happens.
  virtual void show(const std::filesystem::path& programFolder, QWidget* owner) = 0;

  /// Closes every help window of this process.
  virtual void closeAll() = 0;
};

/// The platform's viewer: on Windows the one for compiled help, elsewhere a window that shows the same pages.
std::unique_ptr<ThelpViewer> makeHelpViewer();
