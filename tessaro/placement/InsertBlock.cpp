#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/placement/InsertTexts.h"
#include "tessaro/placement/OwnBlock.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

#include <algorithm>

PlacementState placement;

namespace {

constexpr int kAskOnce = 1, kAlwaysUpdate = 2;

/// Sees to the definition of a catalogue Block and says what the first text names.
InsertSource PrepareDefinition(const Directory& directory, const Block& block) {
    InsertSource source{.name = block.name, .insertSpec = DrawingPath(directory, block)};
    const std::wstring file = source.insertSpec;
    placement.pendingBlockName = block.name;
    placement.definitionSafe = BlockExistsInDrawing();
    if (!placement.definitionSafe) {
        if (MapAndInsertDrawing(file, block.name, directory.schemeName))
            source.insertSpec = block.name;
    } else if (!ConfirmOverwrite(block.name) || MapAndInsertDrawing(file, block.name, directory.schemeName)) {
        source.insertSpec = block.name;
    } else {
        source.answerYes = true;
        source.insertSpec = block.name + L"=" + file;
    }
    ApplyBlockNameScheme(block.name, directory.schemeName);
    return source;
}

} // namespace

bool IsBlockOf(const Directory* directory, const Block* block) {
    return directory != nullptr &&
           std::find(directory->blocks.begin(), directory->blocks.end(), block) != directory->blocks.end();
}

bool CanBeAnswered(const std::wstring& name) {
    constexpr wchar_t firstPrintable = L' ', rubOut = 0x7F;
    const bool isEscape = name.starts_with(L"^C") || name.starts_with(L"^c");
    const auto isControl = [](wchar_t c) { return c < firstPrintable || c == rubOut; };
    if (!isEscape && std::ranges::none_of(name, isControl))
        return true;
    platform::MessageBox(L"This name cannot be given to the command line", L"Tessaro");
    return false;
}

std::wstring DrawingPath(const Directory& directory, const Block& block) {
    return platform::Join(directory.path, block.name + L".dwg");
}

bool ConfirmOverwrite(const std::wstring& name) {
    if (blockInsert == kAlwaysUpdate)
        return true;
    if (blockInsert == kAskOnce) {
        // The list holds the name, not the answer: a refused block is replaced the next time.
        if (std::find(askedBlocks.begin(), askedBlocks.end(), name) != askedBlocks.end())
            return true;
        askedBlocks.push_back(name);
    }
    const std::wstring question = platform::Format(L"%s already exists, do you wish to overwrite?", name.c_str());
    return platform::MessageBox(question, L"Tessaro", platform::MessageButtons::YesNo) == platform::MessageAnswer::Yes;
}

int InsertBlock(Block* block, bool allowRelaunch) {
    const Directory* const directory = currentDirectory;
    if (!IsBlockOf(directory, block) || !CanBeAnswered(block->name) ||
        !(directory->isInternal || CanBeAnswered(DrawingPath(*directory, *block))))
        return 1;
    InsertSource source = directory->isInternal ? InsertSource{.name = block->name, .insertSpec = block->name}
                                                : PrepareDefinition(*directory, *block);
    source.scale = PlacementScale(*directory);
    const InsertTexts texts = ComposeInsertTexts(*directory, source);
    placement.repeatCommand = texts.repeat;
    if (directory->explode)
        placement.explodePending = true;
    if (directory->multipleInsert)
        placement.multiplePending = true;
    if (directory->repeat && allowRelaunch)
        placement.relaunchPending = true;
    placement.placementActive = true;
    SendToCommandLine(texts.first);
    return 1;
}

int InsertBlockWithRelaunch(Block* block) {
    return InsertBlock(block, true);
}
