#include <QWidget>
#include <shobjidl.h>
#include <windows.h>

#include "upload/taskbarProgress.h"

/// The button of a window, by COM. Qt has initialized COM on the user-interface thread.
struct TtaskbarProgress::Tbutton {
  ITaskbarList3* list = nullptr;
  HWND window = nullptr;
};

TtaskbarProgress::TtaskbarProgress(const QWidget* widget) : button_(std::make_unique<Tbutton>()) {
  if (widget == nullptr) return;
  button_->window = reinterpret_cast<HWND>(widget->window()->winId());
  void* list = nullptr;
  const HRESULT result = CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3, &list);
  if (SUCCEEDED(result)) button_->list = static_cast<ITaskbarList3*>(list);
  if (button_->list != nullptr && FAILED(button_->list->HrInit())) {
    button_->list->Release();
    button_->list = nullptr;
  }
}

TtaskbarProgress::~TtaskbarProgress() {
  if (button_->list == nullptr) return;
  button_->list->SetProgressState(button_->window, TBPF_NOPROGRESS);
  button_->list->Release();
}

void TtaskbarProgress::show(int percent) {
  constexpr ULONGLONG all = 100;
  if (button_->list != nullptr) button_->list->SetProgressValue(button_->window, static_cast<ULONGLONG>(percent), all);
}
