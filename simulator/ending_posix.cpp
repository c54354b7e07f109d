#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>
#include <sys/signalfd.h>

#include "simulator/ending.h"

void endInOrder() {
  sigset_t awaited{};
  sigemptyset(&awaited);
  for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&awaited, signal);
  pthread_sigmask(SIG_BLOCK, &awaited, nullptr);
  QCoreApplication* application = QCoreApplication::instance();
  auto* notifier = new QSocketNotifier(signalfd(-1, &awaited, SFD_CLOEXEC), QSocketNotifier::Read, application);
  QObject::connect(notifier, &QSocketNotifier::activated, application, &QCoreApplication::quit);
}
