#pragma once

#include <QDialog>
#include <QUrl>
#include <memory>

class QListWidgetItem;
namespace Ui {
class ThelpWindow;
}

/// The window that shows the user's guide: contents at the left, a page at the right. The pages are part of the module.
/// Esc closes it; a closed one can be shown again. It never keeps the application alive, and has no parent: whoever
/// made it owns it.
class ThelpWindow : public QDialog {
  Q_OBJECT

 public:
  ThelpWindow();
  ~ThelpWindow() override;

  /// Shows the start page, in front of the window that `owner` is in. Closes by itself when `owner` goes. Null: the
  /// window stands for itself.
  void showInFrontOf(QWidget* owner);

 private:
  void fillContents();
  void connectControls();
  void showStartPage();
  void lstContentsRowChanged(const QListWidgetItem* item);
  void txtPageSourceChanged(const QUrl& source);

  std::unique_ptr<Ui::ThelpWindow> ui_;
};
