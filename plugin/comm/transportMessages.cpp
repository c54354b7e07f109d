#include "comm/transportMessages.h"

#include <array>

namespace {

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
  const char* text = serialErrorText(code).message;
  return text ? TmessageText{text, "Serial Port Error", TmessageIcon::error} : unspecifiedSerialError;
}

TmessageText socketErrorMessage(TsocketError error) {
  return socketMessages.at(static_cast<std::size_t>(error));
}
