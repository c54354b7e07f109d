#include <QSocketNotifier>
#include <filesystem>

#include "simulator/pseudoTerminal.h"
#include "simulator/serialLink.h"
#include "simulator/serialPort.h"

namespace {

std::filesystem::path native(const QString& path) {
  return path.toStdU16String();
}

class TlinkedPort final : public TserialPort {
 public:
  explicit TlinkedPort(QString path) : path_(std::move(path)) {}
  ~TlinkedPort() override;

  bool open(QString& error) override;

 private:
  void handOver();
  bool makeLink() const;

  QString path_;
  std::unique_ptr<TpseudoTerminal> terminal_;
  std::unique_ptr<QSocketNotifier> openings_;
};

TlinkedPort::~TlinkedPort() {
  std::error_code error;
  if (terminal_ && std::filesystem::read_symlink(native(path_), error) == native(terminal_->farEnd())) {
    std::filesystem::remove(native(path_), error);
  }
}

bool TlinkedPort::open(QString& error) {
  terminal_ = TpseudoTerminal::open();
  if (!terminal_) {
    error = QStringLiteral("no pseudo-terminal is available");
    return false;
  }
  openings_ = std::make_unique<QSocketNotifier>(terminal_->openingDescriptor(), QSocketNotifier::Read);
  connect(openings_.get(), &QSocketNotifier::activated, this, &TlinkedPort::handOver);
  if (makeLink()) return true;
  error = QStringLiteral("the link %1 cannot be created").arg(path_);
  return false;
}

void TlinkedPort::handOver() {
  openings_->setEnabled(false);
  openings_.release()->deleteLater();  // the notifier is calling this function
  auto owned = std::make_unique<TserialLink>(std::move(terminal_));
  owned->setParent(this);
  TserialLink* link = owned.release();
  connect(link, &TserialLink::begun, this, [this, link] { emit begun(link); });
  connect(link, &TserialLink::closed, this, [this, link] {
    if (link->parent() == this) link->deleteLater();  // closed before anything arrived
  });
  QString error;
  if (!open(error)) qCritical("%s", qPrintable(error));
}

/// Replaces the link in one step, so that there is always a port to open.
bool TlinkedPort::makeLink() const {
  const std::filesystem::path path = native(path_);
  std::filesystem::path temporary = path;
  temporary += ".new";
  std::error_code error;
  if (std::filesystem::exists(std::filesystem::symlink_status(path, error)) &&
      !std::filesystem::is_symlink(std::filesystem::symlink_status(path, error))) {
    return false;
  }
  std::filesystem::remove(temporary, error);
  std::filesystem::create_symlink(native(terminal_->farEnd()), temporary, error);
  if (!error) std::filesystem::rename(temporary, path, error);
  return !error;
}

}  // namespace

std::unique_ptr<TserialPort> makeSerialPort(const QString& path) {
  return std::make_unique<TlinkedPort>(path);
}
