#include <QCoreApplication>
#include <cstdio>

#include "simulator/ending.h"
#include "simulator/server.h"

namespace {

void print(const QByteArray& line) {
  std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

int refuse(const QString& why, int status) {
  std::fprintf(stderr, "qt484-analyzer: %s\n", qPrintable(why));
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QString error;
  const auto options = parseOptions(QCoreApplication::arguments(), error);
  if (!options) return refuse(error, 2);
  if (options->help) {
    print(usage().toLocal8Bit());
    return 0;
  }
  endInOrder();
  Tserver server(*options, print);
  QObject::connect(&server, &Tserver::finished, &application, &QCoreApplication::exit, Qt::QueuedConnection);
  return server.listen(error) ? QCoreApplication::exec() : refuse(error, 1);
}
