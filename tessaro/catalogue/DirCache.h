#pragma once

class Directory;

/// A Directory's own cache file, which holds its pictures. Both operations may be called from any thread: what they
/// take and give of the Directory goes through the main thread, the file is read or written by the caller's. Failures
/// are told to the user here.

/// Writes the file; the caller clears `dirty`.
void SaveDirCache(Directory& directory);
/// Reads the file and sets `imagesLoaded`, also where there is none or it was damaged, in which case it is deleted.
/// Gives the block list the new pictures where the Directory is the current one.
void LoadDirCache(Directory& directory);

/// Saves where `dirty`, which stays set, and drops the pictures. Any thread.
void SaveAndFreeImages(Directory& directory);
/// Saves where `dirty`, which is cleared. Any thread.
void SaveIfDirty(Directory& directory);
