#include <QTest>
#include <random>

#include "listUsers.h"
#include "rounds.h"
#include "tools/testList.h"

namespace {

/// What a user does: opens the list, then steps at random, each as often as its letter is in `letters`. The list is
/// opened again only where `opening` follows.
QByteArray randomScript(std::mt19937& random, const QByteArray& letters, int length, const QByteArray& opening) {
  QByteArray script = "lr";
  while (script.size() < length) {
    const char letter = letters[static_cast<qsizetype>(random() % static_cast<unsigned>(letters.size()))];
    script += letter == 'l' ? opening : QByteArray(1, letter);
  }
  return script;
}

}  // namespace

/// Real processes edit and save one list, and are killed. EQREC_ROUNDS is the number of rounds, EQREC_SEED that of the
/// first.
class TenduranceTest : public QObject {
  Q_OBJECT
 private slots:
  // On the disk: in memory, on a busy machine, the rounds run into the known gap of docs/choices.md.
  void initTestCase() {
    place_ = qgetenv("TMPDIR");
    qunsetenv("TMPDIR");
  }
  void cleanupTestCase() const {
    if (!place_.isEmpty()) qputenv("TMPDIR", place_);
  }

  void killedAtAnyMoment() const {
    const TtestFolder folder;
    startList(folder);
    Tmodel user("P");
    Tmodel common("S", commonRecords);
    std::map<QByteArray, int> killedIn;
    for (int seed = firstSeed_; seed < firstSeed_ + rounds_; ++seed) {
      std::mt19937 random(static_cast<unsigned>(seed));
      const QByteArray script = randomScript(random, "aaacccccdddufffsspppl", 400, "lr");
      TlistUserProcess process(folder, QStringLiteral("P"), static_cast<unsigned>(seed), script);
      if (random() % 4 != 0) process.waitForOutput();
      process.killAfter(static_cast<int>(random() % 100));
      const QByteArray output = process.output();
      common.follow(seenIn(output));
      user.follow(output);
      ++killedIn[output.trimmed().split('\n').last().split(' ').first()];
      // An orphan lies there at times when the next user comes.
      if (random() % 2 == 0) look(folder, {&user, &common});
      QVERIFY2(user.wrong.isEmpty() && common.wrong.isEmpty(), report(folder, seed, {&user, &common}, {output}));
    }
    look(folder, {&user, &common});
    QVERIFY2(user.wrong.isEmpty() && common.wrong.isEmpty(), report(folder, rounds_, {&user, &common}, {}));
    for (const auto& [line, count] : killedIn) qInfo("killed after \"%s\": %d", line.constData(), count);
  }

  void twoUsersOfOneList_data() {
    QTest::addColumn<bool>("watched");
    QTest::newRow("both edit and save") << false;
    QTest::newRow("a third loads") << true;
  }

  void twoUsersOfOneList() const {
    QFETCH(bool, watched);
    int saves = 0;
    const int rounds = watched ? (rounds_ + 2) / 3 : rounds_;
    for (int seed = firstSeed_; seed < firstSeed_ + rounds; ++seed) {
      std::mt19937 random(static_cast<unsigned>(seed));
      const TtestFolder folder;
      startList(folder);
      std::vector<Tmodel> models = {Tmodel("A"), Tmodel("B"), Tmodel("S", commonRecords)};
      std::vector<std::unique_ptr<TlistUserProcess>> processes;
      for (const QString& name : {QStringLiteral("A"), QStringLiteral("B")}) {
        const QByteArray script = randomScript(random, "aaccccddufffsspppl", 60, "slr");
        processes.push_back(std::make_unique<TlistUserProcess>(folder, name, static_cast<unsigned>(seed), script));
      }
      if (watched) {
        processes.push_back(
            std::make_unique<TlistUserProcess>(folder, QStringLiteral("W"), 0, QByteArray("lp").repeated(60)));
      }
      if (seed % 3 == 0) processes[0]->killAfter(static_cast<int>(random() % 200));
      QByteArrayList outputs;
      for (auto& process : processes) outputs << process->output();
      for (std::size_t i = 0; i < 2; ++i) {
        models[i].follow(outputs[static_cast<qsizetype>(i)]);
        saves += static_cast<int>(outputs[static_cast<qsizetype>(i)].count("saved "));
        // The other user may have restored and saved what a killed one left.
        models[i].files.merge(std::set(models[i].lists));
      }
      for (const QByteArray& output : outputs) seeOnly(output, models);
      look(folder, {&models[0], &models[1], &models[2]});
      const bool isRight = std::ranges::all_of(models, [](const Tmodel& model) { return model.wrong.isEmpty(); });
      QVERIFY2(isRight, report(folder, seed, {&models[0], &models[1], &models[2]}, outputs));
    }
    qInfo("%d saves in %d rounds", saves, rounds);
  }

 private:
  /// Lines that tell a state.
  static QByteArray seenIn(const QByteArray& output) {
    QByteArrayList lines = output.split('\n');
    lines.removeIf([](const QByteArray& line) { return !line.startsWith("loaded") && !line.startsWith("restored"); });
    return lines.join('\n');
  }
  /// Looks for mixed pairs in what a user saw that others change meanwhile.
  static void seeOnly(const QByteArray& output, std::vector<Tmodel>& models) {
    for (const QByteArray& line : seenIn(output).split('\n')) {
      for (Tmodel& model : models) model.partOf(line);
    }
    if (output.contains("told ")) models[0].wrong << "told: " + output;
  }
  /// Loads and restores, and compares.
  static void look(const TtestFolder& folder, const std::vector<Tmodel*>& models) {
    const QByteArray output = TlistUserProcess(folder, QStringLiteral("L"), 0, "lr").output();
    for (Tmodel* model : models) model->follow(output);
    if (!isOnePair(folder)) models[0]->wrong << "not one pair";
  }

  static QByteArray report(const TtestFolder& folder, int seed, const std::vector<Tmodel*>& models,
                           const QByteArrayList& outputs) {
    QByteArray text = "seed " + QByteArray::number(seed) + '\n';
    for (const Tmodel* model : models) text += model->user + ": " + model->wrong.join('\n') + '\n';
    return text + outputs.join("\n---\n") + "\n---\n" + bytesOf(folder.path() / "EquipmentRecord.log");
  }

  QByteArray place_;
  int rounds_ = proofRounds();
  int firstSeed_ = static_cast<int>(proofSeed());
};
EQREC_TEST(TenduranceTest);

#include "enduranceTest.moc"
