#include <initguid.h>
#include <windows.h>
// after windows.h
#include <array>
#include <devguid.h>
#include <setupapi.h>
#include <string>

#include "comm/portDevices.h"

namespace {

/// The serial and parallel ports that are plugged in.
class TportList {
 public:
  TportList() = default;
  TportList(const TportList&) = delete;
  TportList& operator=(const TportList&) = delete;
  ~TportList() {
    if (handle_ != INVALID_HANDLE_VALUE) SetupDiDestroyDeviceInfoList(handle_);
  }

  /// The friendly name in the registry of the port "COM5"; empty if there is none.
  std::wstring friendlyName(const std::wstring& port) const {
    SP_DEVINFO_DATA device = {};
    device.cbSize = sizeof device;
    for (DWORD i = 0; SetupDiEnumDeviceInfo(handle_, i, &device) != 0; ++i) {
      if (portName(device) == port) return property(device, SPDRP_FRIENDLYNAME);
    }
    return {};
  }

 private:
  using Tbuffer = std::array<wchar_t, 256>;

  std::wstring portName(SP_DEVINFO_DATA& device) const {
    const HKEY key = SetupDiOpenDevRegKey(handle_, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE) return {};
    Tbuffer text = {};
    DWORD size = sizeof text;
    const auto result = RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, text.data(), &size);
    RegCloseKey(key);
    return result == ERROR_SUCCESS ? text.data() : L"";
  }

  std::wstring property(SP_DEVINFO_DATA& device, DWORD which) const {
    Tbuffer text = {};
    auto* bytes = reinterpret_cast<BYTE*>(text.data());
    constexpr DWORD size = sizeof text - sizeof text[0];  // a zero stays behind the text
    const bool found = SetupDiGetDeviceRegistryPropertyW(handle_, &device, which, nullptr, bytes, size, nullptr) != 0;
    return found ? text.data() : L"";
  }

  HDEVINFO handle_ = SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT);
};

std::string utf8Of(const std::wstring& text) {
  const auto length = static_cast<int>(text.size());
  std::string bytes(text.size() * 3, '\0');
  const auto size = static_cast<int>(bytes.size());
  const int used = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(used));
  return bytes;
}

}  // namespace

bool isPortPresent(int number) {
  std::array<char, 1024> target = {};
  const std::string name = "COM" + std::to_string(number);
  return QueryDosDeviceA(name.c_str(), target.data(), static_cast<DWORD>(target.size())) != 0;
}

std::string portDeviceName(int number) {
  return utf8Of(TportList().friendlyName(L"COM" + std::to_wstring(number)));
}
