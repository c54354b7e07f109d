#pragma once

#include <memory>

class QWidget;

/// Shows a progress in the taskbar at the button of a program's window, where the platform does that, until this object
/// is destroyed. Used on the user-interface thread.
class TtaskbarProgress {
 public:
  /// At the button of the window that `widget` belongs to, which may be null.
  explicit TtaskbarProgress(const QWidget* widget);
  TtaskbarProgress(const TtaskbarProgress&) = delete;
  TtaskbarProgress& operator=(const TtaskbarProgress&) = delete;
  ~TtaskbarProgress();

  /// 0 to 100
  void show(int percent);

 private:
  struct Tbutton;
  std::unique_ptr<Tbutton> button_;
};
