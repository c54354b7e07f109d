#include <QTest>
#include <QWidget>
#include <array>
#include <windows.h>

#include "help/helpViewer.h"
#include "help/windowTopics.h"
#include "tools/testList.h"

namespace {

/// The number of help windows that this process has open.
int helpWindows() {
  int count = 0;
  const auto look = [](HWND window, LPARAM counter) -> BOOL {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    std::array<char, 64> name{};
    GetClassNameA(window, name.data(), name.size());
    const bool isHelp = process == GetCurrentProcessId() && QByteArray(name.data()).startsWith("HH ");
    if (isHelp && IsWindowVisible(window)) ++*reinterpret_cast<int*>(counter);
    return TRUE;
  };
  EnumWindows(look, reinterpret_cast<LPARAM>(&count));
  return count;
}

bool isWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace

/// The system's viewer for compiled help.
class ThelpViewerTest : public QObject {
  Q_OBJECT
 private slots:
  void callsTheSystem() {
    const auto viewer = makeHelpViewer(COMPILED_GUIDE_FOLDER);
    viewer->show(nullptr, QString::fromLatin1(guideStart));
    QVERIFY(GetProcAddress(GetModuleHandleW(L"hhctrl.ocx"), "HtmlHelpA") != nullptr);
    viewer->closeAll();
  }

  void closesAndOpensAgain() {
    if (isWine()) QSKIP("Wine has no browser here to show the pages with");
    QWidget owner;
    owner.show();
    auto viewer = makeHelpViewer(COMPILED_GUIDE_FOLDER);
    for (int i = 0; i < 2; ++i) {
      viewer->show(&owner, QString::fromLatin1(guideStart));
      QTRY_COMPARE(helpWindows(), 1);
      viewer->closeAll();
      QTRY_COMPARE(helpWindows(), 0);
    }
  }
};
EQREC_TEST(ThelpViewerTest);

#include "helpViewerTest_win32.moc"
