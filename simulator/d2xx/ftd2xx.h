#pragma once

#include <cstdint>

/// A stand-in for the USB driver's library, for tests and demonstrations: each open device is a connection to
/// qt484-analyzer, on the port of this machine that the environment variable QT484_USB names (60602 where it is not
/// set).
///
/// Functions may be called from any thread, for one handle from one thread at a time. D2XX_CALL is the calling
/// convention, which the build sets where the platform has more than one.

using FT_HANDLE = void*;
using FT_STATUS = std::uint32_t;

constexpr FT_STATUS FT_OK = 0;
constexpr FT_STATUS FT_INVALID_HANDLE = 1;
constexpr FT_STATUS FT_DEVICE_NOT_FOUND = 2;
constexpr FT_STATUS FT_DEVICE_NOT_OPENED = 3;
constexpr FT_STATUS FT_IO_ERROR = 4;

constexpr std::uint32_t FT_OPEN_BY_DESCRIPTION = 2;

extern "C" {

/// Opens the device of this description, a zero-terminated text: the one that the environment variable QT484_USB_NAME
/// names, "Velmora Systems QT484 Plus" where it is not set. FT_DEVICE_NOT_FOUND for any other and where no analyzer
/// listens; FT_DEVICE_NOT_OPENED while this process has the device open already.
FT_STATUS D2XX_CALL FT_OpenEx(const void* description, std::uint32_t flags, FT_HANDLE* handle);

/// FT_INVALID_HANDLE for a handle that is not open, FT_IO_ERROR where the link had dropped; the handle is closed then,
/// too.
FT_STATUS D2XX_CALL FT_Close(FT_HANDLE handle);

/// Waits for the bytes, at most 300 ms, and reads those that came.
FT_STATUS D2XX_CALL FT_Read(FT_HANDLE handle, void* buffer, std::uint32_t count, std::uint32_t* read);

/// `written` is less than `count` where the analyzer was told to play such a fault.
FT_STATUS D2XX_CALL FT_Write(FT_HANDLE handle, const void* buffer, std::uint32_t count, std::uint32_t* written);

/// How many bytes wait to be read. FT_IO_ERROR once the link has dropped and all that came before was read.
FT_STATUS D2XX_CALL FT_GetQueueStatus(FT_HANDLE handle, std::uint32_t* waiting);
}
