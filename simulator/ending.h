#pragma once

/// Makes the program end in order, its event loop first, when it is told to end or interrupted. To be called once,
/// after the application was made and before any thread.
void endInOrder();
