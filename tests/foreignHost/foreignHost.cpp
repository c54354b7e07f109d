#include <QApplication>
#include <QLibrary>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextStream>
#include <QTimer>
#include <cstdint>
#include <memory>

// A host written from docs/host-interface.md alone. Prints a line for each step; exits with 0 where all went as the
// page says.

class THostApplication {
 public:
  virtual ~THostApplication() = default;
  virtual QString programFolder() const = 0;
  virtual QString workingFolder() const = 0;
};

class Tqt484Frame {
 public:
  virtual ~Tqt484Frame() = default;
  virtual void returnToMainWindow() = 0;
};

namespace {

bool allAsPromised = true;

void step(bool asPromised, const QString& what) {
  QTextStream(stdout) << (asPromised ? "ok " : "NOT ") << what << Qt::endl;
  allAsPromised = allAsPromised && asPromised;
}

template <typename Function>
Function* entry(QLibrary& module, const char* name) {
  auto* function = reinterpret_cast<Function*>(module.resolve(name));
  if (function == nullptr) qFatal("%s: %s", name, qPrintable(module.errorString()));
  return function;
}

class Twindow : public QTabWidget, public THostApplication, public Tqt484Frame {
 public:
  explicit Twindow(QLibrary& module) : module_(module) { QApplication::instance()->installEventFilter(this); }
  QString programFolder() const override { return arguments_.value(2); }
  QString workingFolder() const override { return arguments_.value(3); }
  void returnToMainWindow() override { frame_.reset(); }

  void visitTwice() {
    showFrame();
    frame_->findChild<QPushButton*>(QStringLiteral("BtnExit"))->click();
    step(!frame_ && count() == 0, QStringLiteral("the exit button returns, and the frame goes"));
    showFrame();
    frame_->findChild<QTableView*>(QStringLiteral("tblEqRec"))->setColumnWidth(1, 177);
    close();
    step(!frame_ && count() == 0, QStringLiteral("the host closes over a frame"));
  }

 private:
  void closeEvent(QCloseEvent* /*event*/) override { frame_.reset(); }
  /// No message box should open. One that does is closed, since nobody is there to answer it.
  bool eventFilter(QObject* object, QEvent* event) override {
    auto* box = qobject_cast<QWidget*>(object);
    if (event->type() != QEvent::Show || box == nullptr || !box->isModal()) return false;
    step(false, QStringLiteral("without a box: ") + box->windowTitle());
    QMetaObject::invokeMethod(box, &QWidget::close, Qt::QueuedConnection);
    return false;
  }

  void showFrame() {
    frame_.reset(entry<QWidget*()>(module_, "getMainForm")());
    if (!frame_ || !frame_->isWindow()) qFatal("no frame without a parent");
    setCurrentIndex(addTab(frame_.get(), QString::fromLatin1(entry<const char*()>(module_, "getMainButton")())));
    QApplication::processEvents();
    step(frame_->isVisible() && frame_->window() == this, QStringLiteral("the frame is a page of this window"));
    frame_->findChild<QPushButton*>(QStringLiteral("btnCopy"))->click();
  }

  QLibrary& module_;
  QStringList arguments_ = QApplication::arguments();
  std::unique_ptr<QWidget> frame_;
};

}  // namespace

/// Usage: foreign-host MODULE PROGRAM-FOLDER WORKING-FOLDER
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QLibrary module(QApplication::arguments().value(1));
  entry<void()>(module, "Initialize")();
  step(true, QString::fromLatin1(entry<const char*(void*)>(module, "initialize")(nullptr)));
  Twindow window(module);
  const auto setup = entry<std::int32_t(THostApplication*, Tqt484Frame*)>(module, "setup");
  step(setup(&window, &window) == 0, QStringLiteral("setup"));
  window.show();
  QTimer::singleShot(0, &window, &Twindow::visitTwice);
  QApplication::exec();
  step(entry<std::int32_t()>(module, "pshutdown")() == 0, QStringLiteral("pshutdown"));
  entry<void()>(module, "Finalize")();
  step(module.unload(), QStringLiteral("Finalize, unload"));
  return allAsPromised ? 0 : 1;
}
