#include <QImageReader>
#include <QLibrary>
#include <QTest>
#include <memory>
#include <stdexcept>

#include "shell/entryPoints.h"
#include "shell/exportedNames.h"
#include "shell/hostInterface.h"
#include "tools/analyzerProcess.h"
#include "tools/dialogs.h"
#include "tools/testFiles.h"
#include "tools/testList.h"
#include "tools/testPlatform.h"

namespace {

/// A host with a list of two records.
class TtestHost : public THostApplication, public Tqt484Frame {
 public:
  TtestHost() {
    const QByteArray empty = R"(,"","","","","","")";
    writeBytes(folder / "DATA/eq.dat", "\"A1\",1\n\"A2\",2\n");
    writeBytes(folder / "DATA/eqinfo.dat", "\"A1\"" + empty + "\n\"A2\"" + empty + '\n');
  }

  QString programFolder() const override { return workingFolder(); }
  QString workingFolder() const override {
    if (throws) throw std::runtime_error("no folder");
    return QString::fromStdString(folder.path().string());  // without a separator at its end
  }
  void returnToMainWindow() override {}

  const TtestFolder folder;
  bool throws = false;
};

/// The module, loaded for one test and unloaded after it.
class Tmodule {
 public:
  Tmodule() : library_(QStringLiteral(EQREC_MODULE)) {
    if (!library_.load()) qFatal("%s", qPrintable(library_.errorString()));
    function<decltype(Initialize)>("Initialize")();
  }
  Tmodule(const Tmodule&) = delete;
  Tmodule& operator=(const Tmodule&) = delete;
  ~Tmodule() {
    function<decltype(Finalize)>("Finalize")();
    library_.unload();
  }

  template <typename Function>
  Function* function(const char* name) {
    return reinterpret_cast<Function*>(library_.resolve(name));
  }

  std::int32_t setUp(THostApplication* application, Tqt484Frame* frame) {
    return function<decltype(setup)>("setup")(application, frame);
  }
  std::unique_ptr<QWidget> mainForm() { return std::unique_ptr<QWidget>(function<QWidget*()>("getMainForm")()); }

 private:
  QLibrary library_;
};

}  // namespace

class TmoduleTest : public QObject {
  Q_OBJECT
 private slots:
  void exportsNineNamesAndNoTenth() {
    QByteArrayList names = exportedNames(EQREC_MODULE);
    std::sort(names.begin(), names.end());
    QCOMPARE(names.join(' '),
             "Finalize Initialize getConfigButton getConfigForm getMainButton getMainForm initialize pshutdown setup");
  }

  void tellsNameAndCaption() {
    Tmodule module;
    QCOMPARE(module.function<decltype(initialize)>("initialize")(this), "EquipmentRecordPlugin");
    const auto caption = module.function<decltype(getMainButton)>("getMainButton");
    QCOMPARE(caption(), "Equipment Record\nEditor");
    QVERIFY(module.function<decltype(getConfigButton)>("getConfigButton")() == nullptr);
    QVERIFY(module.function<decltype(getConfigForm)>("getConfigForm")() == nullptr);
    QCOMPARE(module.function<decltype(pshutdown)>("pshutdown")(), 0);
  }

  void setupRefusesNull() {
    Tmodule module;
    TtestHost host;
    QVERIFY(module.mainForm() == nullptr);
    QCOMPARE(module.setUp(nullptr, &host), -1);
    QCOMPARE(module.setUp(&host, nullptr), -1);
    QCOMPARE(module.setUp(&host, &host), 0);
    QCOMPARE(module.setUp(nullptr, &host), -1);  // and the host set before stays
    QVERIFY(module.mainForm() != nullptr);
    module.function<decltype(Finalize)>("Finalize")();
    QVERIFY(module.mainForm() == nullptr);
  }

  void throwingHostGetsNoFrame() {
    Tmodule module;
    TtestHost host;
    module.setUp(&host, &host);
    host.throws = true;
    QVERIFY(module.mainForm() == nullptr);
    host.throws = false;
    const auto frame = module.mainForm();
    host.throws = true;  // the module has asked for the folders already, and does not ask again
    QVERIFY(frame != nullptr);
  }

  /// Also where the host keeps the frame.
  void exitClosesTheHelp() {
    if (QSysInfo::kernelType() == QStringLiteral("winnt")) QSKIP("here the help is a window of the system");
    const auto isOpen = [] {
      const auto windows = QApplication::topLevelWidgets();
      return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->objectName() == QStringLiteral("ThelpWindow") && window->isVisible();
      });
    };
    Tmodule module;
    TtestHost host;
    module.setUp(&host, &host);
    const auto frame = module.mainForm();
    frame->show();
    click(frame.get(), "BtnHelp");
    QVERIFY(isOpen());
    click(frame.get(), "BtnExit");
    QVERIFY(!isOpen());
  }

  /// The thread of an upload whose driver hangs returns when the host has unloaded the module.
  void aHangingDriverKeepsTheCode() {
    QVERIFY(loadStandInDriver());
    const auto handles = openHandles();
    auto analyzer = std::make_unique<TusbAnalyzer>();
    qputenv("QT484_USB_HANG", "FT_Write");
    TtestHost host;
    {
      Tmodule module;
      module.setUp(&host, &host);
      const auto frame = module.mainForm();
      frame->show();
      (clickIn("TcomSelectFrm", "btnConnect") + clickIn("TfrmGreeting", "btnCancel")).during([&] {
        click(frame.get(), "BtnUpload");
      });
    }
    QVERIFY(linesOf(host.folder / "EquipmentRecord.log").contains("left to the end of the process"));
    analyzer.reset();
    QTRY_VERIFY(openHandles() <= handles);
    qunsetenv("QT484_USB_HANG");
  }

  /// Qt must not keep plug-ins of libraries that were unloaded with the module.
  void qtWorksWhenItHasGone() {
    { const Tmodule module; }
    QVERIFY(QImageReader::supportedImageFormats().contains("png"));
  }
};
EQREC_TEST(TmoduleTest);

#include "moduleTest.moc"
