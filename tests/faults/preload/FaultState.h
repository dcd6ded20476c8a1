#pragma once

#include "tests/faults/preload/FaultHooks.h"

/// What the wrapped functions ask before they do anything.
namespace faults {

enum class Fate { goesOn, fails, isHalved };

/// Whether the path lies below the folder; false while nothing is armed for file calls.
bool Watches(const char* path);
bool Watches(int descriptor);
/// The same for a path relative to an open folder.
bool Watches(int folder, const char* path);

/// Counts a call that is watched; errno is set where it fails.
Fate DecideTransfer(const char* call);
/// True where it fails.
bool Fails(const char* call);
bool AllocationFails();
/// Waits for a file to become free again end at once while file calls are watched.
bool CutsWaitsShort();

} // namespace faults
