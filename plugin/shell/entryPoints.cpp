#include "shell/entryPoints.h"

#include <chrono>
#include <memory>

#include "browser/EquipmentRecordPluginFrame.h"
#include "comm/selector/freePorts.h"
#include "shell/hostInterface.h"
#include "shell/keepLibraries.h"
#include "support/log.h"

namespace {

/// How long an unloading module waits for a driver that hangs.
constexpr std::chrono::seconds longestEnd(5);

/// The references that `setup` stored, the only state of the module itself.
struct ThostReferences {
  THostApplication* application = nullptr;
  Tqt484Frame* frame = nullptr;
};

ThostReferences& hostReferences() {
  static ThostReferences references;
  return references;
}

std::unique_ptr<TEquipmentRecordPluginFrame> buildFrame(const ThostReferences& host) {
  TframeContext context;
  context.programFolder = host.application->programFolder().toStdU16String();
  context.workingFolder = host.application->workingFolder().toStdU16String();
  context.returnToMainWindow = [frame = host.frame] { frame->returnToMainWindow(); };
  return std::make_unique<TEquipmentRecordPluginFrame>(std::move(context));
}

}  // namespace

void Initialize() {
  keepLibraries();
}

void Finalize() {
  endPortSearches(longestEnd);
  closeLog();
  hostReferences() = {};
}

const char* initialize(void* /*host*/) {
  return "EquipmentRecordPlugin";
}

std::int32_t setup(THostApplication* application, Tqt484Frame* frame) {
  if (application == nullptr || frame == nullptr) return -1;
  hostReferences() = {application, frame};
  return 0;
}

const char* getMainButton() {
  return "Equipment Record\nEditor";
}

const char* getConfigButton() {
  return nullptr;
}

QWidget* getConfigForm() {
  return nullptr;
}

TEquipmentRecordPluginFrame* getMainForm() {
  try {
    const ThostReferences host = hostReferences();
    return host.application == nullptr ? nullptr : buildFrame(host).release();
  } catch (...) {
    logCaught("getMainForm");
    return nullptr;  // no failure may reach the host
  }
}

std::int32_t pshutdown() {
  return 0;
}
