#include <QTest>
#include <algorithm>
#include <random>

#include "store/joinLists.h"
#include "store/testEdits.h"
#include "tools/testList.h"

namespace {

/// A list with our edits joined, told with the number of fields that both changed if there are any.
QByteArray joinedText(const QByteArray& theirs, const TlistEdits& ours) {
  TequipRecTable table = listOf(theirs);
  Tjoined joined = joinLists(table, ours);
  applyChange(table, std::move(joined.change));
  return textOf(table) + (joined.fieldsInBoth > 0 ? " !" + QByteArray::number(joined.fieldsInBoth) : "");
}

QByteArray sorted(const QByteArray& list) {
  QByteArrayList records = list.split(',');
  for (QByteArray& record : records) record = record.trimmed();
  std::sort(records.begin(), records.end());
  return records.join(", ");
}

/// Chooses among few different records, blank control numbers among them, so that equal ones are frequent.
class Trandom {
 public:
  explicit Trandom(unsigned seed) : random_(seed) {}

  unsigned below(std::size_t end) { return static_cast<unsigned>(random_() % end); }
  QByteArray record() {
    const QByteArray number = below(2) == 0 ? "" : "A";
    return number + (below(2) == 0 ? " 1 " : " 2 ") + (below(2) == 0 ? "x" : "y");
  }
  /// Steps on a list with so many records, for `editsBy`.
  QByteArray steps(unsigned number, std::size_t count) {
    QByteArrayList steps;
    while (steps.size() < number) {
      const unsigned kind = count == 0 ? 0 : below(3);
      const QByteArray index = QByteArray::number(count == 0 ? 0 : below(count));
      steps << (kind == 0 ? '+' + record() : kind == 1 ? '-' + index : index + '=' + record());
      if (kind == 0) ++count;
      if (kind == 1) --count;
    }
    return steps.join(',');
  }

 private:
  std::mt19937 random_;
};

}  // namespace

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
    TequipRecTable table = listOf("A 1 x, A 500 \x80y, B 2 " + QByteArray(63, 'z'));
    const TlistEdits edits = editsBy("0=A 1 x, +A 1 x, 1=B 259 y, -0, -0", table);
    QCOMPARE(edits.size(), 4U);  // an equal record is no change
    const std::string bytes = encodedEdits(edits);
    QCOMPARE(textOf(decodedEdits(bytes).value()), textOf(edits));
    QVERIFY(decodedEdits(encodedEdits({}))->empty());
    for (std::size_t length = 0; length < bytes.size(); ++length) QVERIFY(!decodedEdits(bytes.substr(0, length)));
    QVERIFY(!decodedEdits(bytes + '\0'));
    // Other bytes are refused, unless they are what encoding makes of other edits.
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
      std::string changed = bytes;
      changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ 1 << bit % 8);
      const auto found = decodedEdits(changed);
      QVERIFY(!found || encodedEdits(*found) == changed);
    }
    const std::string added = encodedEdits(editsBy("+AB 300 x", table));
    for (const std::size_t length : {17U, 18U}) {
      const std::string text = static_cast<char>(length) + std::string(length, 'A');
      QCOMPARE(decodedEdits(std::string(added).replace(18, 3, text)).has_value(), length == 17);
    }
  }

  void joins_data() {
    QTest::addColumn<QByteArray>("base");
    QTest::addColumn<QByteArray>("steps");
    QTest::addColumn<QByteArray>("theirs");
    QTest::addColumn<QByteArray>("joined");
    row("unchanged, changed in place", "A 1 x, B 1 x", "0=A 1 y", "C 1 x, A 1 x", "C 1 x, A 1 y");
    row("unchanged, removed", "A 1 x, B 1 x", "-0", "C 1 x, A 1 x, B 1 x", "C 1 x, B 1 x");
    row("both changed alike, once", "A 1 x", "0=A 1 y", "A 1 y, B 1 x", "A 1 y, B 1 x");
    row("changed in different fields, both", "A 1 x", "0=A 2 x", "A 1 y", "A 2 y");
    row("changed in one field, ours", "A 1 x", "0=A 2 y", "A 3 z", "A 2 y !2");
    row("they removed, we changed, added", "A 1 x, B 1 x", "0=A 1 y", "B 1 x", "B 1 x, A 1 y");
    row("they changed, we removed, stays", "A 1 x", "-0", "A 1 y", "A 1 y");
    row("both removed, gone", "A 1 x, B 1 x", "-0", "B 1 x", "B 1 x");
    row("they changed the control number, both stay", "A 1 x", "0=A 2 x", "B 1 x", "B 1 x, A 2 x");
    row("number twice in ours, added", "A 1 x, A 2 x", "0=A 1 y", "A 3 x", "A 3 x, A 1 y");
    row("number twice in theirs, added", "A 1 x", "0=A 1 y", "A 3 x, A 4 x", "A 3 x, A 4 x, A 1 y");
    row("blank number, added", " 1 x", "0= 1 y", " 1 z", " 1 z,  1 y");
    row("number of another change, not taken", "A 1 x, B 1 x", "0=A 2 x, 1=A 3 x", "A 9 x, A 3 x", "A 2 x, A 3 x !1");
    row("added, at the end in order", "A 1 x", "+C 1 x, +B 1 x", "A 1 x, D 1 x", "A 1 x, D 1 x, C 1 x, B 1 x");
    row("both added alike, once", "A 1 x", "+B 1 x, +C 1 x", "B 1 x, A 1 x", "B 1 x, A 1 x, C 1 x");
    row("copied twice, by them once", " 1 x", "+ 1 x, + 1 x", " 1 x,  1 x", " 1 x,  1 x,  1 x");
    row("one of equals changed", " 1 x,  1 x", "0= 1 y", " 1 x,  1 x", " 1 y,  1 x");
    row("one of equals changed, they another", " 1 x,  1 x", "0= 1 y", " 1 x,  1 z", " 1 y,  1 z");
    row("one of equals changed, by them alike", " 1 x,  1 x", "0= 1 y", " 1 x,  1 y", " 1 x,  1 y");
    row("one of equals removed, by both", " 1 x,  1 x", "-0", " 1 x", " 1 x");
    row("two of equals removed, by them one", " 1 x,  1 x,  1 x", "-0, -0", " 1 x,  1 x,  2 x", " 1 x,  2 x");
    row("changed and added as it was", "A 1 x", "0=A 1 y, +A 1 x", "A 1 x, A 1 x", "A 1 y, A 1 x");
    row("changed into what another was", "A 1 x, A 1 y", "1=A 1 z, 0=A 1 y", "A 1 x, A 1 y, B 1 x",
        "A 1 y, A 1 z, B 1 x");
    row("into an empty list", "A 1 x, B 1 x", "0=A 1 y, -1, +C 1 x", "", "A 1 y, C 1 x");
    row("from an empty list", "", "+A 1 x", "B 1 x", "B 1 x, A 1 x");
  }
  void joins() {
    QFETCH(const QByteArray, base);
    QFETCH(const QByteArray, steps);
    QFETCH(const QByteArray, theirs);
    QFETCH(const QByteArray, joined);
    TequipRecTable table = listOf(base);
    const TlistEdits ours = netEdits(editsBy(steps, table));
    QCOMPARE(joinedText(theirs, ours), joined);
    const QByteArray records = QByteArray(joined).replace(" !1", "").replace(" !2", "");
    QCOMPARE(joinedText(records, ours), records);  // nothing happens twice
  }

  void findsByTheOldNumberAndJoinsEveryField() {
    const TequipRec was = makeRecord({"A", "d", "m", "o", "1", "2", "3"});
    const TequipRec ours = makeRecord({"B", "d", "M", "o", "!", "2", "3"});
    const TequipRec theirs = makeRecord({"A", "D", "m", "o", "?", "2", ""});
    TequipRecTable table({theirs});
    Tjoined joined = joinLists(table, {{was, ours, 0, 0, 0}});
    applyChange(table, std::move(joined.change));
    QVERIFY(table.at(0) == makeRecord({"B", "D", "M", "o", "!", "2", ""}));
    QCOMPARE(joined.fieldsInBoth, 1U);
  }

  void joinsSeveralProgramsOneAfterTheOther() {
    const TequipRec was = makeRecord({"A", "d", "m"});
    const TequipRec both = makeRecord({"A", "D", "M"});
    const TequipRecTable table(std::vector{was});
    const TlistEdits edits =
        joinAll(table, {{{was, makeRecord({"A", "D", "m"}), 0, 0, 0}}, {{was, makeRecord({"A", "d", "M"}), 0, 0, 0}}});
    QCOMPARE(edits.size(), 1U);
    QVERIFY(*edits[0].was == was && *edits[0].became == both);
  }

  void reachesTheListThatItsEditsMade() {
    for (unsigned seed = 0; seed < 3000; ++seed) {
      Trandom random(seed);
      TequipRecTable table;
      for (unsigned count = random.below(8); count > 0; --count) append(table, tableOf(random.record()).at(0));
      const QByteArray base = textOf(table);
      const TlistEdits ours = netEdits(editsBy(random.steps(1 + seed % 12, table.count()), table));
      const QByteArray started = "seed " + QByteArray::number(seed) + ", list ";
      QCOMPARE(started + sorted(joinedText(base, ours)), started + sorted(textOf(table)));
      QCOMPARE(started + sorted(joinedText(textOf(table), ours)), started + sorted(textOf(table)));
    }
  }
};
EQREC_TEST(TeditsTest);

#include "editsTest.moc"
