#pragma once

#include <QLibrary>
#include <QString>
#include <cstdint>

class QWidget;
class THostApplication;
class Tqt484Frame;

/// The plug-in module, loaded at run time and used through its nine exported functions. The constructor loads and
/// initializes it; the destructor shuts it down and unloads it. By then no frame of the module may exist.
class TpluginModule {
 public:
  explicit TpluginModule(const QString& path);
  ~TpluginModule();
  TpluginModule(const TpluginModule&) = delete;
  TpluginModule& operator=(const TpluginModule&) = delete;

  /// Whether the module was loaded and exports all nine functions; if not, `error` says why.
  bool isUsable() const { return error_.isEmpty(); }
  QString error() const { return error_; }

  bool setup(THostApplication* application, Tqt484Frame* frame);
  QString name() const;
  QString buttonCaption() const;
  /// A new main frame, which the caller owns; null if it could not be built.
  QWidget* createMainForm();

 private:
  template <typename Function>
  void resolve(Function*& function, const char* name);

  QLibrary library_;
  QString error_;
  void (*Initialize_)() = nullptr;
  void (*Finalize_)() = nullptr;
  const char* (*initialize_)(void*) = nullptr;
  std::int32_t (*setup_)(THostApplication*, Tqt484Frame*) = nullptr;
  const char* (*getMainButton_)() = nullptr;
  const char* (*getConfigButton_)() = nullptr;
  QWidget* (*getMainForm_)() = nullptr;
  QWidget* (*getConfigForm_)() = nullptr;
  std::int32_t (*pshutdown_)() = nullptr;
};
