#pragma once

#include <string>

struct Block;
class Directory;

/// A placement in progress. Main thread, as everything here.
struct PlacementState {
    bool placementActive = false; ///< while false the reactor ignores every command
    bool explodePending = false;
    bool multiplePending = false;
    bool relaunchPending = false;
    bool definitionSafe = false; ///< a cancel must leave the definition alone
    std::wstring pendingBlockName;
    std::wstring repeatCommand;
    bool amCatalogPending = false;
    bool amCatalogDashPending = false;
    std::wstring amCatalogResume;
    unsigned char savedCmdDia = 0;
    unsigned char savedFileDia = 0;
};
extern PlacementState placement;

/// Queues text on the current document's command line.
void SendToCommandLine(const std::wstring& text);

/// Prepares the definition and queues the insertion of a Block of `currentDirectory`; gives 1. A Block that is not of
/// that directory (which may be gone) is not placed.
int InsertBlock(Block* block, bool allowRelaunch);
int InsertBlockWithRelaunch(Block* block);
/// Nonzero where a block of exactly that name was placed. Otherwise the first block that the name matches, if any, is
/// what the browser opens on.
int FindAndInsertBlock(const std::wstring& name);
/// Attaches the drawing of a Block of `currentDirectory` as an external reference; gives 1.
int XrefBlock(Block* block);
/// Has the drawing of a Block of `currentDirectory` opened by NORVANETESSAROOPEN; gives 1.
int OpenBlock(Block* block);

bool BlockExistsInDrawing();
void EraseBlockDefinition();
/// Whether the definition of that name is to be replaced; asks as the setting `blockInsert` says.
bool ConfirmOverwrite(const std::wstring& name);

/// Full path of the drawing of a Block.
std::wstring DrawingPath(const Directory& directory, const Block& block);
