#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

class TDataCommClass;

/// Words of the analyzer's command language: four letters and a carriage return, without length and checksum.
inline constexpr const char* handshakeCommand = "GESI\r";
inline constexpr const char* putRecordsCommand = "PEQR\r";
inline constexpr std::size_t commandLength = 5;

/// The command exchange with the analyzer on top of a channel, which stays the caller's. Used on the channel's thread.
///
/// Whatever goes wrong in an exchange closes the channel before it is told. The forwarders throw
/// `TinvalidCommModuleException` where there is no channel.
class VMRcommClass {
 public:
  explicit VMRcommClass(TDataCommClass* channel) : channel_(channel) {}
  VMRcommClass(const VMRcommClass&) = delete;
  VMRcommClass& operator=(const VMRcommClass&) = delete;
  virtual ~VMRcommClass() = default;

  virtual int open();
  virtual int openAgain();
  virtual void close();

  /// Sends a command of `length` bytes and takes `count` blocks for an answer into `buffer`. 0; -1 where the command
  /// could not be written; -2 where a block could not be read or the link was lost. Throws
  /// `TinvalidDataLengthException` (no buffer, no blocks), `TinvalidCommModuleException` (no channel, blocks of no
  /// size), `ToperationCancelledException` and `TcommTimeoutException`.
  virtual int getData(const char* command, std::size_t length, void* buffer, std::size_t count);

  /// Sends a command, then `count` blocks from `buffer`, each of which the analyzer acknowledges. 0; -1 for no command,
  /// no blocks or a failed write; -2 for a wrong acknowledgement or a lost link. Throws as `getData`, but for the
  /// length.
  virtual int putData(const char* command, std::size_t length, const void* buffer, std::size_t count);

  virtual int write(const void* buffer, std::size_t count);
  virtual int read(void* buffer, std::size_t count);
  virtual std::uint32_t bytesWaiting();
  virtual unsigned timeOut();
  virtual bool cancelRequested();
  virtual void progress(int position);

 private:
  struct Tacknowledgement {
    char status = 0;
    char end = 0;
  };

  TDataCommClass& channel() const;
  std::size_t checkedBlockSize() const;
  void requireNotCancelled();
  bool awaitBytes(std::size_t count, std::chrono::milliseconds slot);
  bool readBlock(char* place, std::size_t size);
  bool readAcknowledgement(Tacknowledgement& acknowledgement);
  int closeWith(int result);

  TDataCommClass* channel_;
};
