#pragma once

#include <QDialog>
#include <QUrl>
#include <memory>

class QListWidgetItem;
namespace Ui {
class ThelpWindow;
}

/// The window that shows the user's guide: contents on the left, a page on the right. The pages are part of the module.
/// Esc closes the window; it can be shown again. It never keeps the application alive. It has no parent: its creator
/// owns it.
class ThelpWindow : public QDialog {
  Q_OBJECT

 public:
  ThelpWindow();
  ~ThelpWindow() override;

  /// Shows a section in front of the window of `owner`, which may be modal, and closes when `owner` is destroyed.
  /// `owner` may be null.
  void showInFrontOf(QWidget* owner, const QString& topic);

 private:
  void fillContents();
  void connectControls();
  void showTopic(const QString& topic);
  void lstContentsRowChanged(const QListWidgetItem* item);
  void txtPageSourceChanged(const QUrl& source);

  std::unique_ptr<Ui::ThelpWindow> ui_;
};
