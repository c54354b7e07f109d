#include "comm/commMessages.h"

#include <array>

#include "comm/commExceptions.h"
#include "support/log.h"

namespace {

constexpr TmessageText unspecifiedSerialError = {"An unspecified serial port error occurred.\rOperation Canceled.",
                                                 "Unspecified Serial Port Error", TmessageIcon::error};

/// By `TsocketError`. The text of the disconnect lacks its full stop on purpose.
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

TmessageText error(const char* text, const char* caption = "Error") {
  return {text, caption, TmessageIcon::error};
}

constexpr const char* invalidConfiguration = "Invalid communications configuration.\nOperation Canceled.";

const char* unknownText(TcommStep step) {
  return step == TcommStep::handshake ? "Unknown Exception on Handshake Command"
                                      : "Unknown Exception on Put Data Command";
}

}  // namespace

TcommFailure failureOfCaught(TcommStep step) try { throw; } catch (const TcommTimeoutException& exception) {
  return {error("Timeout Error.\nOperation Canceled."), TcommCause::timeOut, exception.reason()};
} catch (const TnoDeviceAttachedException& exception) {
  // misspelled on purpose
  return {error("No Deviced Attached.\nOperation Canceled."), TcommCause::noDevice, exception.reason()};
} catch (const TinitializationException& exception) {
  return {couldNotInitialize, TcommCause::notOpened, exception.reason()};
} catch (const TbadInitializationException&) {
  return error(couldNotInitialize.text, "Bad Initialization");
} catch (const TuninitializedCommModeException&) {
  return error(couldNotInitialize.text, "Uninitialized");
} catch (const TinvalidCommModuleException&) {
  return error(invalidConfiguration);
} catch (const TinvalidDataLengthException&) {
  return error(invalidConfiguration, "Bad Data Length");
} catch (const ToperationCancelledException&) {
  return {error("Operation Cancelled."), TcommCause::cancelled};
} catch (const std::exception&) {
  return error(unknownText(step), "VCL Exception");
} catch (...) {
  return error(unknownText(step));
}

TcommOutcome runCommStep(TcommStep step, const std::function<TcommOutcome()>& work) try { return work(); } catch (...) {
  logCaught(step == TcommStep::handshake ? "handshake" : "sending the records");
  return failureOfCaught(step);
}

TmessageText serialErrorMessage(ECommError::Tcode code) {
  const char* text = serialErrorText(code).message;
  return text ? TmessageText{text, "Serial Port Error", TmessageIcon::error} : unspecifiedSerialError;
}

TmessageText socketErrorMessage(TsocketError error) {
  return socketMessages.at(static_cast<std::size_t>(error));
}
