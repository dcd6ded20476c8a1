#pragma once

#include <string>

/// What the preferences say of the cache files. Main thread.

struct CacheOptions {
    bool demandLoad = false;  ///< pictures are read when their Directory is first shown
    bool onlyCurrent = false; ///< those of a Directory that is left go from memory
    bool delOnClose = false;  ///< all go from memory when the dialog closes
    bool operator==(const CacheOptions&) const = default;
};
CacheOptions GetCacheOptions();
/// `onlyCurrent` is carried out at once: all Directories but the current one are saved where `dirty` and lose their
/// pictures.
void SetCacheOptions(const CacheOptions& options);

/// Moves the files of all Directories and the main cache beside the new path of the latter, with new numbers in display
/// order. Where a move fails, the new name is taken all the same.
void MoveCacheFiles(const std::wstring& newPath);
