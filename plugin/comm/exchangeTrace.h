#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

/// The steps of an exchange.
enum class TexchangeStep { command, commandAcknowledgement, reply, block, blockAcknowledgement };

/// Follows an exchange and logs the step at which it failed. Holds the command and the received bytes, but never the
/// bytes of a block that was sent: they hold records.
class TexchangeTrace {
 public:
  /// Starts the clock of a new exchange. `command` may be null.
  void start(const char* command, std::size_t length);
  /// Enters the step; `block` counts from 0.
  void enter(TexchangeStep step, std::size_t block = 0);
  void setBlocks(std::size_t count, std::size_t size);
  /// Adds to the bytes received in this step.
  void addReceived(std::string_view bytes) { received_ += bytes; }

  /// `target` is what the channel is connected to; `reason` may be empty.
  void logFailure(const std::string& target, const std::string& reason) const;

 private:
  std::string stepText() const;

  std::chrono::steady_clock::time_point start_;
  TexchangeStep step_ = TexchangeStep::command;
  std::size_t block_ = 0;
  std::size_t blockCount_ = 0;
  std::size_t blockSize_ = 0;
  std::string command_;
  std::string received_;
};
