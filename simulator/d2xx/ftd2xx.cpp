#include "simulator/d2xx/ftd2xx.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "simulator/d2xx/driverLink.h"
#include "simulator/d2xx/loopback.h"

namespace {

constexpr int openTimeout = 2000;     // milliseconds
constexpr int transferTimeout = 300;  // milliseconds, for reads and writes, until the host sets another

/// An open device.
class Tdevice {
 public:
  Tdevice(std::unique_ptr<Tloopback> loopback, const TwriteOrder& order) : link(std::move(loopback)), order_(order) {}

  /// How many bytes of a write are accepted; fewer than all if the order applies to this write.
  std::uint32_t taken(std::string_view bytes);

  /// Counts a call of the function. The one that must hang returns when the link has dropped.
  void enter(const std::string& function);

  /// Drops the bytes that wait to be read. False if the link has dropped.
  bool dropReceived() const;

  const std::unique_ptr<Tloopback> link;
  std::atomic<int> readTimeout = transferTimeout;
  std::atomic<int> writeTimeout = transferTimeout;

 private:
  std::map<std::string, int> calls_;
  TwriteOrder order_;
  bool seen_ = false;  ///< the order's command
  std::uint32_t writesLeft_ = 0;
};

std::string environment(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr ? otherwise : value;
}

void Tdevice::enter(const std::string& function) {
  const std::string hanging = environment("QT484_USB_HANG", "");
  const std::string call = function + '@' + std::to_string(++calls_[function]);
  if (hanging != call && hanging + "@1" != call) return;
  while (dropReceived()) std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

bool Tdevice::dropReceived() const {
  std::array<char, 256> dropped{};
  while (const std::size_t waiting = link->waiting().value_or(0)) {
    link->receive(dropped.data(), std::min(waiting, dropped.size()), transferTimeout);
  }
  return link->waiting().has_value();
}

std::uint32_t Tdevice::taken(std::string_view bytes) {
  const auto all = static_cast<std::uint32_t>(bytes.size());
  const bool isCommand = bytes == std::string_view(order_.command.data(), order_.command.size());
  if (isCommand) writesLeft_ = order_.later;
  if (seen_ && !isCommand) --writesLeft_;
  seen_ = seen_ || isCommand;
  if (order_.kind == TwriteOrder::Tkind::none || !seen_ || writesLeft_ != 0) return all;
  if (order_.kind == TwriteOrder::Tkind::blockedWrite) {
    std::this_thread::sleep_for(std::chrono::milliseconds(writeTimeout));
  }
  order_.kind = TwriteOrder::Tkind::none;
  return all / 2;
}

/// The open devices by handle.
class Topened {
 public:
  FT_HANDLE add(std::shared_ptr<Tdevice> device) {
    const std::scoped_lock lock(mutex_);
    FT_HANDLE handle = device.get();
    devices_[handle] = std::move(device);
    return handle;
  }
  std::shared_ptr<Tdevice> find(FT_HANDLE handle) {
    const std::scoped_lock lock(mutex_);
    const auto found = devices_.find(handle);
    return found == devices_.end() ? nullptr : found->second;
  }
  std::shared_ptr<Tdevice> take(FT_HANDLE handle) {
    std::shared_ptr<Tdevice> device = find(handle);
    const std::scoped_lock lock(mutex_);
    devices_.erase(handle);
    return device;
  }
  bool isEmpty() {
    const std::scoped_lock lock(mutex_);
    return devices_.empty();
  }

 private:
  std::mutex mutex_;
  std::map<FT_HANDLE, std::shared_ptr<Tdevice>> devices_;
};

Topened& opened() {
  static Topened devices;
  return devices;
}

/// The open device, once a call that must hang has returned; null if the handle is not open.
std::shared_ptr<Tdevice> entered(FT_HANDLE handle, const char* function) {
  auto device = opened().find(handle);
  if (device) device->enter(function);
  return device;
}

/// Connects and waits for the analyzer's order, which comes first. Null if there is no analyzer.
std::shared_ptr<Tdevice> connectDevice() {
  const auto port = std::strtoul(environment("QT484_USB", "60602").c_str(), nullptr, 10);
  std::unique_ptr<Tloopback> link = Tloopback::connect(static_cast<std::uint16_t>(port));
  std::array<char, sizeof(TwriteOrder)> order{};
  if (!link || link->receive(order.data(), order.size(), openTimeout) != order.size()) return nullptr;
  return std::make_shared<Tdevice>(std::move(link), messageOf<TwriteOrder>(order.data()));
}

}  // namespace

FT_STATUS D2XX_CALL FT_OpenEx(const void* description, std::uint32_t flags, FT_HANDLE* handle) {
  const std::string name = environment("QT484_USB_NAME", "Velmora Systems QT484 Plus");
  if (flags != FT_OPEN_BY_DESCRIPTION || name != static_cast<const char*>(description)) return FT_DEVICE_NOT_FOUND;
  if (!opened().isEmpty()) return FT_DEVICE_NOT_OPENED;
  std::shared_ptr<Tdevice> device = connectDevice();
  if (!device) return FT_DEVICE_NOT_FOUND;
  device->enter("FT_OpenEx");
  *handle = opened().add(std::move(device));
  return FT_OK;
}

FT_STATUS D2XX_CALL FT_Close(FT_HANDLE handle) {
  const auto device = opened().take(handle);
  if (!device) return FT_INVALID_HANDLE;
  device->enter("FT_Close");
  return device->link->waiting() ? FT_OK : FT_IO_ERROR;
}

FT_STATUS D2XX_CALL FT_Read(FT_HANDLE handle, void* buffer, std::uint32_t count, std::uint32_t* read) {
  *read = 0;
  const auto device = entered(handle, "FT_Read");
  if (!device) return FT_INVALID_HANDLE;
  *read = static_cast<std::uint32_t>(device->link->receive(static_cast<char*>(buffer), count, device->readTimeout));
  return *read > 0 || device->link->waiting() ? FT_OK : FT_IO_ERROR;
}

FT_STATUS D2XX_CALL FT_Write(FT_HANDLE handle, const void* buffer, std::uint32_t count, std::uint32_t* written) {
  *written = 0;
  const auto device = entered(handle, "FT_Write");
  if (!device) return FT_INVALID_HANDLE;
  if (!device->link->waiting()) return FT_IO_ERROR;
  const std::string_view bytes(static_cast<const char*>(buffer), count);
  const std::uint32_t taken = device->taken(bytes);
  const TwriteHead head{taken < count ? TwriteHead::Tkind::cut : TwriteHead::Tkind::whole, taken};
  const auto headBytes = bytesOf(head);
  std::string message(headBytes.data(), headBytes.size());
  message += bytes.substr(0, taken);
  if (!device->link->send(message)) return FT_IO_ERROR;
  *written = taken;
  return FT_OK;
}

FT_STATUS D2XX_CALL FT_GetQueueStatus(FT_HANDLE handle, std::uint32_t* waiting) {
  *waiting = 0;
  const auto device = entered(handle, "FT_GetQueueStatus");
  if (!device) return FT_INVALID_HANDLE;
  const auto count = device->link->waiting();
  *waiting = count.value_or(0);
  return count ? FT_OK : FT_IO_ERROR;
}

FT_STATUS D2XX_CALL FT_SetTimeouts(FT_HANDLE handle, std::uint32_t read, std::uint32_t write) {
  const auto device = entered(handle, "FT_SetTimeouts");
  if (!device) return FT_INVALID_HANDLE;
  device->readTimeout = static_cast<int>(read);
  device->writeTimeout = static_cast<int>(write);
  return FT_OK;
}

FT_STATUS D2XX_CALL FT_Purge(FT_HANDLE handle, std::uint32_t mask) {
  const auto device = entered(handle, "FT_Purge");
  if (!device) return FT_INVALID_HANDLE;
  const bool isLinked = (mask & FT_PURGE_RX) != 0 ? device->dropReceived() : device->link->waiting().has_value();
  return isLinked ? FT_OK : FT_IO_ERROR;
}
