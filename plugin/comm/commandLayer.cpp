#include "comm/commandLayer.h"

#include <array>
#include <chrono>
#include <cstring>
#include <thread>

#include "comm/genComm.h"

namespace {

using std::chrono::milliseconds;
using Tclock = std::chrono::steady_clock;

constexpr milliseconds replySlot(50);
constexpr milliseconds acknowledgementSlot(10);
constexpr char accepted = '*';
constexpr char goOn = 'C';
constexpr char carriageReturn = '\r';

// How far an exchange is, of 100: a command is out, the answer runs from 50 to 90.
constexpr int commandSent = 50;
constexpr int putCommandSent = 30;

int blockProgress(std::size_t block, std::size_t count) {
  return static_cast<int>((block * 40 + 40) / count + 50);
}

}  // namespace

int VMRcommClass::getData(const char* command, std::size_t length, void* buffer, std::size_t count) {
  if (!buffer || count == 0) throw TinvalidDataLengthException();
  const std::size_t size = checkedBlockSize();
  if (channel().write(command, length) != commSuccess) return closeWith(commFailed);
  progress(commandSent);
  for (std::size_t block = 0; block < count; ++block) {
    if (!awaitBytes(size, replySlot)) return closeWith(commWrongReply);
    if (!readBlock(static_cast<char*>(buffer) + block * size, size)) return closeWith(commWrongReply);
    progress(blockProgress(block, count));
    TDataCommClass::pumpMessages();
  }
  return commSuccess;
}

int VMRcommClass::putData(const char* command, std::size_t length, const void* buffer, std::size_t count) {
  if (!command || count == 0) return commFailed;
  const std::size_t size = checkedBlockSize();
  if (channel().write(command, length) != commSuccess) return closeWith(commFailed);
  progress(putCommandSent);
  Tacknowledgement first;
  if (!readAcknowledgement(first)) return closeWith(commWrongReply);
  // Looser than after a block: either of the two bytes will do.
  if (first.status != accepted && first.end != carriageReturn) return closeWith(commWrongReply);
  for (std::size_t block = 0; block < count; ++block) {
    TDataCommClass::pumpMessages();
    requireNotCancelled();
    if (channel().write(static_cast<const char*>(buffer) + block * size, size) != commSuccess) {
      return closeWith(commFailed);
    }
    progress(blockProgress(block, count));
    const char due = block + 1 == count ? accepted : goOn;
    Tacknowledgement answer;
    if (!readAcknowledgement(answer)) return closeWith(commWrongReply);
    if (answer.status != due || answer.end != carriageReturn) return closeWith(commWrongReply);
  }
  return commSuccess;
}

/// Waits for bytes, slot by slot, as long as the channel's time-out. False where the link was lost. Each slot has its
/// end on the clock, so that what a busy machine adds to one does not add up to a longer time-out.
bool VMRcommClass::awaitBytes(std::size_t count, milliseconds slot) {
  const auto length = static_cast<unsigned>(slot.count());
  const unsigned slots = timeOut() < length ? 1 : timeOut() / length;
  auto slotEnd = Tclock::now();
  for (unsigned passed = 0; passed < slots; ++passed) {
    TDataCommClass::pumpMessages();
    requireNotCancelled();
    slotEnd += slot;
    const TcommWait wait = channel().waitForBytes(count, std::chrono::ceil<milliseconds>(slotEnd - Tclock::now()));
    if (wait != TcommWait::slotOver) return wait == TcommWait::arrived;
  }
  closeWith(commFailed);
  throw TcommTimeoutException();
}

bool VMRcommClass::readBlock(char* place, std::size_t size) {
  std::memset(place, 0, size);
  return channel().read(place, size) == commSuccess;
}

bool VMRcommClass::readAcknowledgement(Tacknowledgement& acknowledgement) {
  std::array<char, 4> bytes{};
  if (!awaitBytes(2, acknowledgementSlot) || channel().read(bytes.data(), 2) != commSuccess) return false;
  acknowledgement = {bytes[0], bytes[1]};
  return true;
}

void VMRcommClass::requireNotCancelled() {
  if (!cancelRequested()) return;
  closeWith(commFailed);
  throw ToperationCancelledException();
}

int VMRcommClass::closeWith(int result) {
  channel().close();
  return result;
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
  return channel().open();
}

int VMRcommClass::openAgain() {
  return channel().openAgain();
}

void VMRcommClass::close() {
  channel().close();
}

int VMRcommClass::write(const void* buffer, std::size_t count) {
  return channel().write(buffer, count);
}

int VMRcommClass::read(void* buffer, std::size_t count) {
  return channel().read(buffer, count);
}

std::uint32_t VMRcommClass::bytesWaiting() {
  return channel().bytesWaiting();
}

unsigned VMRcommClass::timeOut() {
  return channel().timeOut();
}

bool VMRcommClass::cancelRequested() {
  return channel().cancelRequested();
}

void VMRcommClass::progress(int position) {
  channel().progress(position);
}
