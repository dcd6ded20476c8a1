#pragma once

#include <string>

struct Block;

/// A placement in progress. Main thread.
struct PlacementState {
    bool placementActive = false;
    bool explodePending = false;
    bool multiplePending = false;
    bool relaunchPending = false;
    bool definitionSafe = false;
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
/// Prepares the definition and queues the insertion of a Block of `currentDirectory`; gives 1.
int InsertBlock(Block* block, bool allowRelaunch);
int InsertBlockWithRelaunch(Block* block);
bool BlockExistsInDrawing();
void EraseBlockDefinition();
bool ConfirmOverwrite(const std::wstring& name);
