#pragma once

class BrowserWindow;
class Directory;

/// Who uses a Directory besides the catalogue: the worker that reads it, and the window whose rows hold its Blocks and
/// whose lists show its pictures. A Directory that leaves the catalogue is freed when the last of them has left it.

/// The worker takes a Directory up; called with `cs` held, so that none is retired between queue and reading.
void BeginReading(Directory* directory);
/// The worker has left it, by whatever way.
void EndReading();

/// Empties the block list. Main thread.
void EmptyBlockRows(BrowserWindow& window);
/// The rows of the block list hold Blocks of this Directory from now on. Main thread.
void TakeBlockRows(const Directory& directory);
/// Empties the block list where its rows hold Blocks of this Directory. Main thread, before a Block is deleted.
void ReleaseBlockRows(const Directory& directory);

/// Gives the block list the pictures of a Directory; null detaches. Main thread.
void AttachImages(BrowserWindow& window, const Directory* directory);
/// Detaches the pictures where they are of this Directory. Main thread, before ResetImageLists.
void ReleaseImages(const Directory& directory);
/// Attaches the pictures anew where the window shows those of this Directory: a list that is written for the first time
/// is another object. Main thread, around a write.
class AttachedImagesScope {
public:
    explicit AttachedImagesScope(const Directory& written);
    ~AttachedImagesScope();
    AttachedImagesScope(const AttachedImagesScope&) = delete;
    AttachedImagesScope& operator=(const AttachedImagesScope&) = delete;

private:
    const Directory& directory;
    const bool attached;
};

/// Frees a Directory that has left the catalogue, at once or when its last user has left it, and takes it out of the
/// queue; a worker that reads it is interrupted. Main thread.
void RetireDirectory(Directory* directory);
