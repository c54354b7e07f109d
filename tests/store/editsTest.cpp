#include <QTest>

#include "store/recordEdits.h"
#include "store/testEdits.h"
#include "tools/testList.h"

class TeditsTest : public QObject {
  Q_OBJECT
 private slots:
  void composesEdits_data() {
    QTest::addColumn<QByteArray>("base");
    QTest::addColumn<QByteArray>("steps");
    QTest::addColumn<QByteArray>("net");
    row("changes are one change", "A 1 x", "0=A 1 y, 0=A 1 z", "A 1 x > A 1 z 000");
    row("a change back is nothing", "A 1 x", "0=A 1 y, 0=A 1 x", "");
    row("an equal record is nothing", "A 1 x", "0=A 1 x", "");
    row("a changed addition is an addition", "", "+A 1 x, 0=A 1 y", " > A 1 y 000");
    row("a removed addition is nothing", "", "+A 1 x, 0=A 1 y, -0", "");
    row("a removal taken back is nothing", "A 1 x, B 1 x", "-0, +A 1 x", "");
    row("a changed record is removed as it was", "A 1 x", "0=A 1 y, -0", "A 1 x >  000");
    row("its removal is taken back", "A 1 x", "0=A 1 y, -0, +A 1 y", "A 1 x > A 1 y 000");
    row("it comes back as it was", "A 1 x", "0=A 1 y, -0, +A 1 x", "");
    row("it comes back once", "A 1 x", "0=A 1 y, -0, +A 1 x, +A 1 y", " > A 1 y 000");
    row("a record becomes what another was", "A 1 x, A 1 y", "1=A 1 z, 0=A 1 y, 1=A 1 x",
        "A 1 y > A 1 x 110, A 1 x > A 1 y 110");
    row("counts are those at first", "A 1 x, A 1 x, A 2 x", "+A 2 x, 0=A 2 x, -1",
        " > A 2 x 100, A 1 x > A 2 x 131, A 1 x >  031");
    row("order of first appearance", "A 1 x, B 1 x", "1=B 1 y, +C 1 x, 0=A 1 y, 1=B 1 z",
        "B 1 x > B 1 z 000,  > C 1 x 000, A 1 x > A 1 y 000");
  }
  void composesEdits() {
    QFETCH(const QByteArray, base);
    QFETCH(const QByteArray, steps);
    TequipRecTable table = listOf(base);
    QTEST(textOf(netEdits(editsBy(steps, table))), "net");
  }

  void encodesAndDecodes() {
    TequipRecTable table = listOf("A 1 x, A 500 \xFFy, B 2 " + QByteArray(63, 'z'));
    const TlistEdits edits = editsBy("0=A 1 x, +A 1 x, 1=B 259 y, -0, -0", table);
    QCOMPARE(edits.size(), 4U);  // an equal record is no change
    const std::string bytes = encodedEdits(edits);
    QCOMPARE(textOf(decodedEdits(bytes).value()), textOf(edits));
    QVERIFY(decodedEdits(encodedEdits({}))->empty());
    for (std::size_t length = 0; length < bytes.size(); ++length) QVERIFY(!decodedEdits(bytes.substr(0, length)));
    QVERIFY(!decodedEdits(bytes + '\0'));
  }

  void decodesNoBytesOfAnotherShape() {
    TequipRecTable table;
    const std::string bytes = encodedEdits(editsBy("+AB 300 x", table));
    const auto decodes = [&](std::size_t place, char byte) {
      std::string changed = bytes;
      changed.at(place) = byte;
      return decodedEdits(changed).has_value();
    };
    constexpr std::size_t kind = 5;
    constexpr std::size_t controlNum = kind + 13;
    QVERIFY(decodes(0, fieldCount) && !decodes(0, fieldCount + 1));
    QVERIFY(!decodes(1, 0) && !decodes(1, 2) && !decodes(4, 1));
    QVERIFY(!decodes(kind, 0) && decodes(kind, 2) && !decodes(kind, 3) && !decodes(kind, 4));
    QVERIFY(!decodes(controlNum, 1) && !decodes(controlNum + 1, 0) && decodes(controlNum + 1, 'C'));
    QVERIFY(!decodes(bytes.size() - 1, 2) && decodes(bytes.size() - 1, 0));
    for (const std::size_t length : {17U, 18U}) {
      const std::string text(length + 1, static_cast<char>(length));
      QCOMPARE(decodedEdits(std::string(bytes).replace(controlNum, 3, text)).has_value(), length == 17);
    }
  }
};

EQREC_TEST(TeditsTest);

#include "editsTest.moc"
