#include "upload/transfer.h"

#include <algorithm>
#include <boost/scoped_ptr.hpp>
#include <chrono>
#include <string>
#include <vector>

#include "comm/commandLayer.h"
#include "comm/genComm.h"
#include "support/log.h"
#include "upload/uploadMessages.h"

namespace {

using Tclock = std::chrono::steady_clock;

constexpr int recordsStart = 50;
constexpr int recordsDone = 100;

/// A channel that can be cancelled. It is silent, because the exchange reports every failure with one message.
class TcancellableChannel : public TDataCommClass {
 public:
  TcancellableChannel(const TuploadTransport& transport, TcommStruct& resources, const TtransferView& view,
                      const TtransferSettings& settings)
      : TDataCommClass(&resources, transport.mode, settings.timeOut, settings.blockSize, &transport.parameters, true),
        view_(view) {}

  bool cancelRequested() override { return view_.isCancelled(); }

 private:
  const TtransferView& view_;
};

/// A cancellable channel that also shows the progress.
class TprogressChannel final : public TcancellableChannel {
 public:
  TprogressChannel(const TuploadTransport& transport, TcommStruct& resources, TtransferView& view,
                   const TtransferSettings& settings)
      : TcancellableChannel(transport, resources, view, settings), view_(view) {}

  void progress(int position) override { view_.showProgress(position); }

 private:
  TtransferView& view_;
};

bool opened(VMRcommClass& analyzer) {
  try {
    return analyzer.open() == 0;
  } catch (...) {
    logCaught("opening the connection of an upload");
    return false;
  }
}

TcommOutcome putRecords(VMRcommClass& analyzer, const std::vector<std::uint8_t>& image, std::size_t blockSize) {
  return runCommStep(TcommStep::putData, [&]() -> TcommOutcome {
    const std::size_t count = image.size() / blockSize;
    if (analyzer.putData(putRecordsCommand, commandLength, image.data(), count) == 0) return std::nullopt;
    return couldNotCommunicate;
  });
}

TtransferResult transfer(const std::vector<std::uint8_t>& image, const TuploadTransport& transport,
                         TcommStruct& resources, TtransferView& view, const TtransferSettings& settings) {
  view.showOperation("Initializing");
  if (transport.mode == TcommMode::none) return {false, invalidState};
  const boost::scoped_ptr<TprogressChannel> channel(new TprogressChannel(transport, resources, view, settings));
  VMRcommClass analyzer(channel.get());
  if (!opened(analyzer)) return {false, view.isCancelled() ? std::nullopt : TcommOutcome(couldNotInitialize)};
  view.showOperation("Putting Equipment Records");
  view.showProgress(recordsStart);
  if (const auto message = putRecords(analyzer, image, settings.blockSize)) return {false, message};
  view.showOperation("Completed!");
  view.showProgress(recordsDone);
  return {true, std::nullopt};
}

/// Logs the outcome and the duration of a step: "transfer completed after 8012 ms".
void logEnd(const std::string& step, Tclock::time_point start, const TtransferResult& result) {
  const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(Tclock::now() - start).count();
  const std::string after = " after " + std::to_string(time) + " ms";
  if (result.completed) return logInfo(step + " completed" + after);
  std::string text = result.message ? result.message->text : "cancelled";
  std::replace(text.begin(), text.end(), '\n', ' ');
  logFailure(step + " failed" + after + ": " + text);
}

}  // namespace

TcommOutcome greet(const TuploadTransport& transport, TcommStruct& resources, const TtransferView& view,
                   const TtransferSettings& settings) {
  const auto start = Tclock::now();
  const TcommOutcome failure = runCommStep(TcommStep::handshake, [&]() -> TcommOutcome {
    TcancellableChannel channel(transport, resources, view, settings);
    VMRcommClass analyzer(&channel);
    if (analyzer.open() != 0) return couldNotInitialize;
    std::vector<char> reply(settings.blockSize);
    if (analyzer.getData(handshakeCommand, commandLength, reply.data(), 1) != 0) return couldNotCommunicate;
    return std::nullopt;
  });
  logEnd("handshake", start, {!failure, failure});
  return failure;
}

TtransferResult transferRecords(const TuploadCommStruct& upload, TcommStruct& resources, TtransferView& view) {
  return transferImage(upload.image, transportOf(upload), resources, view, {});
}

TtransferResult transferImage(const std::vector<std::uint8_t>& image, const TuploadTransport& transport,
                              TcommStruct& resources, TtransferView& view, const TtransferSettings& settings) try {
  const auto start = Tclock::now();
  const TtransferResult result = transfer(image, transport, resources, view, settings);
  logEnd("transfer", start, result);
  return result;
} catch (...) {
  logCaught("transfer");
  return {false, unspecifiedError};
}
