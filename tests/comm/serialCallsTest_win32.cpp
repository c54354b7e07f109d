#include <QTest>
#include <windows.h>

#include "comm/serialCalls.h"
#include "tools/analyzerProcess.h"
#include "tools/testFiles.h"
#include "tools/testPlatform.h"

/// The system's serial port calls on the simulated analyzer's port.
class TserialCallsTest : public QObject {
  Q_OBJECT

 private slots:
  void noFlowControlIsLeft() {
    const TtestFolder folder;
    const TanalyzerProcess analyzer({QStringLiteral("--serial"), linkOfPort3(folder)});
    TserialCalls& calls = systemSerialCalls();
    const auto port = calls.open("COM3");
    QVERIFY(port != TserialCalls::invalidHandle);
    auto* const handle = reinterpret_cast<HANDLE>(port);
    DCB block = {};
    block.DCBlength = sizeof block;
    QVERIFY(GetCommState(handle, &block));
    block.fOutxCtsFlow = block.fOutX = block.fInX = TRUE;
    block.fRtsControl = RTS_CONTROL_HANDSHAKE;
    QVERIFY(SetCommState(handle, &block));
    QVERIFY(GetCommState(handle, &block) && block.fOutxCtsFlow && block.fOutX && block.fInX);
    QVERIFY(calls.setState(port, {19200, 8, 0, 0}));
    QVERIFY(GetCommState(handle, &block) && block.BaudRate == 19200);
    QVERIFY(!block.fOutxCtsFlow && !block.fOutxDsrFlow && !block.fDsrSensitivity && !block.fAbortOnError);
    QVERIFY(!block.fOutX && !block.fInX && !block.fNull);
    QCOMPARE(DWORD(block.fRtsControl), DWORD(RTS_CONTROL_ENABLE));
    QCOMPARE(DWORD(block.fDtrControl), DWORD(DTR_CONTROL_ENABLE));
    QVERIFY(calls.close(port));
  }
};
EQREC_TEST(TserialCallsTest);

#include "serialCallsTest_win32.moc"
