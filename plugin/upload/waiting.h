#pragma once

#include <QDialog>
#include <memory>

class TworkerDialog;
namespace Ui {
class TfrmWaiting;
}

/// Tells the user that a cancelled upload has not ended yet, because a driver does not return. The host and its windows
/// take input meanwhile.
///
/// Owns the closed dialog of the upload, with its worker. Deletes itself when the worker has ended, or when the
/// application quits. Destroying it before the worker has ended, also with its parent, ends the worker as destroying
/// the dialog does. Lives on the user-interface thread.
class TfrmWaiting final : public QDialog {
  Q_OBJECT

 public:
  /// Shows the window of a dialog whose worker is running. `parent` may be null.
  static void showFor(std::unique_ptr<TworkerDialog> dialog, QWidget* parent);

  /// Brings the window to the front if there is one. Returns whether there is.
  static bool showOpen();

  ~TfrmWaiting() override;

 private:
  TfrmWaiting(std::unique_ptr<TworkerDialog> dialog, QWidget* parent);

  std::unique_ptr<Ui::TfrmWaiting> ui_;
};
