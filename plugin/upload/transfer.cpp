#include "upload/transfer.h"

#include <boost/scoped_ptr.hpp>
#include <vector>

#include "comm/commandLayer.h"
#include "comm/genComm.h"
#include "comm/handshake.h"
#include "upload/messages.h"

namespace {

constexpr int recordsStart = 50;
constexpr int recordsDone = 100;

/// A channel that can be given up. It shows no boxes: whatever happens, the user sees one, and that is the exchange's.
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

/// One that also shows how far it is.
class TprogressChannel final : public TcancellableChannel {
 public:
  TprogressChannel(const TuploadTransport& transport, TcommStruct& resources, TtransferView& view,
                   const TtransferSettings& settings)
      : TcancellableChannel(transport, resources, view, settings), view_(view) {}

  void progress(int position) override { view_.showProgress(position); }

 private:
  TtransferView& view_;
};

bool opened(VMRcommClass& analyzer) try { return analyzer.open() == 0; } catch (...) {
  return false;
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

}  // namespace

TcommOutcome greet(const TuploadTransport& transport, TcommStruct& resources, const TtransferView& view,
                   const TtransferSettings& settings) {
  return runCommStep(TcommStep::handshake, [&] {
    TcancellableChannel channel(transport, resources, view, settings);
    VMRcommClass analyzer(&channel);
    std::vector<char> reply(settings.blockSize);
    return greetAnalyzer(analyzer, reply);
  });
}

TtransferResult transferRecords(const TuploadCommStruct& upload, TcommStruct& resources, TtransferView& view) {
  return transferImage(upload.image, transportOf(upload), resources, view, {});
}

TtransferResult transferImage(const std::vector<std::uint8_t>& image, const TuploadTransport& transport,
                              TcommStruct& resources, TtransferView& view, const TtransferSettings& settings) try {
  return transfer(image, transport, resources, view, settings);
} catch (...) {
  return {false, unspecifiedError};
}
