#pragma once

#include <QString>
#include <optional>

class QWidget;
class TequipRecTable;
class TiniFile;

/// Runs the whole upload: lets the user choose the connection, exchanges the handshake with the analyzer, and sends a
/// snapshot of all records behind the progress dialog. Every failure ends in one message box. Returns the analyzer's
/// place ("192.168.1.20", "COM5", "USB") when it has acknowledged everything, otherwise nothing.
///
/// `owner` may be destroyed at any time: the upload then ends without a message, and nothing of the owner is touched
/// any more. Its thread has ended when this function returns, unless a driver hangs: then `TfrmWaiting` has it, or,
/// without an owner, `TdriverThread::end` has left it. `hostSettings` is the host's INI file. `warning` is what the
/// user should know of the list before it goes; empty for nothing.
std::optional<QString> uploadRecords(QWidget* owner, const TequipRecTable& records, const TiniFile& hostSettings,
                                     const QString& warning = {});
