#pragma once

/// Closes the console window that the system opens for this program alone where it is started by a double click. A
/// console that it was started from stays, for what the guided tour and the help print.
void leaveOwnConsole();
