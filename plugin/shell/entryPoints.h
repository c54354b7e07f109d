#pragma once

#include <QtGlobal>
#include <cstdint>

class QWidget;
class TEquipmentRecordPluginFrame;
class THostApplication;
class Tqt484Frame;

/// The nine names that the module exports. A host looks them up by name and calls all of them on its user-interface
/// thread; none throws. The texts belong to the module and live until it is unloaded. docs/host-interface.md has the
/// order of calls.
extern "C" {

/// Runs the start-up and the shut-down of the module's units: right after loading, right before unloading.
Q_DECL_EXPORT void Initialize();
Q_DECL_EXPORT void Finalize();

/// The module's name, "EquipmentRecordPlugin". The argument is ignored.
Q_DECL_EXPORT const char* initialize(void* host);

/// Takes the two references that later frames get. 0; or -1, and nothing changed, where one of them is null.
/// They must stay alive as long as a frame may be built, `frame` as long as a frame lives.
Q_DECL_EXPORT std::int32_t setup(THostApplication* application, Tqt484Frame* frame);

/// The caption of the host's launch button, on two lines.
Q_DECL_EXPORT const char* getMainButton();

/// There is no configuration: null.
Q_DECL_EXPORT const char* getConfigButton();
Q_DECL_EXPORT QWidget* getConfigForm();

/// Builds a new main frame, a parentless `QWidget` (its first base) that the host shows, owns and deletes. Null: it
/// could not be built, or `setup` was not called.
Q_DECL_EXPORT TEquipmentRecordPluginFrame* getMainForm();

/// Does nothing; 0.
Q_DECL_EXPORT std::int32_t pshutdown();
}
