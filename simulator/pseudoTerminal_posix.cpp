#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "simulator/pseudoTerminal.h"

std::unique_ptr<TpseudoTerminal> TpseudoTerminal::open() {
  std::unique_ptr<TpseudoTerminal> terminal(new TpseudoTerminal);
  return terminal->prepare() ? std::move(terminal) : nullptr;
}

TpseudoTerminal::~TpseudoTerminal() {
  for (const int descriptor : {watch_, near_}) {
    if (descriptor >= 0) ::close(descriptor);
  }
}

bool TpseudoTerminal::prepare() {
  near_ = ::open("/dev/ptmx", O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  watch_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  return near_ >= 0 && watch_ >= 0 && grantpt(near_) == 0 && unlockpt(near_) == 0 &&
         inotify_add_watch(watch_, farEnd().toLocal8Bit().constData(), IN_OPEN) >= 0;
}

QString TpseudoTerminal::farEnd() const {
  std::array<char, 64> name{};
  return ptsname_r(near_, name.data(), name.size()) == 0 ? QString::fromLocal8Bit(name.data()) : QString();
}

std::optional<QByteArray> TpseudoTerminal::read() const {
  QByteArray bytes;
  std::array<char, 4096> buffer{};
  ssize_t count = 0;
  while ((count = ::read(near_, buffer.data(), buffer.size())) > 0) bytes.append(buffer.data(), count);
  return bytes.isEmpty() && count < 0 && errno == EIO ? std::nullopt : std::optional(bytes);
}

bool TpseudoTerminal::isClosed() const {
  pollfd state{near_, 0, 0};
  return poll(&state, 1, 0) > 0 && (state.revents & POLLHUP) != 0;
}

void TpseudoTerminal::write(const QByteArray& bytes) const {
  [[maybe_unused]] const ssize_t taken = ::write(near_, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

bool TpseudoTerminal::isDrained() const {
  const int far = ::open(farEnd().toLocal8Bit().constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC);
  if (far < 0) return false;
  int waiting = 1;
  ioctl(far, FIONREAD, &waiting);
  ::close(far);
  return waiting == 0;
}
