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

/// Few different records, blank control numbers among them, so that equal ones are frequent.
class TrandomList {
 public:
  explicit TrandomList(unsigned seed) : random_(seed) {
    for (unsigned count = below(8); count > 0; --count) append(table, record());
    counts_ = TrecordCounts(table);
  }

  void changeAtRandom() {
    TlistStep step = TinsertRecords{{below(table.count() + 1)}, {record()}};
    const unsigned kind = table.count() == 0 ? 0 : below(3);
    if (kind == 1) step = TremoveRecords{{below(table.count())}};
    if (kind == 2) step = TreplaceRecord{below(table.count()), record()};
    for (TlistEdit& edit : editsOf(step, table, counts_)) edits.push_back(std::move(edit));
    applyChange(table, TlistChange(std::move(step)));
  }

  TequipRecTable table;
  TlistEdits edits;

 private:
  unsigned below(std::size_t end) { return static_cast<unsigned>(random_() % end); }
  TequipRec record() { return makeRecord({below(2) == 0 ? "" : "A", below(2) == 0 ? "x" : "y"}, 1 + below(2)); }

  std::mt19937 random_;
  TrecordCounts counts_;
};

}  // namespace

class TjoinTest : public QObject {
  Q_OBJECT
 private slots:
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
      TrandomList list(seed);
      const QByteArray base = textOf(list.table);
      for (unsigned steps = seed % 13; steps > 0; --steps) list.changeAtRandom();
      const TlistEdits ours = netEdits(std::move(list.edits));
      const QByteArray started = "seed " + QByteArray::number(seed) + ", list ";
      QCOMPARE(started + sorted(joinedText(base, ours)), started + sorted(textOf(list.table)));
      QCOMPARE(started + sorted(joinedText(textOf(list.table), ours)), started + sorted(textOf(list.table)));
    }
  }
};
EQREC_TEST(TjoinTest);

#include "joinTest.moc"
