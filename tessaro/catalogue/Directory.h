#pragma once

#include "tessaro/catalogue/Block.h"
#include "tessaro/catalogue/ImageList.h"

#include <cstdint>
#include <list>
#include <memory>
#include <string>

/// One catalogue folder with all that the browser remembers about it. Owns its Blocks and its two image lists; nothing
/// points back from a Block. Threads: as for Block.
class Directory {
public:
    Directory();
    ~Directory();
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    /// New lists with only the placeholder in slot 0; clears `imagesLoaded`. The placeholder is added to the large list
    /// even where `useLargeImages` is clear. Lists that hold only the placeholder share one copy.
    void ResetImageLists(bool destroyOld);

    bool isInternal = false;    ///< stands for the blocks of the current drawing
    std::int32_t scaleMode = 0; ///< 0 one to one, 1 "Drawing", 2 "Prompt", 3 a number, kept in the drawing's USERR4
    std::int32_t sortStyle = 1;
    std::int32_t rotationMode = 0; ///< 0 fixed angle, 1 "Prompt"
    double rotationAngle = 0.0;    ///< degrees as typed
    bool explode = false;
    bool multipleInsert = false;
    bool repeat = false;
    bool localize = false;
    bool useCache = true;
    bool showInsPts = true;
    bool descriptionsPending = false;
    bool dirty = false;
    std::wstring path;
    std::wstring description;
    std::int32_t topIndex = -1;
    std::int32_t selectedIndex = -1;
    std::int32_t viewMode = 3;
    std::int32_t listIndex = 0; ///< row in the directory list
    bool useLargeImages = true;
    std::shared_ptr<ImageList> largeImages; ///< 130 by 96; shared while it holds the placeholder only
    std::shared_ptr<ImageList> smallImages; ///< 66 by 49
    std::list<Block*> blocks;               ///< owned
    bool loaded = false;
    std::wstring schemeName = L"<None>";
    std::wstring cacheFile;
    bool imagesLoaded = false;

    /// The list for writing: a shared placeholder list is copied first.
    ImageList& LargeForWrite();
    ImageList& SmallForWrite();
};

constexpr int kLargeWidth = 130, kLargeHeight = 96;
constexpr int kSmallWidth = 66, kSmallHeight = 49;

/// The placeholder of that size: a rectangle over all and both diagonals.
Picture PlaceholderPicture(int width, int height);
