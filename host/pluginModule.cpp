#include "host/pluginModule.h"

TpluginModule::TpluginModule(const QString& path) : library_(path) {
  if (!library_.load()) {
    error_ = library_.errorString();
    return;
  }
  resolve(Initialize_, "Initialize");
  resolve(Finalize_, "Finalize");
  resolve(initialize_, "initialize");
  resolve(setup_, "setup");
  resolve(getMainButton_, "getMainButton");
  resolve(getConfigButton_, "getConfigButton");
  resolve(getMainForm_, "getMainForm");
  resolve(getConfigForm_, "getConfigForm");
  resolve(pshutdown_, "pshutdown");
  if (isUsable()) Initialize_();
}

TpluginModule::~TpluginModule() {
  if (isUsable()) {
    pshutdown_();
    Finalize_();
  }
  library_.unload();
}

bool TpluginModule::setup(THostApplication* application, Tqt484Frame* frame) {
  return isUsable() && setup_(application, frame) == 0;
}

QString TpluginModule::name() const {
  return isUsable() ? QString::fromLatin1(initialize_(nullptr)) : QString();
}

QString TpluginModule::buttonCaption() const {
  return isUsable() ? QString::fromLatin1(getMainButton_()) : QString();
}

QWidget* TpluginModule::createMainForm() {
  return isUsable() ? getMainForm_() : nullptr;
}

template <typename Function>
void TpluginModule::resolve(Function*& function, const char* name) {
  function = reinterpret_cast<Function*>(library_.resolve(name));
  if (function == nullptr) error_ = QStringLiteral("%1 lacks %2").arg(library_.fileName(), QString::fromLatin1(name));
}
