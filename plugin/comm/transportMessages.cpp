#include "comm/transportMessages.h"

#include <array>

namespace {

/// By the error's code.
constexpr std::array<const char*, 19> serialTexts = {"Bad Serial Port!",      "Bad Baud Rate!",
                                                     "Bad Port Number!",      "Bad Stop Bits!",
                                                     "Bad Parity!",           "Bad Byte Size!",
                                                     "Port Already Open!",    "Port Not Open!",
                                                     "Open Error!",           "Write Error!",
                                                     "Read Error!",           "Close Error!",
                                                     "Purge Comm Error!",     "Flush File Buffers Error!",
                                                     "Get Comm State Error!", "Set Comm State Error!",
                                                     "Setup Comm Error!",     "Set Comm Timeouts Error!",
                                                     "Clear Comm Error!"};

constexpr TmessageText unspecifiedSerialError = {"An unspecified serial port error occurred.\rOperation Canceled.",
                                                 "Unspecified Serial Port Error", TmessageIcon::error};

/// By `TsocketError`. The disconnect's lacks its full stop on purpose.
constexpr std::array<TmessageText, 6> socketMessages = {
    {{"An unspecified error occurred.\rOperation Canceled.", "Unspecified Ethernet Error", TmessageIcon::error},
     {"An error occurred while attempting to send.\rOperation Canceled.", "Ethernet Send Error", TmessageIcon::error},
     {"An error occurred while attempting to receive.\rOperation Canceled.", "Ethernet Receive Error",
      TmessageIcon::error},
     {"An error occurred while attempting to connect.\rOperation Canceled.", "Ethernet Connection Error",
      TmessageIcon::error},
     {"An unexpected disconnection has occurred.\rOperation Canceled", "Ethernet Disconnection Error",
      TmessageIcon::error},
     {"An error occurred while attempting to accept a connection.\rOperation Canceled.", "Ethernet Accept Error",
      TmessageIcon::error}}};

}  // namespace

TmessageText serialErrorMessage(ECommError::Tcode code) {
  const auto index = static_cast<std::size_t>(code);
  if (code < 0 || index >= serialTexts.size()) return unspecifiedSerialError;
  return {serialTexts.at(index), "Serial Port Error", TmessageIcon::error};
}

TmessageText socketErrorMessage(TsocketError error) {
  return socketMessages.at(static_cast<std::size_t>(error));
}
