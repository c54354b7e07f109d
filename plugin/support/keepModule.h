#pragma once

/// Keeps the module that contains this code loaded until the process ends, even if the host unloads it. Called where a
/// thread of the module hangs in a driver and can never be joined: its code must stay.
void keepModule() noexcept;
