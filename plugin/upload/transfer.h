#pragma once

#include "comm/commMessages.h"
#include "comm/commStruct.h"
#include "upload/uploadImage.h"

/// Where a transfer shows what it does; called on the transfer's thread.
class TtransferView {
 public:
  virtual ~TtransferView() = default;
  virtual bool isCancelled() const = 0;
  virtual void showOperation(const char* text) = 0;
  virtual void showProgress(int position) = 0;  ///< 0 to 100
};

/// Times and sizes of an exchange; others than the analyzer's own are for tests and measurements.
struct TtransferSettings {
  unsigned timeOut = uploadTimeOut;  ///< ms
  std::size_t blockSize = uploadBlockSize;
};

/// What a transfer ended with: whether the analyzer has acknowledged all of it, and the message that the user is to
/// see.
struct TtransferResult {
  bool completed = false;
  TcommOutcome message;
};

/// Greets the analyzer over the transport of an upload. Nothing, or the message that the user is to see; the connection
/// is closed in any case. `view` is asked only whether the exchange is to be given up.
TcommOutcome greet(const TuploadTransport& transport, TcommStruct& resources, const TtransferView& view,
                   const TtransferSettings& settings = {});

/// Sends an upload's image. It counts as sent when the analyzer has acknowledged its last block. Throws nothing; in
/// every case the connection is closed and `resources` are free.
TtransferResult transferRecords(const TuploadCommStruct& upload, TcommStruct& resources, TtransferView& view);

/// The same for an image of any whole number of blocks.
TtransferResult transferImage(const std::vector<std::uint8_t>& image, const TuploadTransport& transport,
                              TcommStruct& resources, TtransferView& view, const TtransferSettings& settings);
