#pragma once

/// Keeps those libraries in the process for good that came with the module and must not go with it.
void keepLibraries();
