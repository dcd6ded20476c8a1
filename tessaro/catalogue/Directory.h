#pragma once

#include "tessaro/catalogue/Block.h"
#include "tessaro/catalogue/ImageList.h"

#include <cstdint>
#include <list>
#include <memory>
#include <string>

/// What is remembered of a catalogue folder from session to session; a copy of it serves a thread that the folder
/// itself does not belong to, and the empty copy of a reload.
struct DirectorySettings {
    std::int32_t scaleMode = 0;    ///< 0 one to one, 1 "Drawing", 2 "Prompt", 3 a number, kept in the drawing's USERR4
    std::int32_t sortStyle = 1;    ///< 0 to 13; 1 is by name, 7 and above reverse
    std::int32_t rotationMode = 0; ///< 0 fixed angle, 1 "Prompt"
    double rotationAngle = 0.0;    ///< degrees as typed
    bool explode = false;
    bool multipleInsert = false;
    bool repeat = false;
    bool useCache = true;
    bool showInsPts = true;
    std::wstring path; ///< the folder, normally without a separator at its end; also its section in the ini file
    std::wstring description;
    std::int32_t topIndex = -1;      ///< top row of the block list when the Directory was left
    std::int32_t selectedIndex = -1; ///< selected row then; -1 for none
    std::int32_t viewMode = 3;
    bool useLargeImages = true;
    std::wstring schemeName = L"<None>";
    std::wstring cacheFile; ///< full path
};

/// One catalogue folder with all that the browser remembers about it. Owns its Blocks and its two image lists; nothing
/// points back from a Block. Threads: as for Block.
class Directory : public DirectorySettings {
public:
    Directory();
    ~Directory();
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    /// New lists with only the placeholder in slot 0; clears `imagesLoaded`. Where `useLargeImages` is clear and the
    /// old large list is kept, it gets one more placeholder at its end. Lists that hold only the placeholder share one
    /// copy.
    void ResetImageLists(bool destroyOld);

    /// Takes lists over; null keeps the present one.
    void SetImageLists(std::unique_ptr<ImageList> large, std::unique_ptr<ImageList> small);

    /// Writes or reads the stored record with all Blocks, whichever the archive does. Reading adds Blocks and, unless
    /// `demandLoadCache` is set, reads the pictures too. Throws what the archive throws. Main thread.
    void Serialize(CArchiveExt& archive);

    /// The list for writing: one that is shared with anybody is copied first.
    ImageList& LargeForWrite();
    ImageList& SmallForWrite();

    bool isInternal = false; ///< stands for the blocks of the current drawing
    bool localize = false;
    bool descriptionsPending = false;
    bool dirty = false;                     ///< Blocks or pictures changed since the cache file was written
    std::int32_t listIndex = 0;             ///< row in the directory list
    std::shared_ptr<ImageList> largeImages; ///< 130 by 96; never null
    std::shared_ptr<ImageList> smallImages; ///< 66 by 49; never null
    std::list<Block*> blocks;               ///< owned
    bool loaded = false;                    ///< LoadDir finished a full pass since the Directory was last invalidated
    bool imagesLoaded = false;              ///< the lists hold the Blocks' pictures, rather than the placeholder alone
};

constexpr int kLargeWidth = 130, kLargeHeight = 96;
constexpr int kSmallWidth = 66, kSmallHeight = 49;

/// The placeholder of that size: a rectangle over all and both diagonals.
Picture PlaceholderPicture(int width, int height);
