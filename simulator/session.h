#pragma once

#include <QObject>
#include <deque>
#include <functional>

#include "simulator/analyzer.h"
#include "simulator/pace.h"

class Tlink;

/// One connection: carries bytes between a link and an analyzer of its own, at the pace of the line, and carries out
/// the analyzer's steps one after the other.
class Tsession : public QObject {
  Q_OBJECT
 public:
  /// `link` and `script` must outlive the session.
  Tsession(Tlink& link, const TanalyzerSettings& settings, int baud, TfaultScript& script, const Treport& report);

  bool isWrong() const { return analyzer_.isWrong(); }
  bool hasUpload() const { return analyzer_.hasUpload(); }
  /// Ends the connection from this side.
  void close();

 signals:
  /// The first complete upload, or the first error.
  void decided();
  /// The connection has ended; nothing more happens here.
  void ended();

 private:
  void receive(const QByteArray& bytes);
  void finish();
  void take(const QByteArray& bytes);
  void add(const Tsteps& steps);
  void doSteps();
  void perform(const Tstep& step);
  void resumeAfter(int milliseconds);
  void at(Tpace::Ttime due, const std::function<void()>& action);
  void checkDecided();

  Tlink& link_;
  Treport report_;
  Tanalyzer analyzer_;
  Tpace pace_;
  std::deque<Tstep> steps_;
  qint64 received_ = 0;
  bool waiting_ = false;  ///< a step is still running
  bool decided_ = false;
  bool ended_ = false;
};
