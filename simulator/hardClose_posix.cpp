#include <sys/socket.h>

#include "simulator/hardClose.h"

void closeHard(qintptr socket) {
  const linger atOnce{1, 0};
  setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}
