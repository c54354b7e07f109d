#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <mutex>
#include <semaphore>

#include "comm/selector/communicationsSelector.h"
#include "support/log.h"
#include "tools/dialogs.h"
#include "tools/messageRecorder.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// The ports of a computer; the search's thread may outlive a test. One of them may keep the search waiting until the
/// gate opens.
struct Tports {
  explicit Tports(const QList<int>& free_, int slow_) : slow(slow_), free(free_), present(free_) {}

  bool canOpen(int number) {
    if (number == slow) gate.acquire();
    const std::lock_guard lock(mutex);
    tried << number;
    return free.contains(number);
  }
  bool isPresent(int number) {
    const std::lock_guard lock(mutex);
    return present.contains(number);
  }
  void set(const QList<int>& nowPresent, const QList<int>& nowFree) {
    const std::lock_guard lock(mutex);
    present = nowPresent;
    free = nowFree;
  }

  const int slow;
  std::counting_semaphore<> gate{0};
  std::mutex mutex;
  QList<int> free;
  QList<int> present;
  QList<int> tried;
};

/// The selector with its own settings file.
struct TselectorFixture {
  explicit TselectorFixture(const QByteArray& iniText) { writeBytes(folder / "q.ini", iniText); }
  ~TselectorFixture() {
    form.reset();
    if (computer) computer->gate.release(256);
    endPortSearches(std::chrono::seconds(5));
  }

  void open(const QList<int>& free, int slow = 0) {
    computer = std::make_shared<Tports>(free, slow);
    openOn(computer);
    const auto isFound = [slow](int number) { return slow == 0 || number < slow; };
    const auto found = std::count_if(free.begin(), free.end(), isFound);
    const int stored = TconnectionSettings::load(TiniFile(folder / "q.ini")).serialPort;
    const bool isSought = slow > 0 && stored > 0 && !(free.contains(stored) && isFound(stored));
    QTRY_COMPARE(ports()->count(), std::max<int>(1, static_cast<int>(found) + (isSought ? 1 : 0)));
    if (slow == 0) QTRY_VERIFY(!ports()->currentText().endsWith(QStringLiteral("earching...")));
  }
  void openOn(const std::shared_ptr<Tports>& on) {
    const TportCalls calls = {[on](int number) { return on->canOpen(number); },
                              [on](int number) { return on->isPresent(number); },
                              [](int number) { return "Adapter <" + std::to_string(number) + ">"; }};
    form = std::make_unique<TcomSelectFrm>(TiniFile(folder / "q.ini"), calls, nullptr);
    form->show();
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
  }
  template <typename Control = QLineEdit>
  Control* control(const char* name) const {
    return ::control<Control>(form.get(), name);
  }
  void click(const char* name) const { ::click(form.get(), name); }
  void press(Qt::Key key) const { QTest::keyClick(form->windowHandle(), key); }
  QComboBox* ports() const { return control<QComboBox>("serialPortSelector"); }
  /// The number of the method, the selected port, and the number of ports.
  QByteArray method() const {
    return QByteArray::number(int(form->choice().method)) + ' ' + ports()->currentText().toLatin1() + ' ' +
           QByteArray::number(ports()->count());
  }
  QByteArray note() const { return control<QLabel>("lblPortNote")->text().toLatin1(); }
  /// The texts of the boxes, and the name of the focused control.
  QByteArray address() const {
    QByteArrayList texts;
    for (const char* name : {"IP1", "IP2", "IP3", "IP4"}) texts << control(name)->text().toLatin1();
    return texts.join('.') + ' ' + form->focusWidget()->objectName().toLatin1();
  }
  /// The stored method and port.
  QByteArray storedPort() const {
    const TconnectionSettings stored = TconnectionSettings::load(TiniFile(folder / "q.ini"));
    return QByteArray::number(int(stored.method) + 1) + ' ' + QByteArray::number(stored.serialPort);
  }
  QByteArray ini() const { return linesOf(folder / "q.ini"); }

  TtestFolder folder;
  TmessageRecorder messages;
  std::shared_ptr<Tports> computer;
  std::unique_ptr<TcomSelectFrm> form;
};

constexpr const char* onEthernet = "[COMM]\nDEFAULTCOMMMETHOD=2\nIP1=10\nIP2=20\nIP3=\nIP4=40\n";
constexpr const char* onSerial = "[COMM]\nDEFAULTCOMMMETHOD=3\nDEFAULTSERIAL=200\nIP1=999\n";

}  // namespace

class TselectorTest : public QObject {
  Q_OBJECT
 private slots:
  void opensAsStored() {
    using Tcase = std::tuple<QByteArray, QByteArray, QList<int>, QByteArray>;
    for (const auto& [name, ini, free, expected] :
         {Tcase("no section: USB, first port", "[HOST]\n", {2, 9}, "0 COM2 2 127.0.0.1 radUSB radSerial"),
          Tcase("unknown method: USB", "[COMM]\nDEFAULTCOMMMETHOD=4\n", {256}, "0 COM256 1 127.0.0.1 radUSB radSerial"),
          Tcase("Ethernet: the address, cleaned", "[COMM]\nDEFAULTCOMMMETHOD=2\nIP1=255\nIP2=1x\nIP3=1234\n", {},
                "1 <No Free Ports> 1 255...1 radEthernet lblEthernet dot2 IP1 IP4"),
          Tcase("serial: the stored port", onSerial, {1, 200, 201},
                "2 COM200 3 999.0.0.1 radSerial radSerial lblSerialPort serialPortSelector"),
          Tcase("serial, stored port missing: the first", onSerial, {1},
                "2 COM1 1 999.0.0.1 radSerial radSerial lblSerialPort serialPortSelector COM200 is not free"),
          Tcase("serial without ports: USB", onSerial, {},
                "0 <No Free Ports> 1 999.0.0.1 radUSB COM200 is not free")}) {
      TselectorFixture f(ini);
      f.open(free);
      QByteArray shown = f.method() + ' ' + f.address();
      for (const char* control :
           {"radSerial", "lblEthernet", "dot2", "IP1", "IP4", "lblSerialPort", "serialPortSelector"}) {
        if (f.control<QWidget>(control)->isEnabled()) shown += QByteArray(" ") + control;
      }
      if (!f.note().isEmpty()) shown += ' ' + f.note();
      QCOMPARE(name + ": " + shown, name + ": " + expected);
    }
  }

  /// Starts in the first box, selected by Tab. The keys "<" and ">" are Left and Right, "b" is Backspace.
  void typesAnAddress() {
    const QHash<char, Qt::Key> named = {{'<', Qt::Key_Left}, {'>', Qt::Key_Right}, {'b', Qt::Key_Backspace}};
    using Tcase = std::array<QByteArray, 3>;
    for (const auto& [name, keys, address] :
         {Tcase{"dots behind third digits: once", "192.168.0.1", "192.168.0.1 IP4"},
          {"no dots: third digit moves on", "1921680017", "192.168.001.7 IP4"},
          {"commas are dots, the last stays", "1,2,3,4,", "1.2.3.4 IP4"},
          {"dots alone: over what is there", "..5", "10.20.5.40 IP3"},
          {"no digits: refused", "1x-/2", "12.20..40 IP1"},
          {"fourth digit: refused", "...1234", "10.20..123 IP4"},
          {"Backspace in empty box: back to the end", "..b5", "10.205..40 IP3"},
          {"Left at the ends: back, not before the first", "..<9<<<<<<<<<7", "710.209..40 IP2"},
          {"Left from the next box: behind all digits", "<.<<<7", "107.20..40 IP2"},
          {"Right at the ends: on", ">>7", "10.720..40 IP3"}}) {
      TselectorFixture f(onEthernet);
      f.open({});
      f.press(Qt::Key_Tab);
      for (const char key : keys) {
        named.contains(key) ? f.press(named[key]) : QTest::keyClick(f.form->windowHandle(), key);
      }
      QCOMPARE(name + ": " + f.address(), name + ": " + address);
    }
  }

  void pastesAnAddress() {
    TselectorFixture f(onEthernet);
    f.open({});
    f.control("IP2")->setFocus();
    for (const char* nothing : {"1.2.3", "1.2.3.x", "1.2.3.4444", "1234", "-1"}) {
      QApplication::clipboard()->setText(QLatin1String(nothing));
      QTest::keyClick(f.control("IP2"), Qt::Key_V, Qt::ControlModifier);
    }
    QCOMPARE(f.address(), "10.20..40 IP2");
    QApplication::clipboard()->setText(QStringLiteral(" 1.22.333.4\n"));
    pasteByMenu(f.control("IP2"));
    QCOMPARE(f.address(), "1.22.333.4 IP4");
  }

  void refusesBadOctets() {
    TselectorFixture f(onEthernet);
    f.open({});
    f.control("IP2")->setText(QStringLiteral("256"));
    for (const char* box : {"IP2", "IP3"}) {
      f.press(Qt::Key_Return);
      QCOMPARE(f.messages.takeCaptions(), QByteArrayList{"Error"});
      QVERIFY(f.form->isVisible() && f.address().endsWith(box));
      f.control(box)->setText(QStringLiteral("255"));
    }
    f.press(Qt::Key_Return);
    QVERIFY(f.form->isHidden() && f.messages.takeCaptions().isEmpty());
    QVERIFY((f.form->choice().octets == std::array<int, 4>{10, 255, 255, 40}));
  }

  void writesHoweverItCloses() {
    const std::vector<std::function<void(TselectorFixture&)>> ways = {
        [](auto& f) { f.press(Qt::Key_Return); }, [](auto& f) { f.click("btnConnect"); },
        [](auto& f) { f.press(Qt::Key_Escape); }, [](auto& f) { f.click("btnCancel"); },
        [](auto& f) { f.form->close(); },         [](auto& f) { f.form.reset(); }};
    for (std::size_t way = 0; way < ways.size(); ++way) {
      TselectorFixture f(onSerial);
      f.open({1, 7});
      QTest::keyClick(f.ports(), Qt::Key_Down);
      ways[way](f);
      QCOMPARE(f.ini(), "[COMM]\nDEFAULTCOMMMETHOD=3\nDEFAULTSERIAL=7\nIP1=999\n");
      if (f.form) QCOMPARE(f.form->result(), way < 2 ? QDialog::Accepted : QDialog::Rejected);
      if (f.form) QVERIFY(f.form->isHidden() && f.form->choice().portText == "COM7");
    }
    TselectorFixture f(onSerial);
    f.open({1});
    f.click("radEthernet");
    f.press(Qt::Key_Escape);
    QCOMPARE(f.ini(), "[COMM]\nDEFAULTCOMMMETHOD=2\nDEFAULTSERIAL=200\nIP1=999\nIP2=0\nIP3=0\nIP4=1\n");
  }

  /// What is shown during the search and after it, and what closing during the search writes.
  void searchingKeepsWhatIsStored() {
    using Tact = std::function<void(TselectorFixture&)>;
    const Tact nothing = [](auto&) {};
    const Tact ethernet = [](auto& f) { f.click("radEthernet"); };
    const Tact keyUp = [](auto& f) { QTest::keyClick(f.ports(), Qt::Key_Up); };
    const std::vector<std::tuple<int, Tact, QByteArray, QByteArray, QByteArray>> cases = {
        {3, nothing, "2 COM200, searching... 1", "2 COM200 3", "3 200"},
        {200, nothing, "2 COM200, searching... 3", "2 COM200 3", "3 200"},
        {201, nothing, "2 COM200 3", "2 COM200 3", "3 200"},
        {3, ethernet, "1 COM200, searching... 1", "1 COM200 3", "2 200"},
        {200, keyUp, "2 COM5 3", "2 COM5 3", "3 5"}};
    for (const auto& [slow, act, during, after, written] : cases) {
      for (const bool closes : {false, true}) {
        TselectorFixture f(onSerial);
        f.open({3, 5, 200}, slow);
        act(f);
        QTRY_COMPARE(f.method(), during);
        if (closes) {
          f.press(Qt::Key_Escape);
          QVERIFY(f.form->isHidden());
          QCOMPARE(f.storedPort(), written);
        } else {
          f.computer->gate.release();
          QTRY_COMPARE(f.method(), after);
        }
      }
    }
  }

  /// Only connecting over the port that is shown in its place replaces the stored one.
  void aMissingPortStaysStored() {
    using Tcase = std::tuple<QList<int>, const char*, Qt::Key, QByteArray>;
    for (const auto& [free, method, key, written] :
         {Tcase({1}, nullptr, Qt::Key_Escape, "3 200"), Tcase({}, nullptr, Qt::Key_Escape, "3 200"),
          Tcase({1}, "radUSB", Qt::Key_Return, "1 200"), Tcase({}, nullptr, Qt::Key_Return, "1 200"),
          Tcase({1}, nullptr, Qt::Key_Return, "3 1")}) {
      TselectorFixture f(onSerial);
      f.open(free);
      if (method != nullptr) f.click(method);
      f.press(key);
      QTRY_VERIFY(f.form->isHidden());
      QCOMPARE(f.storedPort(), written);
    }
  }

  /// It waits for the port, for the end of a search that has found it, or in vain.
  void connectWaitsForThePort() {
    using Tcase = std::pair<QList<int>, int>;
    for (const auto& [free, slow] : {Tcase({3, 200}, 3), Tcase({3, 200}, 201), Tcase({3}, 201)}) {
      TselectorFixture f(onSerial);
      f.open(free, slow);
      f.press(Qt::Key_Return);
      QVERIFY(f.form->isVisible() && !f.control<QWidget>("btnConnect")->isEnabled());
      QCOMPARE(f.note(), "Waiting for COM200...");
      f.computer->gate.release(2);
      if (free.contains(200)) {
        QTRY_VERIFY(f.form->isHidden());
        QVERIFY(f.form->result() == QDialog::Accepted && f.form->choice().portText == "COM200");
      } else {
        QTRY_COMPARE(f.note(), "COM200 is not free");
        QVERIFY(f.form->isVisible() && f.control<QWidget>("btnConnect")->isEnabled());
      }
      QCOMPARE(f.storedPort(), "3 200");
    }
  }

  void aWaitingConnectCanBeGivenUp() {
    TselectorFixture f(onSerial);
    f.open({3, 200}, 201);
    f.press(Qt::Key_Return);
    QCOMPARE(f.note(), "Waiting for COM200...");
    f.click("radUSB");
    QVERIFY(f.note().isEmpty());
    f.computer->set({3, 9, 200}, {3, 9, 200});  // the search goes on
    f.computer->gate.release(2);
    QTRY_COMPARE(f.method(), "0 COM200 3");
    QVERIFY(f.control<QWidget>("btnConnect")->isEnabled());
    f.click("radSerial");
    f.press(Qt::Key_Return);
    QTRY_VERIFY(f.form->isHidden());
  }

  /// The search of a closed dialog goes on until its driver returns; the next one waits for it.
  void nobodyElseWaitsForThePorts() {
    TselectorFixture f(onSerial);
    f.open({3, 200}, 3);
    f.click("radUSB");
    f.press(Qt::Key_Return);
    QVERIFY(f.form->isHidden() && f.form->result() == QDialog::Accepted);
    f.openOn(std::make_shared<Tports>(QList<int>{200}, 0));
    QCOMPARE(f.method(), "0 COM200, searching... 1");
    f.computer->gate.release();
    QTRY_COMPARE(f.method(), "0 COM200 1");
    QCOMPARE(f.computer->tried.last(), 3);
  }

  void portsComeAndGo() {
    TselectorFixture f(onSerial);
    f.open({3, 200});
    f.computer->set({3, 5, 9}, {3, 5});
    QTRY_COMPARE_WITH_TIMEOUT(f.method(), "2 COM3 2", 1000);
    QCOMPARE(f.note(), "COM200 is not free");
    QCOMPARE(f.ports()->itemData(1, Qt::ToolTipRole).toString(), QStringLiteral("Adapter <5>"));
    f.computer->set({5, 9}, {9});  // another program has opened COM5 and closed COM9
    QTRY_COMPARE_WITH_TIMEOUT(f.method(), "2 COM5 2", 1000);
    f.computer->set({}, {});
    QTRY_COMPARE_WITH_TIMEOUT(f.method(), "0 <No Free Ports> 1", 1000);
    QVERIFY(f.address().endsWith("radUSB") && !f.control<QWidget>("radSerial")->isEnabled());
    f.computer->set({9, 200}, {9, 200});
    QTRY_COMPARE_WITH_TIMEOUT(f.method(), "2 COM200 2", 1000);
    QCOMPARE(f.computer->tried.count(5), 2);  // never while it was listed
  }

  void aSearchThatHangsIsLeft() {
    TselectorFixture f(onSerial);
    openLog(f.folder.path());
    f.open({}, 5);
    f.form.reset();
    endPortSearches(std::chrono::milliseconds(10));
    closeLog();
    QVERIFY(linesOf(f.folder / "EquipmentRecord.log").contains("left to the end of the process"));
  }
};
EQREC_TEST(TselectorTest);

#include "selectorTest.moc"
