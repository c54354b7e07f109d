#include <QCoreApplication>
#include <QFile>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "tools/childProcess.h"

// Not a QProcess: the thread sanitizer goes blind after the way it forks.
TchildProcess::TchildProcess(const QString& program, const QStringList& arguments) {
  const QString beside = QCoreApplication::applicationDirPath() + u'/' + program;
  QByteArrayList texts = {(QFile::exists(beside) ? beside : program).toUtf8()};
  for (const QString& argument : arguments) texts << argument.toUtf8();
  std::vector<char*> pointers;
  for (QByteArray& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) qFatal("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  pid_t started = -1;
  if (posix_spawnp(&started, pointers[0], &actions, nullptr, pointers.data(), environ) != 0) qFatal("no program");
  posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  process_ = started;
  output_ = ends[0];
}

TchildProcess::~TchildProcess() {
  kill(static_cast<pid_t>(process_), SIGKILL);
  waitpid(static_cast<pid_t>(process_), nullptr, 0);
  ::close(static_cast<int>(output_));
}

QByteArray TchildProcess::readMore() const {
  constexpr int patience = 20000;  // ms
  pollfd waiting = {static_cast<int>(output_), POLLIN, 0};
  if (poll(&waiting, 1, patience) <= 0) return {};
  std::array<char, 4096> buffer{};
  const auto count = ::read(waiting.fd, buffer.data(), buffer.size());
  return {buffer.data(), std::max<qsizetype>(count, 0)};
}
