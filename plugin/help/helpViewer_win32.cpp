#include <QWidget>
#include <string>
#include <utility>
#include <windows.h>

#include "help/helpTopic.h"
#include "help/helpViewer.h"

namespace {

constexpr UINT displayTopic = 0x0000;
constexpr UINT closeAllWindows = 0x0012;

using ThtmlHelp = HWND(WINAPI*)(HWND owner, const char* file, UINT command, DWORD_PTR data);

/// The system's help function; null if the system has none. The library stays loaded, because its own thread ends some
/// time after its last window.
ThtmlHelp htmlHelp() {
  static const HMODULE library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (library == nullptr) return nullptr;
  return reinterpret_cast<ThtmlHelp>(reinterpret_cast<void*>(GetProcAddress(library, "HtmlHelpA")));
}

/// Converts to the system's code page. A character that the code page lacks sets `lossy`.
std::string narrow(const std::wstring& text, BOOL& lossy) {
  const int wide = static_cast<int>(text.size());
  std::string bytes(4 * text.size(), '\0');
  const int length = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), wide, bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, &lossy);
  bytes.resize(length);
  return bytes;
}

/// The folder's short name, which fits every code page; the folder as given if it has no short name.
std::filesystem::path shortName(const std::filesystem::path& folder) {
  std::wstring name(MAX_PATH, L'\0');
  const DWORD length = GetShortPathNameW(folder.c_str(), name.data(), MAX_PATH);
  if (length == 0 || length > MAX_PATH) return folder;
  name.resize(length);
  return name;
}

std::string topicBytes(const std::filesystem::path& programFolder, const std::string& section) {
  BOOL lossy = FALSE;
  const std::string bytes = narrow(helpTopic(programFolder, section).native(), lossy);
  return lossy ? narrow(helpTopic(shortName(programFolder), section).native(), lossy) : bytes;
}

class TsystemHelpViewer : public ThelpViewer {
 public:
  explicit TsystemHelpViewer(std::filesystem::path programFolder) : programFolder_(std::move(programFolder)) {}
  ~TsystemHelpViewer() override { TsystemHelpViewer::closeAll(); }

  void show(QWidget* owner, const QString& topic) override {
    const ThtmlHelp help = htmlHelp();
    if (help == nullptr) return;
    shown_ = true;
    const auto window = owner == nullptr ? nullptr : reinterpret_cast<HWND>(owner->window()->winId());
    help(window, topicBytes(programFolder_, topic.toStdString()).c_str(), displayTopic, 0);
  }

  void closeAll() override {
    if (shown_) htmlHelp()(nullptr, nullptr, closeAllWindows, 0);
    shown_ = false;
  }

 private:
  std::filesystem::path programFolder_;
  bool shown_ = false;
};

}  // namespace

std::unique_ptr<ThelpViewer> makeHelpViewer(const std::filesystem::path& programFolder) {
  return std::make_unique<TsystemHelpViewer>(programFolder);
}
