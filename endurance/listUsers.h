#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <functional>
#include <map>
#include <set>
#include <vector>

#include "tools/testFiles.h"

/// The version of each record, and of each user's text in a common record, by key: "P-1", "S-1/P".
using Tstate = std::map<QByteArray, int>;

inline QByteArray textOf(const Tstate& state) {
  QByteArrayList words;
  for (const auto& [key, version] : state) words << key + ':' + QByteArray::number(version);
  return words.join(' ');
}

/// A list-user at work. Killed with this object.
class TlistUserProcess {
 public:
  TlistUserProcess(const TtestFolder& folder, const QString& name, unsigned seed, const QByteArray& script,
                   const QByteArray& fault = {}) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!fault.isEmpty()) {
      const QString beside = QCoreApplication::applicationDirPath();
      environment.insert(QStringLiteral("LD_PRELOAD"), beside + QStringLiteral("/libfaulty-calls.so"));
      environment.insert(QStringLiteral("EQREC_FAULT"), QString::fromLatin1(fault));
      environment.insert(QStringLiteral("EQREC_FAULT_BELOW"), nameOf(folder.path()));
    }
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/list-user"),
                   {nameOf(folder.path()), name, QString::number(seed), QString::fromLatin1(script)});
    process_.waitForStarted();
  }

  void waitForOutput() { process_.waitForReadyRead(); }
  void killAfter(int milliseconds) {
    if (!process_.waitForFinished(milliseconds)) process_.kill();
  }
  /// Until it waits: what it has printed.
  QByteArray outputToWait() {
    QByteArray output;
    while (!output.contains("waiting") && process_.waitForReadyRead()) output += process_.readAll();
    return output;
  }
  void goOn() { process_.write("\n"); }
  /// What it prints until it ends, whole lines only.
  QByteArray output() {
    process_.waitForFinished(60000);
    QByteArray output = process_.readAll();
    output.truncate(output.lastIndexOf('\n') + 1);
    if (process_.state() != QProcess::NotRunning) output += "not ended\n";
    return output.replace("\r\n", "\n");
  }

 private:
  QProcess process_;
};

/// What a list must be by what one of its users has printed: the user's own keys, told by the user's name. Several
/// states are possible where the user was killed before it said how a step ended.
struct Tmodel {
  explicit Tmodel(QByteArray name, const Tstate& state = {}) : user(std::move(name)), files{state}, lists{state} {}

  /// Its part of a printed state "P-1:3 S-1:1 S-1/P:7".
  Tstate partOf(const QByteArray& text) {
    Tstate state;
    for (const QByteArray& word : text.split(' ')) {
      const qsizetype colon = word.lastIndexOf(':');
      const QByteArray key = word.first(std::max<qsizetype>(colon, 0));
      const qsizetype slash = key.indexOf('/');
      if ((slash < 0 ? key.first(std::max<qsizetype>(key.indexOf('-'), 0)) : key.mid(slash + 1)) != user) continue;
      const int version = word.mid(colon + 1).toInt();
      if (version < 0) wrong << "mixed pair: " + word;
      if (!state.emplace(key, version).second) wrong << "twice: " + word;
    }
    return state;
  }

  /// The list's state was seen: it must be a possible one.
  void see(const char* what, const QByteArray& text, std::set<Tstate>& possible) {
    const Tstate seen = partOf(text);
    if (!possible.contains(seen)) {
      QByteArrayList texts;
      for (const Tstate& state : possible) texts << textOf(state);
      wrong << QByteArray(what) + ": " + textOf(seen) + "\n  not " + texts.join("\n  or  ");
    }
    possible = {seen};
  }

  /// Follows what its user printed. With `faulty`, what it loaded counts for nothing.
  void follow(const QByteArray& output, bool faulty = false) {
    std::set<Tstate> memory = lists;
    if (faulty) memory.insert(files.begin(), files.end());
    std::set<Tstate> before;
    Tstate made;
    const auto make = [&](std::set<Tstate>& states) {
      std::set<Tstate> after;
      for (Tstate state : states) {
        for (const auto& [key, version] : made) state[key] = version;
        std::erase_if(state, [](const auto& entry) { return entry.second == 0; });
        after.insert(state);
      }
      states = after;
    };
    for (const QByteArray& line : output.split('\n')) {
      const QByteArray rest = line.mid(line.indexOf(' ') + 1);
      if (line.startsWith("loaded") && !faulty) see("loaded", rest, files);
      if (line.startsWith("restored") && !faulty) {
        see("restored", rest, lists);
        memory = lists;
      }
      if (line.startsWith("doing ")) {
        const qsizetype colon = rest.lastIndexOf(':');
        made[rest.first(colon)] = rest.mid(colon + 1).toInt();
        before = lists;
        make(memory);
        make(lists);
        lists.merge(std::set(before));
      }
      if (line == "done") make(lists);
      if (line == "saving") files.merge(std::set(memory));
      if (line.startsWith("saved ")) {
        files = memory;
        make(lists);
      }
      if (!faulty && (line.startsWith("told ") || line.startsWith("not "))) wrong << line;
    }
  }

  QByteArray user;
  std::set<Tstate> files;  ///< what the record files may hold
  std::set<Tstate> lists;  ///< what they may hold together with what is offered
  QByteArrayList wrong;
};

/// The records that both start from, without the files' folder: see `startList`.
inline const Tstate commonRecords = {{"S-1", 1}, {"S-2", 1}, {"S-3", 1}};

inline void startList(const TtestFolder& folder) {
  QByteArray data;
  QByteArray info;
  for (const auto& [number, version] : commonRecords) {
    data += '"' + number + "\",2\n";
    info += '"' + number + "\",\"v1\",\"\",\"\",\"\",\"\",\"\"\n";
  }
  writeBytes(folder / "DATA/eq.dat", data);
  writeBytes(folder / "DATA/eqinfo.dat", info);
}

/// Whether both files hold the same records in the same versions, by their lines.
inline bool isOnePair(const TtestFolder& folder) {
  QByteArrayList data;
  QByteArrayList info;
  for (const QByteArray& line : linesOf(folder / "DATA/eq.dat").split('\n')) data << line;
  for (const QByteArray& line : linesOf(folder / "DATA/eqinfo.dat").split('\n')) {
    const QByteArrayList texts = line.split(',');
    const int version = texts.value(1).mid(2).chopped(1).toInt();
    info << (line.isEmpty() ? line : texts[0] + ',' + QByteArray::number(version % 500 + 1));
  }
  return data == info;
}
