#pragma once

/// Keeps libraries loaded that came with the module but must not be unloaded with it.
void keepLibraries();
