#pragma once

#include <chrono>

#include "comm/commMessages.h"
#include "comm/commStruct.h"
#include "upload/uploadImage.h"

/// How long the line must be at rest until the analyzer surely waits for a command: its own time-out, which is taken to
/// be the host's, and some more.
inline constexpr std::chrono::milliseconds analyzerRest(uploadTimeOut + 500);

/// Shows what a transfer does. Called on the transfer's thread.
class TtransferView {
 public:
  virtual ~TtransferView() = default;
  virtual bool isCancelled() const = 0;
  virtual void showOperation(const char* text) = 0;
  virtual void showProgress(int position) = 0;  ///< 0 to 100
};

/// Times and block size of an exchange. Values other than the defaults are for tests and measurements.
struct TtransferSettings {
  unsigned timeOut = uploadTimeOut;  ///< ms
  std::size_t blockSize = uploadBlockSize;
  std::chrono::milliseconds rest = analyzerRest;
};

/// The result of a transfer: whether the analyzer has acknowledged everything, and the message for the user.
struct TtransferResult {
  bool completed = false;
  TcommOutcome message;
};

/// Exchanges the handshake with the analyzer over a connection of its own, which is closed at the end. Returns the
/// message for the user if it failed. Of `view` only `isCancelled` is called.
///
/// After an upload to the same place that was broken off, it first waits until the line has been at rest: the analyzer
/// might take the handshake for the rest of a block.
TcommOutcome greet(const TuploadTransport& transport, TcommStruct& resources, const TtransferView& view,
                   const TtransferSettings& settings = {});

/// Sends an upload's image. The transfer is complete when the analyzer has acknowledged the last block. Throws nothing;
/// the connection is always closed at the end, and `resources` are free.
TtransferResult transferRecords(const TuploadCommStruct& upload, TcommStruct& resources, TtransferView& view);

/// Does the same with an image of any whole number of blocks.
TtransferResult transferImage(const std::vector<std::uint8_t>& image, const TuploadTransport& transport,
                              TcommStruct& resources, TtransferView& view, const TtransferSettings& settings);
