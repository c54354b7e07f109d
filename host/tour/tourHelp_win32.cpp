#include <QTest>
#include <array>
#include <windows.h>

#include "host/tour/tourHelp.h"

namespace {

BOOL CALLBACK lookForHelp(HWND window, LPARAM found) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  std::array<char, 64> name{};
  GetClassNameA(window, name.data(), name.size());
  const bool isHelp = QByteArray(name.data()).startsWith("HH ") && IsWindowVisible(window) != 0;
  if (isHelp && process == GetCurrentProcessId()) *reinterpret_cast<bool*>(found) = true;
  return TRUE;
}

}  // namespace

/// If the system's viewer has no browser, as may happen under Wine, the call succeeds but shows nothing.
ThelpShown awaitHelp() {
  if (QTest::qWaitFor(isHelpOpen)) return {true, nullptr, QStringLiteral("the user's guide in the system's viewer")};
  const bool isWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  const bool isCalled = GetModuleHandleW(L"hhctrl.ocx") != nullptr;
  return {isWine && isCalled, nullptr,
          QStringLiteral("the system's viewer was called; under Wine it shows nothing here")};
}

bool isHelpOpen() {
  bool found = false;
  EnumWindows(lookForHelp, reinterpret_cast<LPARAM>(&found));
  return found;
}
