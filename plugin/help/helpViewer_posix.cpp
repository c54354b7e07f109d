#include <QApplication>

#include "help/helpViewer.h"
#include "help/helpWindow.h"

namespace {

class TwindowHelpViewer : public ThelpViewer {
 public:
  void show(QWidget* owner, const QString& topic) override {
    if (window_ == nullptr) window_ = std::make_unique<ThelpWindow>();
    window_->showInFrontOf(owner, topic);
  }

  void closeAll() override {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
      if (qobject_cast<ThelpWindow*>(window) != nullptr) window->close();
    }
  }

 private:
  std::unique_ptr<ThelpWindow> window_;  // without a parent, so that nothing else deletes it
};

}  // namespace

std::unique_ptr<ThelpViewer> makeHelpViewer(const std::filesystem::path& /*programFolder*/) {
  return std::make_unique<TwindowHelpViewer>();
}
