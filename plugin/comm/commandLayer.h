#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "comm/exchangeTrace.h"

class TDataCommClass;

/// Commands of the analyzer: four letters and a carriage return, without length and checksum.
inline constexpr const char* handshakeCommand = "GESI\r";
inline constexpr const char* putRecordsCommand = "PEQR\r";
inline constexpr std::size_t commandLength = 5;

/// The command exchange with the analyzer on top of a channel, which stays the caller's. Used on the channel's thread.
///
/// The channel is closed when an exchange fails, and when any exception leaves a function of this class, whichever
/// function of the channel threw it. Every function but the exchanges forwards to the channel, and throws
/// `TinvalidCommModuleException` where there is none. The log says at which step an exchange failed.
class VMRcommClass {
 public:
  explicit VMRcommClass(TDataCommClass* channel) : channel_(channel) {}
  VMRcommClass(const VMRcommClass&) = delete;
  VMRcommClass& operator=(const VMRcommClass&) = delete;
  virtual ~VMRcommClass() = default;

  virtual int open();
  virtual int openAgain();
  virtual void close();

  /// Sends a command of `length` bytes and reads the answer of `count` blocks into `buffer`. Returns 0, -1 if the
  /// command could not be written, -2 if a block could not be read or the link was lost. Throws
  /// `TinvalidDataLengthException` (no buffer or no blocks), `TinvalidCommModuleException` (no channel or a block size
  /// of 0), `ToperationCancelledException`, `TcommTimeoutException`, and what the channel throws.
  virtual int getData(const char* command, std::size_t length, void* buffer, std::size_t count);

  /// Sends a command, then `count` blocks from `buffer`, each of which the analyzer acknowledges. Returns 0, -1 for no
  /// command, no blocks or a failed write, -2 for a wrong acknowledgement or a lost link. Throws what `getData` throws,
  /// except `TinvalidDataLengthException`.
  virtual int putData(const char* command, std::size_t length, const void* buffer, std::size_t count);

  virtual int write(const void* buffer, std::size_t count);
  virtual int read(void* buffer, std::size_t count);
  virtual std::uint32_t bytesWaiting();
  virtual unsigned timeOut();
  virtual bool cancelRequested();
  virtual void progress(int position);

  /// Of the last exchange: the blocks that the analyzer has acknowledged.
  std::size_t acknowledgedBlocks() const { return acknowledgedBlocks_; }

 private:
  struct Tacknowledgement {
    char status = 0;
    char end = 0;
  };

  TDataCommClass& channel() const;
  std::size_t checkedBlockSize() const;
  template <typename Twork>
  auto closingOnThrow(Twork work);
  template <typename Twork>
  int exchange(Twork work);
  void closeChannel() noexcept;
  void logFailure(const std::string& reason) noexcept;
  int takeBlocks(char* buffer, std::size_t count, std::size_t size);
  int sendBlocks(const char* buffer, std::size_t count, std::size_t size);
  void requireNotCancelled();
  bool awaitBytes(std::size_t count, std::chrono::milliseconds slot);
  std::optional<Tacknowledgement> readAcknowledgement();

  TDataCommClass* channel_;
  TexchangeTrace trace_;
  std::size_t acknowledgedBlocks_ = 0;
};
