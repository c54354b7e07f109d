#pragma once

/// Closes the console window that the system opens when a double click starts this program. A console from which the
/// program was started stays, for the output of the guided tour and of --help.
void leaveOwnConsole();
