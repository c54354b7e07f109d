#include <winsock2.h>

#include "simulator/hardClose.h"

void closeHard(qintptr socket) {
  const linger atOnce{1, 0};
  setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
}
