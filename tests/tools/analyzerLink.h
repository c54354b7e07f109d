#pragma once

#include <QThread>
#include <atomic>
#include <chrono>
#include <memory>

#include "tools/analyzerProcess.h"
#include "tools/testFiles.h"
#include "tools/testPlatform.h"
#include "upload/transfer.h"

/// The simulated analyzer on one kind of link: t(cp), s(erial), u(sb).
class TanalyzerLink {
 public:
  TanalyzerLink(char link, const QStringList& options) : link_(link), analyzer_(linkOptions(link) + options) {
    if (link == 'u') qputenv("QT484_USB", QByteArray::number(analyzer_.port()));
  }

  TanalyzerProcess& analyzer() { return analyzer_; }

  TuploadTransport transport() const {
    const std::vector<TuploadEntry> none;
    const auto method = static_cast<TcommMethod>(std::string_view("uts").find(link_));
    TuploadTransport transport = transportOf(TuploadCommStruct(method, 3, {127, 0, 0, 1}, none));
    if (link_ == 't') std::get<TethernetParameters>(transport.parameters).port = analyzer_.port();
    return transport;
  }

 private:
  QStringList linkOptions(char link) {
    if (link == 't') return {QStringLiteral("--tcp"), QStringLiteral("0")};
    if (link == 'u') return {QStringLiteral("--usb"), QStringLiteral("0")};
    return {QStringLiteral("--serial"), linkOfPort3(folder_)};
  }

  char link_;
  TtestFolder folder_;
  TanalyzerProcess analyzer_;
};

/// Uploads as the plug-in does, without windows.
class Tuploader final : public TtransferView {
 public:
  using Tclock = std::chrono::steady_clock;
  static constexpr auto never = Tclock::time_point::max();
  static constexpr TmessageText silent = {"ended without a word", "", TmessageIcon::error};

  Tclock::time_point cancelAt = never;

  /// Exchanges the handshake, then sends the image on a worker thread. Nothing after success.
  TcommOutcome upload(const std::vector<std::uint8_t>& image, const TuploadTransport& transport,
                      const TtransferSettings& settings) {
    TcommOutcome failure = greet(transport, resources_, *this, settings);
    greeted_ = !failure;
    if (failure) return failure;
    TtransferResult result;
    std::atomic<bool> ended = false;
    const std::unique_ptr<QThread> worker(QThread::create([&] {
      result = transferImage(image, transport, resources_, *this, settings);
      ended.store(true, std::memory_order_release);
    }));
    worker->start();
    worker->wait();
    const bool isTold = ended.load(std::memory_order_acquire) && result.completed == !result.message;
    return isTold ? result.message : TcommFailure(silent);
  }

  bool isGreeted() const { return greeted_; }
  bool isInUse() const { return resources_.isInUse(); }

  bool isCancelled() const override { return Tclock::now() >= cancelAt; }
  void showOperation(const char*) override {}
  void showProgress(int) override {}

 private:
  TcommStruct resources_;
  bool greeted_ = false;
};
