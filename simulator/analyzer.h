#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <functional>
#include <vector>

#include "simulator/faults.h"

/// Prints one line.
using Treport = std::function<void(const QByteArray& line)>;

/// One action that the analyzer requests on its link.
struct Tstep {
  enum class Taction { send, wait, report, stopReading, close, reset, unplug };

  Taction action = Taction::send;
  QByteArray bytes = {};  ///< to send, or the lines to report
  int milliseconds = 0;   ///< to wait

  bool operator==(const Tstep&) const = default;
};

/// Steps in the order in which they are carried out.
using Tsteps = std::vector<Tstep>;

struct TanalyzerSettings {
  int blocks = 1536;    ///< of an upload
  int timeout = 2000;   ///< the host's, in milliseconds; late answers are timed by it
  QByteArray savePath;  ///< where to save the image of a complete upload; empty for nowhere
  int latency = 0;      ///< before each answer, in milliseconds
};

/// The instrument's side of one connection: it takes the bytes received and returns the steps to carry out. It knows no
/// link and no clock, and the bytes may arrive in pieces of any size.
///
/// It reports every mistake of the host as "error: ..." and remembers it. After a fault was played, bytes out of turn
/// and an early end of that connection do not count as mistakes.
class Tanalyzer {
 public:
  /// `script` must outlive the analyzer.
  Tanalyzer(TlinkKind link, TanalyzerSettings settings, TfaultScript& script, Treport report);

  /// Takes bytes from the host. The analyzer answers nothing more until the steps are done and `answered` is called.
  Tsteps take(const QByteArray& bytes);
  /// The steps of the last answer are done. Returns more steps if the host has already sent more.
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
  QByteArray pending_;  ///< received, but not yet a whole command or block
  QByteArray image_;
  bool uploading_ = false;
  bool answering_ = false;
  bool faulted_ = false;
  bool deaf_ = false;
  bool wrong_ = false;
  bool disorderly_ = false;  ///< bytes out of turn or an early end: reported once per connection
  bool complete_ = false;
};
