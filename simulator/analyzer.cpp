#include "simulator/analyzer.h"

#include <QFile>

#include "simulator/faultSteps.h"
#include "simulator/image.h"

namespace {

constexpr qsizetype commandSize = 5;
constexpr qsizetype blockSize = 264;

QByteArray identification() {
  return QByteArray("QT484").leftJustified(blockSize, '\0');
}

QByteArray linesOf(const std::vector<TuploadedRecord>& records, int blocks) {
  QByteArray lines = "upload complete: " + QByteArray::number(blocks) + " blocks, " +
                     QByteArray::number(static_cast<qsizetype>(records.size())) + " records";
  qsizetype number = 0;
  for (const TuploadedRecord& record : records) lines += '\n' + describe(record, ++number);
  return lines;
}

void append(Tsteps& steps, const Tsteps& more) {
  steps.insert(steps.end(), more.begin(), more.end());
}

}  // namespace

Tanalyzer::Tanalyzer(TlinkKind link, TanalyzerSettings settings, TfaultScript& script, Treport report)
    : link_(link), settings_(std::move(settings)), script_(script), report_(std::move(report)) {}

Tsteps Tanalyzer::take(const QByteArray& bytes) {
  if (script_.takesRest(TfaultScript::Tclock::now(), std::chrono::milliseconds(settings_.timeout))) {
    report_("taken for the rest of a block: " + QByteArray::number(bytes.size()) + " bytes");
    return {};
  }
  if (deaf_) return {};
  if (answering_) complainOfOrder("bytes came before the answer");
  pending_ += bytes;
  return proceed();
}

Tsteps Tanalyzer::answered() {
  answering_ = false;
  return proceed();
}

void Tanalyzer::driverPlayed() {
  const Tfault* fault = script_.pending();
  if (fault != nullptr && fault->isDriversOn(link_)) play(*fault);
}

void Tanalyzer::end() {
  if (uploading_) {
    complainOfOrder("closed after " + QByteArray::number(image_.size() / blockSize) + " of " +
                    QByteArray::number(settings_.blocks) + " blocks");
  } else if (!pending_.isEmpty()) {
    complainOfOrder("closed inside a command");
  }
}

Tsteps Tanalyzer::proceed() {
  const qsizetype wanted = uploading_ ? blockSize : commandSize;
  if (answering_ || deaf_ || pending_.size() < wanted) return {};
  const QByteArray unit = pending_.first(wanted);
  pending_.remove(0, wanted);
  if (!pending_.isEmpty()) complainOfOrder("bytes came before the answer");
  answering_ = true;
  return uploading_ ? takeBlock(unit) : takeCommand(unit);
}

Tsteps Tanalyzer::takeCommand(const QByteArray& command) {
  if (command == "GESI\r") {
    report_("handshake");
    return answer({Tplace::Tkind::handshake}, identification());
  }
  if (command == "PEQR\r") {
    report_("upload started");
    uploading_ = true;
    image_.clear();
    return answer({Tplace::Tkind::command}, "*\r");
  }
  complain("unknown command, bytes " + command.toHex(' '));
  return refuse();
}

Tsteps Tanalyzer::takeBlock(const QByteArray& block) {
  image_ += block;
  const auto number = static_cast<int>(image_.size() / blockSize);
  if (number == settings_.blocks) return takeImage();
  return answer({Tplace::Tkind::block, number}, "C\r");
}

Tsteps Tanalyzer::takeImage() {
  uploading_ = false;
  const TdecodedImage decoded = decodeImage(image_);
  for (const QByteArray& error : decoded.errors) complain(error);
  if (!decoded.errors.isEmpty()) return refuse();

  const Tplace place{Tplace::Tkind::block, settings_.blocks};
  const Tfault* fault = faultAt(place);
  complete_ = fault == nullptr || fault->traits.isRight;
  if (complete_ && !save()) complain("the image could not be written to " + settings_.savePath);
  Tsteps steps = answer(place, "*\r");
  if (!complete_) return steps;
  // Printing many records takes a while, so the acknowledgement goes first.
  const auto sent =
      std::find_if(steps.rbegin(), steps.rend(), [](const Tstep& step) { return step.action == Tstep::Taction::send; });
  steps.insert(sent.base(), Tstep{Tstep::Taction::report, linesOf(decoded.records, settings_.blocks)});
  append(steps, afterUpload());
  return steps;
}

Tsteps Tanalyzer::answer(Tplace place, const QByteArray& right) {
  const Tfault* fault = faultAt(place);
  if (fault == nullptr && settings_.latency == 0) return {{Tstep::Taction::send, right}};
  if (fault == nullptr) return {{Tstep::Taction::wait, {}, settings_.latency}, {Tstep::Taction::send, right}};
  play(*fault);
  return faultSteps(*fault, right, settings_.timeout);
}

Tsteps Tanalyzer::afterUpload() {
  const Tfault* fault = faultAt({Tplace::Tkind::after});
  if (fault == nullptr) return {};
  play(*fault);
  return faultSteps(*fault, {}, settings_.timeout);
}

Tsteps Tanalyzer::refuse() {
  pending_.clear();
  return {{Tstep::Taction::send, "E\r"}};
}

/// The fault that the analyzer itself plays here. A fault that this link does not know is used up.
const Tfault* Tanalyzer::faultAt(Tplace place) {
  const Tfault* fault = script_.pending();
  if (fault == nullptr || fault->place != place || fault->isDriversOn(link_)) return nullptr;
  if (fault->existsOn(link_)) return fault;
  script_.setPlayed();
  complain("the fault " + fault->name + " does not exist on " + nameOf(link_));
  return nullptr;
}

void Tanalyzer::play(const Tfault& fault) {
  report_("fault " + fault.name);
  script_.setPlayed();
  faulted_ = true;
  deaf_ = fault.traits.isDeaf;
  if (fault.traits.kind == TfaultKind::resume) script_.awaitRest(TfaultScript::Tclock::now());
}

bool Tanalyzer::save() {
  if (settings_.savePath.isEmpty()) return true;
  QFile file(QFile::decodeName(settings_.savePath));
  return file.open(QIODevice::WriteOnly) && file.write(image_) == image_.size() && file.flush();
}

void Tanalyzer::complain(const QByteArray& text) {
  wrong_ = true;
  report_("error: " + text);
}

void Tanalyzer::complainOfOrder(const QByteArray& text) {
  if (faulted_ || disorderly_) return;
  disorderly_ = true;
  complain(text);
}
