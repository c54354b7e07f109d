#pragma once

/// Makes a request to end or an interrupt quit the event loop, so that the program shuts down in order. Call it once,
/// after creating the application and before any thread.
void endInOrder();
