#include "upload/transfer.h"

#include <algorithm>
#include <boost/scoped_ptr.hpp>
#include <chrono>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "comm/commandLayer.h"
#include "comm/genComm.h"
#include "support/log.h"
#include "upload/lineRest.h"
#include "upload/uploadAdvice.h"
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

/// Whatever the failure is, its message is the one for a connection that could not be opened.
TcommOutcome failureOfOpening(VMRcommClass& analyzer) {
  TcommFailure failure = couldNotInitialize;
  try {
    if (analyzer.open() == 0) return std::nullopt;
  } catch (...) {
    logCaught("opening the connection of an upload");
    const TcommFailure caught = failureOfCaught(TcommStep::putData);
    failure = TcommFailure(couldNotInitialize, caught.cause, caught.reason);
  }
  return failure;
}

/// Waits until the line has been at rest. Throws `ToperationCancelledException`.
void awaitRest(const std::string& target, const TtransferView& view, std::chrono::milliseconds rest) {
  constexpr std::chrono::milliseconds slot(10);
  const auto left = restLeft(target, rest);
  if (left.count() > 0) logInfo("waiting " + std::to_string(left.count()) + " ms until " + target + " is at rest");
  while (restLeft(target, rest).count() > 0) {
    if (view.isCancelled()) throw ToperationCancelledException();
    TDataCommClass::pumpMessages();
    std::this_thread::sleep_for(slot);
  }
}

TcommFailure noCommunication(const TDataCommClass& channel) {
  const bool isLost = !channel.failure().empty();
  return {couldNotCommunicate, isLost ? TcommCause::lost : TcommCause::wrongAnswer, channel.failure()};
}

TcommOutcome putRecords(VMRcommClass& analyzer, const TDataCommClass& channel, const std::vector<std::uint8_t>& image,
                        std::size_t blocks) {
  return runCommStep(TcommStep::putData, [&]() -> TcommOutcome {
    if (analyzer.putData(putRecordsCommand, commandLength, image.data(), blocks) == 0) return std::nullopt;
    return noCommunication(channel);
  });
}

/// Adds to a failure what the user can do.
TcommOutcome withAdvice(TcommOutcome failure, const TuploadTransport& transport, const TuploadReach& reach) {
  if (failure) failure->advice = adviceOn(*failure, transport, reach);
  return failure;
}

TtransferResult transfer(const std::vector<std::uint8_t>& image, const TuploadTransport& transport,
                         TcommStruct& resources, TtransferView& view, const TtransferSettings& settings) {
  view.showOperation("Initializing");
  if (transport.mode == TcommMode::none) return {false, invalidState};
  const boost::scoped_ptr<TprogressChannel> channel(new TprogressChannel(transport, resources, view, settings));
  VMRcommClass analyzer(channel.get());
  TuploadReach reach = {TuploadReach::Tstep::opening, 0, image.size() / settings.blockSize, settings.timeOut};
  if (const TcommOutcome failure = failureOfOpening(analyzer)) {
    return {false, view.isCancelled() ? std::nullopt : withAdvice(failure, transport, reach)};
  }
  view.showOperation("Putting Equipment Records");
  view.showProgress(recordsStart);
  if (const TcommOutcome failure = putRecords(analyzer, *channel, image, reach.blocks)) {
    noteBrokenOff(targetOf(transport.parameters));
    reach.step = TuploadReach::Tstep::sending;
    reach.acknowledged = analyzer.acknowledgedBlocks();
    return {false, withAdvice(failure, transport, reach)};
  }
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
  TuploadReach reach = {TuploadReach::Tstep::opening, 0, 0, settings.timeOut};
  TcommOutcome failure = runCommStep(TcommStep::handshake, [&]() -> TcommOutcome {
    awaitRest(targetOf(transport.parameters), view, settings.rest);
    TcancellableChannel channel(transport, resources, view, settings);
    VMRcommClass analyzer(&channel);
    if (analyzer.open() != 0) return couldNotInitialize;
    reach.step = TuploadReach::Tstep::greeting;
    std::vector<char> reply(settings.blockSize);
    if (analyzer.getData(handshakeCommand, commandLength, reply.data(), 1) != 0) return noCommunication(channel);
    return std::nullopt;
  });
  failure = withAdvice(std::move(failure), transport, reach);
  logEnd("handshake", start, {!failure, failure});
  return failure;
}

TtransferResult transferRecords(const TuploadCommStruct& upload, TcommStruct& resources, TtransferView& view) {
  return transferImage(upload.image, transportOf(upload), resources, view, {});
}

TtransferResult transferImage(const std::vector<std::uint8_t>& image, const TuploadTransport& transport,
                              TcommStruct& resources, TtransferView& view, const TtransferSettings& settings) try {
  const auto start = Tclock::now();
  TtransferResult result = transfer(image, transport, resources, view, settings);
  logEnd("transfer", start, result);
  return result;
} catch (...) {
  logCaught("transfer");
  return {false, unspecifiedError};
}
