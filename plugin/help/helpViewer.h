#pragma once

#include <QObject>
#include <filesystem>
#include <memory>

class QWidget;

/// Shows the user's guide in a window of its own, which does not block the other windows. While it lives, F1 in a
/// dialog or message box of the plug-in opens the guide at that window's section. Use it on the user-interface thread.
/// The destructor closes the guide.
class ThelpViewer : public QObject {
  Q_OBJECT

 public:
  ThelpViewer();

  /// Shows a section of the guide, such as "editor.html#fields", and brings a window that is already open to the front.
  /// The guide stays in front of the window of `owner`, and closes when `owner` is destroyed. If there is no guide or
  /// no viewer for it, nothing happens.
  virtual void show(QWidget* owner, const QString& topic) = 0;

  /// Closes every help window of this process.
  virtual void closeAll() = 0;

  bool eventFilter(QObject* watched, QEvent* event) override;
};

/// The platform's viewer: on Windows the one for compiled help, elsewhere a window that shows the same pages.
/// `programFolder` holds the compiled guide, for viewers that need it.
std::unique_ptr<ThelpViewer> makeHelpViewer(const std::filesystem::path& programFolder);
