#include "upload/uploadAdvice.h"

#include <string_view>
#include <variant>

#include "comm/genComm.h"

namespace {

using Tstep = TuploadReach::Tstep;

/// "Permission denied (13)" of "open COM5: Permission denied (13)".
std::string systemText(const std::string& reason) {
  constexpr std::string_view separator = ": ";
  const std::size_t place = reason.find(separator);
  return place == std::string::npos ? reason : reason.substr(place + separator.size());
}

std::string saidBySystem(const std::string& reason) {
  return reason.empty() ? std::string() : " The system says: " + systemText(reason) + ".";
}

std::string timeText(unsigned milliseconds) {
  return milliseconds % 1000 == 0 ? std::to_string(milliseconds / 1000) + " seconds"
                                  : std::to_string(milliseconds) + " ms";
}

/// "the analyzer on COM5"
std::string analyzerOn(const TuploadTransport& transport) {
  if (transport.mode == TcommMode::ethernet) return "the analyzer at " + placeOf(transport);
  return "the analyzer on " + std::string(transport.mode == TcommMode::usb ? "the USB" : placeOf(transport));
}

std::string portText(const TuploadTransport& transport) {
  return "port " + std::to_string(std::get<TethernetParameters>(transport.parameters).port);
}

std::string onTimeOut(const TuploadTransport& transport, const TuploadReach& reach) {
  const std::string late = " did not answer within " + timeText(reach.timeOut) + ".";
  const bool isEthernet = transport.mode == TcommMode::ethernet;
  if (isEthernet && reach.step == Tstep::opening) {
    return placeOf(transport) + late + " Check the address, and that the analyzer is on. It is called on " +
           portText(transport) + ".";
  }
  if (isEthernet && reach.step == Tstep::greeting) {
    return placeOf(transport) + " accepted the connection, but" + late +
           " Check that this is the analyzer's address, and that the analyzer shows no message of its own.";
  }
  std::string analyzer = analyzerOn(transport);
  analyzer.front() = 'T';
  return analyzer + late + " Check the cable, and that the analyzer is on and shows no message of its own.";
}

std::string onNotOpened(const TuploadTransport& transport, const std::string& reason) {
  if (transport.mode == TcommMode::ethernet) {
    return placeOf(transport) + " could not be reached on " + portText(transport) + "." + saidBySystem(reason) +
           " Check that this is the analyzer's address, and that no other program is connected to it.";
  }
  return placeOf(transport) + " could not be opened." + saidBySystem(reason) +
         " Close other programs that use it, or choose another port.";
}

std::string onNoDevice(const std::string& reason, Tstep step) {
  if (reason.ends_with(noUsbDriver)) {
    return "The USB driver (D2XX) is not installed on this computer. Install the driver that came with the analyzer.";
  }
  if (step != Tstep::opening) return "The analyzer was unplugged or switched off.";
  return "The USB driver found no analyzer. Check the cable, and that the analyzer is on. If it is, close other "
         "programs that use it.";
}

std::string whatHappened(const TcommFailure& failure, const TuploadTransport& transport, const TuploadReach& reach) {
  switch (failure.cause) {
    case TcommCause::timeOut:
      return onTimeOut(transport, reach);
    case TcommCause::notOpened:
      return onNotOpened(transport, failure.reason);
    case TcommCause::noDevice:
      return onNoDevice(failure.reason, reach.step);
    case TcommCause::lost:
      return "The connection to " + analyzerOn(transport) + " was lost." + saidBySystem(failure.reason) +
             " Check the cable, and that the analyzer is on.";
    case TcommCause::wrongAnswer:
      return "The answer of " + analyzerOn(transport) +
             " is not the one that was due. Switch it off and on, and try again.";
    case TcommCause::cancelled:
    case TcommCause::other:
      break;
  }
  return {};
}

std::string whatIsHeld(const TuploadReach& reach) {
  const std::string all = std::to_string(reach.blocks) + " blocks had been acknowledged.";
  return (reach.acknowledged == 0 ? "None of the " : std::to_string(reach.acknowledged) + " of ") + all +
         " The analyzer may now hold part of the list. Upload again before you use it.";
}

}  // namespace

std::string adviceOn(const TcommFailure& failure, const TuploadTransport& transport, const TuploadReach& reach) {
  std::string advice = whatHappened(failure, transport, reach);
  if (reach.step != Tstep::sending) return advice;
  if (!advice.empty()) advice += "\n\n";
  return advice + whatIsHeld(reach);
}

std::string placeOf(const TuploadTransport& transport) {
  if (const auto* ethernet = std::get_if<TethernetParameters>(&transport.parameters)) return ethernet->address();
  if (const auto* serial = std::get_if<TserialParameters>(&transport.parameters)) return serial->target();
  return "USB";
}
