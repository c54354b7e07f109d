#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <functional>
#include <vector>

#include "simulator/faults.h"

/// Takes one line of what is printed.
using Treport = std::function<void(const QByteArray& line)>;

/// One thing that the analyzer wants done on its link.
struct Tstep {
  enum class Taction { send, wait, report, stopReading, close, reset, unplug };

  Taction action = Taction::send;
  QByteArray bytes = {};  ///< to be sent; lines to be reported
  int milliseconds = 0;   ///< to wait

  bool operator==(const Tstep&) const = default;
};

/// To be done in this order.
using Tsteps = std::vector<Tstep>;

/// What the analyzer goes by.
struct TanalyzerSettings {
  int blocks = 1536;    ///< of an upload
  int timeout = 2000;   ///< the host's, in milliseconds; what is late goes by it
  QByteArray savePath;  ///< where to keep the image of a complete upload; empty for nowhere
};

/// The instrument's side of one connection: fed with the bytes that come, it says what is to be done. It knows no link
/// and no clock, and any cut of the bytes into pieces is as good as any other.
///
/// Whatever is wrong with what the host sends is reported as "error: ..." and remembered. What a fault just played may
/// have caused on its connection, in the order of the bytes and in their end, is not held against the host.
class Tanalyzer {
 public:
  /// `script` must outlive the analyzer.
  Tanalyzer(TlinkKind link, TanalyzerSettings settings, TfaultScript& script, Treport report);

  /// Takes bytes from the host. Until the steps are done and `answered` was called, nothing further is answered.
  Tsteps take(const QByteArray& bytes);
  /// The steps of the last answer are done. More follow where the host has sent more already.
  Tsteps answered();
  bool isAnswering() const { return answering_; }

  /// The stand-in driver has played the fault inside a write.
  void driverPlayed();
  /// The connection has ended.
  void end();

  bool isWrong() const { return wrong_; }
  bool hasUpload() const { return complete_; }

 private:
  Tsteps proceed();
  Tsteps takeCommand(const QByteArray& command);
  Tsteps takeBlock(const QByteArray& block);
  Tsteps takeImage();
  Tsteps answer(Tplace place, const QByteArray& right);
  Tsteps afterUpload();
  Tsteps refuse();
  const Tfault* faultAt(Tplace place);
  void play(const Tfault& fault);
  bool save();
  void complain(const QByteArray& text);
  void complainOfOrder(const QByteArray& text);

  TlinkKind link_;
  TanalyzerSettings settings_;
  TfaultScript& script_;
  Treport report_;
  QByteArray pending_;  ///< received, and not yet a whole command or block
  QByteArray image_;
  bool uploading_ = false;
  bool answering_ = false;
  bool faulted_ = false;
  bool deaf_ = false;
  bool wrong_ = false;
  bool disorderly_ = false;  ///< said once a connection
  bool complete_ = false;
};
