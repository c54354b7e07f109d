#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>

#include "comm/commExceptions.h"
#include "comm/commParameters.h"
#include "support/messageText.h"

class ECommError;
class QObject;
class QTcpSocket;
class TcommStruct;

enum class TcommState : std::uint8_t { idle = 0, connecting = 1, connected = 2 };

/// The reason why a USB device cannot be opened on a computer without its driver.
inline constexpr const char* noUsbDriver = "its driver is not installed";

/// The kind of a socket error.
enum class TsocketError { general, send, receive, connect, disconnect, accept };

/// How a wait for bytes ended.
enum class TcommWait { arrived, slotOver, lost };

/// Results of reads and writes.
inline constexpr int commSuccess = 0;
inline constexpr int commFailed = -1;      ///< not all bytes were transferred
inline constexpr int commNoBuffer = -2;    ///< no buffer, or a count of 0
inline constexpr int commWrongReply = -2;  ///< of an exchange: not the expected answer

/// Base of the modules that reach the analyzer.
class TgenericCommmunicationsModule {
 public:
  TgenericCommmunicationsModule() = default;
  TgenericCommmunicationsModule(const TgenericCommmunicationsModule&) = delete;
  TgenericCommmunicationsModule& operator=(const TgenericCommmunicationsModule&) = delete;
  virtual ~TgenericCommmunicationsModule() = default;

  /// Opens the connection and returns 0; leaves everything closed if it throws.
  virtual int open() = 0;
  virtual void close() = 0;
};

/// One channel of bytes to the analyzer over one of three transports.
///
/// Created, used and destroyed on one thread; the destructor closes what is open. On the user-interface thread the
/// waits keep the event loop running, without user input. `showBox` shows the message boxes of transport faults, unless
/// the channel is silent.
///
/// Beside the exceptions named below, every function lets those of `showBox` and of an override pass. A channel stays
/// open when `read`, `write`, `bytesWaiting` or `waitForBytes` throws: the command layer closes it.
class TDataCommClass : public TgenericCommmunicationsModule {
 public:
  using TshowBox = std::function<void(const TmessageText&)>;

  /// `resources` and `parameters` stay the caller's and must live as long; `timeOut` in ms, `blockSize` in bytes.
  /// Throws `TuninitializedCommModeException` if resources, mode or parameters are missing.
  TDataCommClass(TcommStruct* resources, TcommMode mode, unsigned timeOut, std::size_t blockSize,
                 const TcommParameters* parameters, bool silent, TshowBox showBox = {});
  ~TDataCommClass() override;

  /// Throws `TuninitializedCommModeException` (parameters of another mode, or after `close`),
  /// `TnoDeviceAttachedException` (USB), `TinitializationException` (serial port; connection refused),
  /// `TcommTimeoutException` and `ToperationCancelledException` (Ethernet), `std::runtime_error` (Ethernet, the
  /// resources are in use).
  int open() override;
  /// The same. An open USB device is closed first; the other transports refuse to open twice, and close.
  virtual int openAgain();
  /// Throws `TuninitializedCommModeException` after an earlier close.
  void close() override;

  /// The number of bytes that can be read now. Throws `TnoDeviceAttachedException` if the USB device is gone and
  /// `TuninitializedCommModeException` if the channel is not open.
  virtual std::uint32_t bytesWaiting();
  /// Throws `TuninitializedCommModeException` if the channel is not open, and over Ethernet `TcommTimeoutException`.
  virtual int read(void* buffer, std::size_t count);
  /// Writes a block; writing only a part of it is a failure. Throws `TuninitializedCommModeException` if the channel is
  /// not open, and over Ethernet `ToperationCancelledException`.
  virtual int write(const void* buffer, std::size_t count);
  virtual std::size_t blockSize() const { return blockSize_; }
  virtual unsigned timeOut() const { return timeOut_; }
  virtual TcommState connectionState() const { return state_; }
  virtual bool cancelRequested() { return false; }
  /// Called with the progress of an exchange, from 0 to 100.
  virtual void progress(int position);

  /// Waits for so many bytes, for the slot at most. A lost link ends the wait, but what came before it counts. Throws
  /// what `bytesWaiting` throws.
  TcommWait waitForBytes(std::size_t count, std::chrono::milliseconds slot);
  /// Drops what the driver of a serial port or USB device holds: the rest of an earlier exchange, or noise. Does
  /// nothing on a closed channel.
  void discardInput();
  /// Handles pending events except user input. Does nothing on threads other than the user-interface thread.
  static void pumpMessages();
  bool isOpen() const { return open_; }

  /// What the channel is connected to ("COM5"), and why the last read, write or wait failed; empty if none has since
  /// the channel was opened.
  std::string target() const { return targetOf(*parameters_); }
  const std::string& failure() const { return failure_; }
  /// Reads up to 64 bytes that can be read without waiting, for the log. Shows and throws nothing.
  std::string takeRest() noexcept;

 protected:
  virtual void showSerialError(const ECommError& error);
  virtual void socketError(TsocketError error);
  virtual void openUsb();
  virtual void openSerial();
  virtual void openEthernet();
  virtual void socketConnect(QTcpSocket* socket);
  virtual int usbRead(void* buffer, std::uint32_t count);
  virtual int usbWrite(const void* buffer, std::uint32_t count);
  virtual int serialRead(void* buffer, std::size_t count);
  virtual int serialWrite(const void* buffer, std::size_t count);
  virtual int ethernetRead(void* buffer, std::size_t count);
  virtual int ethernetWrite(const void* buffer, std::size_t count);
  virtual std::uint32_t serialBytesWaiting();
  virtual std::uint32_t usbBytesWaiting();
  virtual std::uint32_t ethernetBytesWaiting();

 private:
  void show(const TmessageText& message);
  template <typename Tparameters>
  const Tparameters& parameters() const;
  int failed(const char* operation, const std::string& reason);
  std::string failureText(const char* operation, const std::string& reason) const;
  int transferred(const char* operation, std::size_t done, std::size_t count);
  TcommMode openMode() const { return open_ ? mode_ : TcommMode::none; }
  void openUsbDevice();
  void closeUsbDevice();
  void openPort(const TserialParameters& parameters);
  void startConnecting(const TethernetParameters& parameters);
  void awaitConnection();
  void requireNotRefused() const;
  static bool isOnUserInterfaceThread();
  int lost(const char* operation);
  void noticeEnd();
  void closeTransport();
  bool isLost() const;
  bool canWaitOnLink(std::uint32_t waiting) const;

  bool silent_;
  unsigned connectTimeOut_ = 0;
  TcommState state_ = TcommState::idle;
  TcommMode mode_;
  unsigned timeOut_;
  std::size_t blockSize_;
  TcommStruct* resources_;
  const TcommParameters* parameters_;
  QTcpSocket* connected_ = nullptr;
  std::unique_ptr<QObject> events_;  ///< context of the socket's events
  TshowBox showBox_;
  std::string failure_;
  bool open_ = false;
  bool usbOpen_ = false;
  bool refused_ = false;
  bool serialLost_ = false;
};

template <typename Tparameters>
const Tparameters& TDataCommClass::parameters() const {
  const auto* found = std::get_if<Tparameters>(parameters_);
  if (!found) throw TuninitializedCommModeException();
  return *found;
}
