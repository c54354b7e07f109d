#include "tools/analyzerProcess.h"

#include <QCoreApplication>
#include <array>
#include <csignal>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

bool loadStandInDriver() {
  const QByteArray driver = QCoreApplication::applicationDirPath().toUtf8() + "/d2xx/libftd2xx.so";
  return dlopen(driver.constData(), RTLD_NOW) != nullptr;
}

// Not a QProcess: it forks in a way after which the thread sanitizer sees nothing any more.
TanalyzerProcess::TanalyzerProcess(const QStringList& arguments) {
  QByteArrayList texts = {QCoreApplication::applicationDirPath().toUtf8() + "/qt484-analyzer"};
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
  if (posix_spawn(&process_, pointers[0], &actions, nullptr, pointers.data(), environ) != 0) qFatal("no analyzer");
  posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  output_ = ends[0];
  listening_ = waitFor("listening");
}

TanalyzerProcess::~TanalyzerProcess() {
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
  ::close(output_);
}

QByteArray TanalyzerProcess::waitFor(const QByteArray& start) {
  do {
    for (qsizetype end = 0; (end = unread_.indexOf('\n')) >= 0;) {
      QByteArray line = unread_.first(end);
      unread_.remove(0, end + 1);
      if (line.startsWith(start)) return line;
    }
  } while (readMore());
  return {};
}

bool TanalyzerProcess::readMore() {
  constexpr int patience = 20000;  // ms
  pollfd waiting = {output_, POLLIN, 0};
  if (poll(&waiting, 1, patience) <= 0) return false;
  std::array<char, 4096> buffer{};
  const auto count = ::read(output_, buffer.data(), buffer.size());
  unread_.append(buffer.data(), std::max<qsizetype>(count, 0));
  return count > 0;
}
