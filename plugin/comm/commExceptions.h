#pragma once

#include "support/errors.h"

/// What goes wrong on the way to the analyzer. The channel is closed when one leaves the command layer, and each has
/// one message (comm/commMessages.h).
class TcommException : public TEqRecException {
 protected:
  TcommException(const char* text, int line);
};

/// The analyzer did not answer in time.
class TcommTimeoutException : public TcommException {
 public:
  explicit TcommTimeoutException(int line = __builtin_LINE());
};

/// No analyzer on the USB, or it was pulled off.
class TnoDeviceAttachedException : public TcommException {
 public:
  explicit TnoDeviceAttachedException(int line = __builtin_LINE());
};

/// A connection could not be opened.
class TinitializationException : public TcommException {
 public:
  explicit TinitializationException(int line = __builtin_LINE());
};

/// A connection was opened with settings that it does not know.
class TbadInitializationException : public TcommException {
 public:
  explicit TbadInitializationException(int line = __builtin_LINE());
};

/// A channel without mode, resources or parameters.
class TuninitializedCommModeException : public TcommException {
 public:
  explicit TuninitializedCommModeException(int line = __builtin_LINE());
};

/// A command layer without channel, or with blocks of no size.
class TinvalidCommModuleException : public TcommException {
 public:
  explicit TinvalidCommModuleException(int line = __builtin_LINE());
};

/// A reply without place to put it.
class TinvalidDataLengthException : public TcommException {
 public:
  explicit TinvalidDataLengthException(int line = __builtin_LINE());
};

/// The user has cancelled.
class ToperationCancelledException : public TcommException {
 public:
  explicit ToperationCancelledException(int line = __builtin_LINE());
};
