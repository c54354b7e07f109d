#pragma once

class QWidget;
class TequipRecTable;
class TiniFile;

/// The whole of an upload as the user sees it: lets the user choose the connection, greets the analyzer, and sends a
/// snapshot of all records while the progress dialog shows it. Every failure ends in one message box.
///
/// `owner` may be destroyed while any of this runs: the upload is then given up without a word, and when this function
/// returns no thread of it is left and nothing of the owner is touched any more. `hostSettings` is the host's INI file.
void uploadRecords(QWidget* owner, const TequipRecTable& records, const TiniFile& hostSettings);
