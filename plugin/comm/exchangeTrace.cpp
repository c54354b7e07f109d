#include "comm/exchangeTrace.h"

#include "support/log.h"

namespace {

constexpr std::size_t mostBytes = 64;

/// The first 64 bytes at most: " 2A 0D".
std::string hexText(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  for (const char byte : bytes.substr(0, mostBytes)) {
    const auto value = static_cast<unsigned char>(byte);
    text += {' ', digits[value / 16], digits[value % 16]};
  }
  return text.empty() ? " nothing" : text;
}

}  // namespace

void TexchangeTrace::start(const char* command, std::size_t length) {
  *this = {};
  start_ = std::chrono::steady_clock::now();
  if (command) command_.assign(command, length);
}

void TexchangeTrace::enter(TexchangeStep step, std::size_t block) {
  step_ = step;
  block_ = block;
  received_.clear();
}

void TexchangeTrace::setBlocks(std::size_t count, std::size_t size) {
  blockCount_ = count;
  blockSize_ = size;
}

std::string TexchangeTrace::stepText() const {
  std::string block = "block " + std::to_string(block_ + 1) + " of " + std::to_string(blockCount_) + " (" +
                      std::to_string(blockSize_) + " bytes)";
  switch (step_) {
    case TexchangeStep::command:
      return "command";
    case TexchangeStep::commandAcknowledgement:
      return "acknowledgement of the command";
    case TexchangeStep::reply:
      return "reply, " + block;
    case TexchangeStep::block:
      return block;
    case TexchangeStep::blockAcknowledgement:
      return "acknowledgement of " + block;
  }
  return block;
}

void TexchangeTrace::logFailure(const std::string& target, const std::string& reason) const {
  const auto time =
      std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_).count();
  ::logFailure("exchange with " + target + " failed at " + stepText() + " after " + std::to_string(time) + " ms" +
               (reason.empty() ? "" : ": " + reason) + "; command" + hexText(command_) + "; received" +
               hexText(received_));
}
