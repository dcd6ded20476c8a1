#pragma once

class BrowserWindow;
class Directory;

/// Who uses a Directory besides the catalogue: the worker that reads it, and the window whose rows hold its Blocks. A
/// Directory that leaves the catalogue is freed when the last of them has left it.

/// The worker takes a Directory up; called with `cs` held, so that none is retired between queue and reading.
void BeginReading(Directory* directory);
/// The worker has left it, by whatever way.
void EndReading();
/// Calls EndReading at its end.
struct ReadingScope {
    ReadingScope() = default;
    ~ReadingScope() { EndReading(); }
    ReadingScope(const ReadingScope&) = delete;
    ReadingScope& operator=(const ReadingScope&) = delete;
};
/// The same for a thread that comes after the worker: takes a Directory up, unless it has left the catalogue, so that
/// it isn't freed before EndReading. Any thread.
bool BeginReadingIfListed(Directory* directory);

/// The worker is about to write the Directory's cache file, which it ends by EndSaving or EndReading. False where the
/// Directory has left the catalogue: its file, or that of its successor, is not to be written any more. Main thread.
bool BeginSaving(const Directory* directory);
void EndSaving();
/// Whether another thread may be writing the Directory's cache file. Main thread.
bool MayBeSaved(const Directory* directory);

/// Keeps a Directory in the catalogue while it lives: a delete that comes meanwhile waits. For what works on it and
/// serves events, such as a dialog, in between. Null keeps nothing. Main thread.
class HeldDirectory {
public:
    explicit HeldDirectory(const Directory* directory);
    ~HeldDirectory();
    HeldDirectory(const HeldDirectory&) = delete;
    HeldDirectory& operator=(const HeldDirectory&) = delete;

private:
    const Directory* const held;
};
bool IsHeld(const Directory* directory);

/// Empties the block list. Main thread.
void EmptyBlockRows(BrowserWindow& window);
/// The rows of the block list hold Blocks of this Directory from now on. Main thread.
void TakeBlockRows(const Directory& directory);
/// Empties the block list where its rows hold Blocks of this Directory. Main thread, before a Block is deleted.
void ReleaseBlockRows(const Directory& directory);

/// Frees a Directory that has left the catalogue, at once or when its last user has left it, and takes it out of the
/// queue; a worker that reads it is interrupted. Main thread.
void RetireDirectory(Directory* directory);
