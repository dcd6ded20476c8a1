#pragma once

#include "tessaro/platform/Paths.h"
#include "tessaro/reading/InternalBlocks.h"

#include <list>
#include <string>
#include <unordered_map>
#include <vector>

class Directory;
class HopBudget;

/// Brings the Blocks of a Directory in line with the files of its folder, or with the block definitions of the current
/// drawing for an internal one: a first scan where it has no Blocks, a rescan where it is not `loaded`, else nothing.
class DirectoryScan {
public:
    explicit DirectoryScan(Directory& scanned) : directory(scanned) {}

    /// Lists the folder. False where it shows no drawing: all is to stay as it was. Runs to its end without an
    /// interruption. Worker.
    bool Read();
    /// Makes what the next call of Apply needs. Worker.
    void Prepare();
    /// Takes over what was found, as much as the budget allows. True when it is done. Main thread.
    bool Apply(const HopBudget& budget);

private:
    enum class Kind { none, first, rescan };

    void Begin();
    void ApplyFirst();
    bool Compare(const HopBudget& budget);
    std::size_t TakeFile(const std::wstring& name);
    void AddFound();

    Directory& directory;
    Kind kind = Kind::none;
    bool isInternal = false;
    std::wstring path;
    NewBlocks found; ///< of a first scan, or new at a rescan

    // Of a rescan.
    std::vector<platform::FoundFile> files;
    std::vector<bool> taken; ///< by a Block, one a file
    std::size_t takenCount = 0;
    std::size_t next = 0;                                      ///< Blocks mostly stand in the order of the files
    bool titlesNeeded = false, titlesMade = false;             ///< since the orders differ
    std::unordered_multimap<std::wstring, std::size_t> titles; ///< places in `files` that no Block has taken
    bool compared = false;
    bool placed = false;
    std::list<Block*>::iterator place; ///< only the worker changes the list
};
