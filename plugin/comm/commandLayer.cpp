#include "comm/commandLayer.h"

#include <array>
#include <chrono>
#include <cstring>

#include "comm/genComm.h"
#include "support/failure.h"
#include "support/log.h"

namespace {

using std::chrono::milliseconds;
using Tclock = std::chrono::steady_clock;

constexpr milliseconds replySlot(50);
constexpr milliseconds acknowledgementSlot(10);
constexpr char accepted = '*';
constexpr char goOn = 'C';
constexpr char carriageReturn = '\r';

// The progress of an exchange: after the command is sent, and from 50 to 90 during the blocks.
constexpr int commandSent = 50;
constexpr int putCommandSent = 30;

int blockProgress(std::size_t block, std::size_t count) {
  return static_cast<int>((block * 40 + 40) / count + 50);
}

}  // namespace

template <typename Twork>
auto VMRcommClass::closingOnThrow(Twork work) {
  try {
    return work();
  } catch (...) {
    closeChannel();
    throw;
  }
}

/// Runs an exchange. A failure is logged and closes the channel. The handler of an exception logs its text.
template <typename Twork>
int VMRcommClass::exchange(Twork work) {
  return closingOnThrow([&] {
    int result = commFailed;
    try {
      result = work();
    } catch (...) {
      logFailure({});
      throw;
    }
    if (result == commSuccess) return result;
    const std::string reason = channel_ ? channel_->failure() : "";
    logFailure(reason.empty() && result == commWrongReply ? "unexpected answer" : reason);
    closeChannel();
    return result;
  });
}

/// Also logs what was received but not read.
void VMRcommClass::logFailure(const std::string& reason) noexcept try {
  if (channel_) trace_.addReceived(channel_->takeRest());
  trace_.logFailure(channel_ ? channel_->target() : "no channel", reason);
} catch (...) {
  logCaught("the log of an exchange");
}

void VMRcommClass::closeChannel() noexcept try {
  if (channel_ && channel_->isOpen()) channel_->close();
} catch (...) {
  logCaught("closing the channel");
}

int VMRcommClass::getData(const char* command, std::size_t length, void* buffer, std::size_t count) {
  trace_.start(command, length);
  return exchange([&] {
    if (!buffer || count == 0) throw TinvalidDataLengthException();
    const std::size_t size = checkedBlockSize();
    trace_.setBlocks(count, size);
    channel().discardInput();
    if (channel().write(command, length) != commSuccess) return commFailed;
    channel().progress(commandSent);
    return takeBlocks(static_cast<char*>(buffer), count, size);
  });
}

int VMRcommClass::takeBlocks(char* buffer, std::size_t count, std::size_t size) {
  for (std::size_t block = 0; block < count; ++block) {
    trace_.enter(TexchangeStep::reply, block);
    char* place = buffer + block * size;
    std::memset(place, 0, size);
    if (!awaitBytes(size, replySlot) || channel().read(place, size) != commSuccess) return commWrongReply;
    channel().progress(blockProgress(block, count));
    TDataCommClass::pumpMessages();
  }
  return commSuccess;
}

int VMRcommClass::putData(const char* command, std::size_t length, const void* buffer, std::size_t count) {
  trace_.start(command, length);
  acknowledgedBlocks_ = 0;
  return exchange([&] {
    if (!command || count == 0) return commFailed;
    const std::size_t size = checkedBlockSize();
    trace_.setBlocks(count, size);
    channel().discardInput();
    if (channel().write(command, length) != commSuccess) return commFailed;
    channel().progress(putCommandSent);
    trace_.enter(TexchangeStep::commandAcknowledgement);
    const auto first = readAcknowledgement();
    // Less strict than after a block: either of the two bytes is enough.
    if (!first || (first->status != accepted && first->end != carriageReturn)) return commWrongReply;
    return sendBlocks(static_cast<const char*>(buffer), count, size);
  });
}

int VMRcommClass::sendBlocks(const char* buffer, std::size_t count, std::size_t size) {
  for (std::size_t block = 0; block < count; ++block) {
    trace_.enter(TexchangeStep::block, block);
    TDataCommClass::pumpMessages();
    requireNotCancelled();
    if (channel().write(buffer + block * size, size) != commSuccess) return commFailed;
    channel().progress(blockProgress(block, count));
    trace_.enter(TexchangeStep::blockAcknowledgement, block);
    const char due = block + 1 == count ? accepted : goOn;
    const auto answer = readAcknowledgement();
    if (!answer || answer->status != due || answer->end != carriageReturn) return commWrongReply;
    acknowledgedBlocks_ = block + 1;
  }
  return commSuccess;
}

/// Waits slot by slot until the channel's time-out; false if the link was lost. Each slot has its end on the clock, so
/// that a busy machine does not make the time-out longer.
bool VMRcommClass::awaitBytes(std::size_t count, milliseconds slot) {
  const auto length = static_cast<unsigned>(slot.count());
  const unsigned timeOut = channel().timeOut();
  const unsigned slots = timeOut < length ? 1 : timeOut / length;
  auto slotEnd = Tclock::now();
  for (unsigned passed = 0; passed < slots; ++passed) {
    TDataCommClass::pumpMessages();
    requireNotCancelled();
    slotEnd += slot;
    const TcommWait wait = channel().waitForBytes(count, std::chrono::ceil<milliseconds>(slotEnd - Tclock::now()));
    if (wait != TcommWait::slotOver) return wait == TcommWait::arrived;
  }
  throw TcommTimeoutException(
      Tfailure{"wait for", channel().target(), "no answer in " + std::to_string(timeOut) + " ms"}.text());
}

std::optional<VMRcommClass::Tacknowledgement> VMRcommClass::readAcknowledgement() {
  std::array<char, 4> bytes{};
  if (!awaitBytes(2, acknowledgementSlot) || channel().read(bytes.data(), 2) != commSuccess) return std::nullopt;
  trace_.addReceived({bytes.data(), 2});
  return Tacknowledgement{bytes[0], bytes[1]};
}

void VMRcommClass::requireNotCancelled() {
  if (channel().cancelRequested()) throw ToperationCancelledException();
}

std::size_t VMRcommClass::checkedBlockSize() const {
  const std::size_t size = channel().blockSize();
  if (size == 0) throw TinvalidCommModuleException();
  return size;
}

TDataCommClass& VMRcommClass::channel() const {
  if (!channel_) throw TinvalidCommModuleException();
  return *channel_;
}

int VMRcommClass::open() {
  return closingOnThrow([&] { return channel().open(); });
}

int VMRcommClass::openAgain() {
  return closingOnThrow([&] { return channel().openAgain(); });
}

void VMRcommClass::close() {
  closingOnThrow([&] { channel().close(); });
}

int VMRcommClass::write(const void* buffer, std::size_t count) {
  return closingOnThrow([&] { return channel().write(buffer, count); });
}

int VMRcommClass::read(void* buffer, std::size_t count) {
  return closingOnThrow([&] { return channel().read(buffer, count); });
}

std::uint32_t VMRcommClass::bytesWaiting() {
  return closingOnThrow([&] { return channel().bytesWaiting(); });
}

unsigned VMRcommClass::timeOut() {
  return closingOnThrow([&] { return channel().timeOut(); });
}

bool VMRcommClass::cancelRequested() {
  return closingOnThrow([&] { return channel().cancelRequested(); });
}

void VMRcommClass::progress(int position) {
  closingOnThrow([&] { channel().progress(position); });
}
