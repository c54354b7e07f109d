#include <QTest>

#include "listUsers.h"
#include "store/keptCopies.h"
#include "tools/testList.h"

namespace {

/// A folder to start from, again and again, and what is known of it.
struct Tstart {
  void save(const TtestFolder& folder) { std::filesystem::copy(folder.path(), copy_.path(), all); }
  void restore(const TtestFolder& folder) const {
    for (const QByteArray& name : namesIn(folder.path())) std::filesystem::remove_all(folder / name.toStdString());
    std::filesystem::copy(copy_.path(), folder.path(), all);
  }

  std::vector<Tmodel> models = {Tmodel("F"), Tmodel("S", commonRecords), Tmodel("B")};
  QByteArray script = "lrafs";
  QByteArray told;  ///< what a load of it says

 private:
  static constexpr auto all = std::filesystem::copy_options::recursive;
  TtestFolder copy_;
};

/// What a run with a fault came to.
struct Tend {
  QByteArray output;  ///< but for the fault
  QByteArray seen;
  QByteArrayList names;
  QByteArray fault;
  QByteArrayList wrong;
};

/// The contents of the files whose paths in DATA have this part.
QByteArrayList contentsIn(const TtestFolder& folder, const std::string& part) {
  QByteArrayList contents;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "DATA")) {
    const std::string path = entry.path().generic_string();
    if (entry.is_regular_file() && path.find(part) != std::string::npos) contents << bytesOf(path);
  }
  return contents;
}

}  // namespace

/// Calls of the system that fail at any place of a load, a change and a save, and a process that is killed there.
class TfaultTest : public QObject {
  Q_OBJECT
 private slots:
  void anyCallFails_data() {
    QTest::addColumn<QByteArray>("scenario");
    for (const char* scenario : {"plain", "decided", "half in place", "meanwhile", "dirty", "orphan"}) {
      QTest::newRow(scenario) << QByteArray(scenario);
    }
  }

  void anyCallFails() {
    QFETCH(QByteArray, scenario);
    const TtestFolder folder;
    Tstart start;
    prepare(scenario, folder, start);
    const Tend reference = run(folder, start, "none 0 EIO once");
    QCOMPARE(reference.wrong, QByteArrayList());
    QVERIFY(reference.output.contains("saved "));
    const int stride = qEnvironmentVariableIntValue("EQREC_ROUNDS") >= 100 ? 1 : 29;
    int runs = 0;
    int first = 0;
    for (const QByteArray& kind : QByteArrayList{"EIO once", "EIO kind", "EIO all", "EACCES once", "EACCES kind",
                                                 "EACCES all", "EINTR once", "KILL once"}) {
      for (int number = first++ * 7 % stride + 1;; number += stride) {
        const QByteArray fault = "any " + QByteArray::number(number) + ' ' + kind;
        Tend end = run(folder, start, fault);
        if (end.fault.isEmpty()) break;
        ++runs;
        const bool isSame =
            end.output == reference.output && end.seen == reference.seen && end.names == reference.names;
        if (kind.startsWith("EINTR") && !isSame) end.wrong << "interrupted, and not as without";
        if (!end.wrong.isEmpty()) {
          const QByteArray text =
              fault + ", " + end.fault + '\n' + end.wrong.join('\n') + '\n' + end.output + "--- then\n" + end.seen;
          QTest::qFail(text, __FILE__, __LINE__);
        }
      }
    }
    qInfo("%d runs with a fault", runs);
  }

 private:
  static void prepare(const QByteArray& scenario, const TtestFolder& folder, Tstart& start) {
    startList(folder);
    QByteArray fault;
    QByteArray before;
    if (scenario == "orphan") before = "lraf";
    if (scenario == "decided") fault = "rename 3 KILL once";  // after the backup's and the marker's
    if (scenario == "half in place") fault = "rename 4 KILL once";
    if (!fault.isEmpty()) before = "lrafs";
    if (scenario == "dirty") {
      writeBytes(folder / "DATA/eq.dat", bytesOf(folder / "DATA/eq.dat") + "this is no line of a record\n");
      start.told = "told " + TlistUserProcess(folder, QStringLiteral("L"), 0, "l").output().split('\n')[0].mid(5);
    }
    if (scenario == "meanwhile") start.script = "lrafws";
    if (!before.isEmpty()) start.models[0].follow(TlistUserProcess(folder, user, 2, before, fault).output());
    QCOMPARE(std::filesystem::exists(folder / "DATA/eq.commit"), !fault.isEmpty());
    if (!fault.isEmpty()) start.models[0].files = start.models[0].lists;  // it is decided
    start.save(folder);
  }

  static Tend run(const TtestFolder& folder, const Tstart& start, const QByteArray& fault) {
    Tend end;
    start.restore(folder);
    std::vector<Tmodel> models = start.models;
    QByteArrayList known = contentsIn(folder, "eq");
    TlistUserProcess process(folder, user, 3, start.script, fault);
    if (start.script.contains('w')) {
      end.output = process.outputToWait();
      if (end.output.contains("waiting")) {
        models[2].follow(TlistUserProcess(folder, QStringLiteral("B"), 3, "lrafs").output());
      }
      known += contentsIn(folder, "eq");
      process.goOn();
    }
    const QByteArrayList lines = (end.output + process.output()).split('\n');
    end.output.clear();
    for (const QByteArray& line : lines) (line.startsWith("fault ") ? end.fault : end.output) += line + '\n';
    models[0].follow(end.output, true);
    check(folder, start, known, models, end);
    return end;
  }

  static void check(const TtestFolder& folder, const Tstart& start, const QByteArrayList& known,
                    std::vector<Tmodel>& models, Tend& end) {
    const bool saved = end.output.contains("\nsaved ");
    const bool isCopied = saved && (!start.told.isEmpty() || start.script.contains('w'));
    end.seen = TlistUserProcess(folder, QStringLiteral("L"), 0, "lr").output();
    if (!start.told.isEmpty() && !saved) end.seen.replace(start.told + '\n', "");
    for (Tmodel& model : models) {
      model.follow(end.seen);
      end.wrong += model.wrong;
    }
    if ((start.told.isEmpty() || saved) && !isOnePair(folder)) end.wrong << "not one pair";
    for (const QByteArray& content :
         contentsIn(folder, ".kept-") + contentsIn(folder, "BACKUP/" + todaysDate() + '/')) {
      if (!known.contains(content)) end.wrong << "no whole copy: " + content;
    }
    end.names = namesIn(folder / "DATA");
    if (isCopied && !end.names.contains("eq.dat.kept-1")) end.wrong << "not kept";
    for (const QByteArray& name : end.names) {
      if (name.contains(".new-") || name == "eq.commit") end.wrong << "left behind: " + name;
    }
  }

  static inline const QString user = QStringLiteral("F");
};
EQREC_TEST(TfaultTest);

#include "faultTest_posix.moc"
