#pragma once

#include <cstdint>

/// A stand-in for the USB driver's library, for tests and demonstrations. Each open device is a connection to
/// qt484-analyzer on this machine, on the port in the environment variable QT484_USB (60602 if it is not set).
///
/// QT484_USB_HANG names a function, and counts its calls for one device ("FT_Write@2"; without a number, 1): that call
/// returns only when the link has dropped, as with a driver that waits for a device until its cable is unplugged.
///
/// Functions may be called from any thread, but for one handle from one thread at a time. D2XX_CALL is the calling
/// convention; the build sets it for platforms that have more than one.

using FT_HANDLE = void*;
using FT_STATUS = std::uint32_t;

constexpr FT_STATUS FT_OK = 0;
constexpr FT_STATUS FT_INVALID_HANDLE = 1;
constexpr FT_STATUS FT_DEVICE_NOT_FOUND = 2;
constexpr FT_STATUS FT_DEVICE_NOT_OPENED = 3;
constexpr FT_STATUS FT_IO_ERROR = 4;

constexpr std::uint32_t FT_OPEN_BY_DESCRIPTION = 2;

extern "C" {

/// Opens the device with this description, a zero-terminated text. The device's description is in the environment
/// variable QT484_USB_NAME ("Velmora Systems QT484 Plus" if it is not set). FT_DEVICE_NOT_FOUND for any other
/// description and if no analyzer listens; FT_DEVICE_NOT_OPENED while this process already has the device open.
FT_STATUS D2XX_CALL FT_OpenEx(const void* description, std::uint32_t flags, FT_HANDLE* handle);

/// FT_INVALID_HANDLE for a handle that is not open; FT_IO_ERROR if the link had dropped, but the handle is closed
/// anyway.
FT_STATUS D2XX_CALL FT_Close(FT_HANDLE handle);

/// Waits for the read time-out (300 ms if none was set) for `count` bytes and reads those that arrived.
FT_STATUS D2XX_CALL FT_Read(FT_HANDLE handle, void* buffer, std::uint32_t count, std::uint32_t* read);

/// `written` is less than `count` if the analyzer plays such a fault.
FT_STATUS D2XX_CALL FT_Write(FT_HANDLE handle, const void* buffer, std::uint32_t count, std::uint32_t* written);

/// Limits reads and writes, in milliseconds.
FT_STATUS D2XX_CALL FT_SetTimeouts(FT_HANDLE handle, std::uint32_t read, std::uint32_t write);

constexpr std::uint32_t FT_PURGE_RX = 1;

/// Drops the bytes that wait to be read, if the mask names them. Bytes to be written never wait here.
FT_STATUS D2XX_CALL FT_Purge(FT_HANDLE handle, std::uint32_t mask);

/// The number of bytes waiting. FT_IO_ERROR once the link has dropped and everything was read.
FT_STATUS D2XX_CALL FT_GetQueueStatus(FT_HANDLE handle, std::uint32_t* waiting);
}
