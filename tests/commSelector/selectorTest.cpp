#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <atomic>
#include <semaphore>

#include "comm/selector/communicationsSelector.h"
#include "tools/dialogs.h"
#include "tools/messageRecorder.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

namespace {

/// The selector with its own settings file. One port may keep the search waiting until the gate opens.
struct TselectorFixture {
  explicit TselectorFixture(const QByteArray& iniText) { writeBytes(folder / "q.ini", iniText); }
  ~TselectorFixture() { gate.release(256); }

  void open(const QList<int>& free, int slow = 0) {
    const auto canOpen = [this, free, slow](int number) {
      if (number == slow) gate.acquire();
      lastTried = number;
      return free.contains(number);
    };
    form = std::make_unique<TcomSelectFrm>(TiniFile(folder / "q.ini"), canOpen, nullptr);
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
  /// The texts of the boxes, and the name of the focused control.
  QByteArray address() const {
    QByteArrayList texts;
    for (const char* name : {"IP1", "IP2", "IP3", "IP4"}) texts << control(name)->text().toLatin1();
    return texts.join('.') + ' ' + form->focusWidget()->objectName().toLatin1();
  }
  QByteArray ini() const { return linesOf(folder / "q.ini"); }

  TtestFolder folder;
  TmessageRecorder messages;
  std::counting_semaphore<> gate{0};
  std::atomic<int> lastTried = 0;
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
          Tcase("serial without ports: USB", onSerial, {}, "0 <No Free Ports> 1 999.0.0.1 radUSB")}) {
      TselectorFixture f(ini);
      f.open(free);
      QByteArray shown = f.method() + ' ' + f.address();
      for (const char* control :
           {"radSerial", "lblEthernet", "dot2", "IP1", "IP4", "lblSerialPort", "serialPortSelector"}) {
        if (f.control<QWidget>(control)->isEnabled()) shown += QByteArray(" ") + control;
      }
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

  void latePortsJoin() {
    const std::vector<std::tuple<int, std::function<void(TselectorFixture&)>, QByteArray, QByteArray>> cases = {
        {3, [](auto&) {}, "0 <No Free Ports> 1", "2 COM200 3"},
        {200, [](auto&) {}, "2 COM3 2", "2 COM200 3"},
        {3, [](auto& f) { f.click("radEthernet"); }, "0 <No Free Ports> 1", "1 COM200 3"},
        {200, [](auto& f) { QTest::keyClick(f.ports(), Qt::Key_Down); }, "2 COM3 2", "2 COM5 3"}};
    for (const auto& [slow, act, before, after] : cases) {
      TselectorFixture f(onSerial);
      f.open({3, 5, 200}, slow);
      QCOMPARE(f.method(), before);
      act(f);
      f.gate.release();
      QTRY_COMPARE(f.method(), after);
    }
  }

  void closingEndsTheSearch() {
    TselectorFixture f(onSerial);
    f.open({}, 5);
    f.form->close();
    QVERIFY(f.form->isVisible() && !f.form->isEnabled());
    f.gate.release();
    QTRY_VERIFY(f.form->isHidden());
    f.form.reset();
    QCOMPARE(f.lastTried, 5);
  }
};
EQREC_TEST(TselectorTest);

#include "selectorTest.moc"
