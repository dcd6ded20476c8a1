#pragma once

class BrowserWindow;
class Directory;

/// Whose pictures the block list shows: lists that it was given are taken from it before they go. Main thread.

/// Gives the block list the pictures of a Directory; null detaches.
void AttachImages(BrowserWindow& window, const Directory* directory);
/// Detaches the pictures where they are of this Directory.
void ReleaseImages(const Directory& directory);
/// Drops a Directory's pictures: only the placeholder is left.
void FreeImages(Directory& directory);
/// Attaches the pictures anew where the window shows those of this Directory: a list that is written for the first time
/// is another object. Around a write.
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
