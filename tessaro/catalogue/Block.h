#pragma once

#include "tessaro/platform/Time.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

class CArchiveExt;

/// What a Block keeps of a file's status.
struct BlockStatus {
    std::uint64_t m_size = 0;
    platform::Time m_ctime = 0;
    platform::Time m_mtime = 0;
    bool operator==(const BlockStatus&) const = default;
};

/// A mark that all Blocks lose at once: each opening of the window takes it from 100,000 of them, and a walk over their
/// memory would be noticed. ClearAll belongs to the main thread; a mark is read and set as its Block is.
class CheckedMark {
public:
    CheckedMark& operator=(bool set) {
        round = set ? present.load(std::memory_order_relaxed) : 0;
        return *this;
    }
    operator bool() const { return round == present.load(std::memory_order_relaxed); }
    static void ClearAll() { present.fetch_add(1, std::memory_order_relaxed); }

private:
    static inline std::atomic<std::uint32_t> present{1};
    std::uint32_t round = 0; ///< in which it was set; 0 for never
};

/// One catalogue entry: a drawing file of a catalogue folder, or a block definition of the current drawing.
///
/// A Block holds no picture, only its slot in the two image lists of its Directory. Threads: belongs to the main thread
/// while a dialog is open; the worker works on copies and applies what it found there.
struct Block {
    CheckedMark checked;             ///< compared with its file, or examined, since the last ValidateDirs
    bool cached = false;             ///< has a stored record
    bool descriptionPending = false; ///< its description is to be written into the drawing
    std::wstring name;               ///< file title without extension
    std::wstring description;
    BlockStatus status;                                ///< the file as seen now
    BlockStatus cachedStatus{~std::uint64_t{0}, 0, 0}; ///< the file when it was last examined
    platform::Time created = 0;
    platform::Time modified = 0;
    std::int32_t imageIndex = 0; ///< slot in both lists; 0 is the placeholder
    std::int32_t listIndex = 0;  ///< row in the block list, while the list shows this Directory
    std::int32_t fileType = 0;   ///< index into FileTypeNames

    /// Writes or reads the stored record, whichever the archive does. Throws what the archive throws.
    void Serialize(CArchiveExt& archive);
};

constexpr int kFileTypeCount = 22;
extern const std::array<std::wstring, kFileTypeCount> FileTypeNames;
/// The name of a type; an index out of range (from a damaged cache) gives the name of 0.
const std::wstring& FileTypeName(std::int32_t fileType);
