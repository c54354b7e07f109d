#include "upload/taskbarProgress.h"

// The desktops of these platforms have no common way to show it.

struct TtaskbarProgress::Tbutton {};

TtaskbarProgress::TtaskbarProgress(const QWidget*) {}
TtaskbarProgress::~TtaskbarProgress() = default;

void TtaskbarProgress::show(int) {}
