#pragma once

#include <QtGlobal>
#include <cstdint>

class QWidget;
class TEquipmentRecordPluginFrame;
class THostApplication;
class Tqt484Frame;

/// The nine functions that the module exports. A host looks them up by name and calls them on its user-interface
/// thread; none throws. The texts belong to the module and live until it is unloaded. docs/host-interface.md describes
/// the order of calls.
extern "C" {

/// Start and end of the module. Call them right after loading and right before unloading.
Q_DECL_EXPORT void Initialize();
Q_DECL_EXPORT void Finalize();

/// The module's name, "EquipmentRecordPlugin". The argument is ignored.
Q_DECL_EXPORT const char* initialize(void* host);

/// Stores the two references that later frames get. Returns 0; or -1, without any change, if one of them is null.
/// `application` must live as long as frames may be built, `frame` also as long as any frame lives.
Q_DECL_EXPORT std::int32_t setup(THostApplication* application, Tqt484Frame* frame);

/// The caption of the host's launch button, on two lines.
Q_DECL_EXPORT const char* getMainButton();

/// Both return null: there is nothing to configure.
Q_DECL_EXPORT const char* getConfigButton();
Q_DECL_EXPORT QWidget* getConfigForm();

/// Builds a new main frame, a parentless `QWidget` (its first base) that the host shows, owns and deletes. Null if it
/// could not be built or `setup` was not called.
Q_DECL_EXPORT TEquipmentRecordPluginFrame* getMainForm();

/// Does nothing and returns 0.
Q_DECL_EXPORT std::int32_t pshutdown();
}
