#include "simulator/session.h"

#include <QTimer>

#include "simulator/link.h"

Tsession::Tsession(Tlink& link, const TanalyzerSettings& settings, int baud, TfaultScript& script,
                   const Treport& report)
    : link_(link), report_(report), analyzer_(link.kind(), settings, script, report), pace_(baud) {
  report_(QByteArray("connected ") + nameOf(link_.kind()));
  connect(&link_, &Tlink::received, this, &Tsession::receive);
  connect(&link_, &Tlink::closed, this, &Tsession::finish);
  connect(&link_, &Tlink::driverPlayed, this, [this] { analyzer_.driverPlayed(); });
}

void Tsession::close() {
  link_.close();
}

void Tsession::receive(const QByteArray& bytes) {
  received_ += bytes.size();
  if (!pace_.isPaced()) {
    take(bytes);
    return;
  }
  const auto due = pace_.arrival(Tpace::Tdirection::in, Tpace::Tclock::now(), bytes.size());
  at(due, [this, bytes] { take(bytes); });
}

void Tsession::finish() {
  if (ended_) return;
  ended_ = true;
  analyzer_.end();
  report_(QByteArray("closed ") + nameOf(link_.kind()) + ": " + QByteArray::number(received_) + " bytes");
  emit ended();
}

void Tsession::take(const QByteArray& bytes) {
  add(analyzer_.take(bytes));
  doSteps();
  checkDecided();
}

void Tsession::add(const Tsteps& steps) {
  steps_.insert(steps_.end(), steps.begin(), steps.end());
}

void Tsession::doSteps() {
  while (!waiting_ && !ended_) {
    if (!steps_.empty()) {
      const Tstep step = steps_.front();
      steps_.pop_front();
      perform(step);
    } else if (analyzer_.isAnswering()) {
      add(analyzer_.answered());
    } else {
      return;
    }
  }
}

void Tsession::perform(const Tstep& step) {
  switch (step.action) {
    case Tstep::Taction::send:
      if (!pace_.isPaced()) {
        link_.send(step.bytes);
        return;
      }
      waiting_ = true;
      at(pace_.arrival(Tpace::Tdirection::out, Tpace::Tclock::now(), step.bytes.size()), [this, step] {
        link_.send(step.bytes);
        waiting_ = false;
        doSteps();
      });
      return;
    case Tstep::Taction::wait:
      waiting_ = true;
      resumeAfter(step.milliseconds);
      return;
    case Tstep::Taction::report:
      report_(step.bytes);
      return;
    case Tstep::Taction::stopReading:
      link_.stopReading();
      return;
    case Tstep::Taction::close:
      link_.close();
      return;
    case Tstep::Taction::reset:
      link_.reset();
      return;
    case Tstep::Taction::unplug:
      link_.unplug();
      return;
  }
}

void Tsession::resumeAfter(int milliseconds) {
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, [this] {
    waiting_ = false;
    doSteps();
  });
}

void Tsession::at(Tpace::Ttime due, const std::function<void()>& action) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - Tpace::Tclock::now());
  QTimer::singleShot(std::max(left, std::chrono::milliseconds(0)), Qt::PreciseTimer, this, [this, due, action] {
    pace_.fired(due, Tpace::Tclock::now());
    if (!ended_) action();
  });
}

void Tsession::checkDecided() {
  if (decided_ || !(isWrong() || hasUpload())) return;
  decided_ = true;
  emit decided();
}
