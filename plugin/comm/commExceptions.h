#pragma once

#include <string>
#include <utility>

#include "support/errors.h"
#include "support/sourceLocation.h"

/// Base of the failures on the way to the analyzer. The channel is closed when one leaves the command layer, and each
/// has one message (comm/commMessages.h).
///
/// `reason` is what failed, on what, and the system's text for it ("open COM5: Permission denied (13)"); empty if there
/// is no more to say. `what` ends with it.
class TcommException : public TEqRecException {
 public:
  const std::string& reason() const { return reason_; }

 protected:
  TcommException(const char* text, std::string reason, const TsourceLocation& where)
      : TEqRecException(reason.empty() ? text : text + (": " + reason), "Communications/genComm",
                        static_cast<int>(where.line())),
        reason_(std::move(reason)) {}

 private:
  std::string reason_;
};

/// The analyzer did not answer in time.
class TcommTimeoutException : public TcommException {
 public:
  explicit TcommTimeoutException(std::string reason = {}, TsourceLocation where = TsourceLocation::current())
      : TcommException("Communications timeout", std::move(reason), where) {}
};

/// There is no analyzer on the USB, or it was unplugged.
class TnoDeviceAttachedException : public TcommException {
 public:
  explicit TnoDeviceAttachedException(std::string reason = {}, TsourceLocation where = TsourceLocation::current())
      : TcommException("No device attached", std::move(reason), where) {}
};

/// A connection could not be opened.
class TinitializationException : public TcommException {
 public:
  explicit TinitializationException(std::string reason = {}, TsourceLocation where = TsourceLocation::current())
      : TcommException("Initialization failed", std::move(reason), where) {}
};

/// A connection was opened with invalid settings.
class TbadInitializationException : public TcommException {
 public:
  explicit TbadInitializationException(std::string reason = {}, TsourceLocation where = TsourceLocation::current())
      : TcommException("Bad initialization", std::move(reason), where) {}
};

/// A channel is not open, or lacks its mode, resources or parameters.
class TuninitializedCommModeException : public TcommException {
 public:
  explicit TuninitializedCommModeException(std::string reason = {}, TsourceLocation where = TsourceLocation::current())
      : TcommException("Uninitialized communications mode", std::move(reason), where) {}
};

/// A command layer has no channel, or a block size of 0.
class TinvalidCommModuleException : public TcommException {
 public:
  explicit TinvalidCommModuleException(std::string reason = {}, TsourceLocation where = TsourceLocation::current())
      : TcommException("Invalid communications module", std::move(reason), where) {}
};

/// There is no buffer for a reply, or a reply of no blocks was asked for.
class TinvalidDataLengthException : public TcommException {
 public:
  explicit TinvalidDataLengthException(std::string reason = {}, TsourceLocation where = TsourceLocation::current())
      : TcommException("Invalid data length", std::move(reason), where) {}
};

/// The user has cancelled.
class ToperationCancelledException : public TcommException {
 public:
  explicit ToperationCancelledException(std::string reason = {}, TsourceLocation where = TsourceLocation::current())
      : TcommException("Operation cancelled", std::move(reason), where) {}
};
