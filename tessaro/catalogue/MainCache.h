#pragma once

#include "tessaro/platform/Time.h"

/// The file at `cachePath` with the records of all Directories. Main thread.

struct MainCacheReading {
    bool opened = false;       ///< false: there is no cache
    bool failed = false;       ///< damaged: it was told and deleted; the Directories read by then are in `directories`
    platform::Time stamp = -1; ///< write time of the settings file when the cache was written
};
/// Adds the Directories of the file to `directories` and sets `columnWidths`.
MainCacheReading ReadMainCache();
/// A failure is told to the user.
void WriteMainCache();
