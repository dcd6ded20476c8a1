#include "editor/sdk/editor.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Text.h"

int FindAndInsertBlock(const std::wstring& name) {
    const std::wstring wanted = platform::ToLower(name);
    const std::wstring pattern = L"*" + wanted + L"*";
    for (Directory* directory : directories)
        for (Block* block : directory->blocks) {
            const std::wstring found = platform::ToLower(block->name);
            if (acutWcMatch(found.c_str(), pattern.c_str()) != RTNORM)
                continue;
            currentDirectory = directory;
            if (found == wanted)
                return InsertBlock(block, false);
            directory->topIndex = directory->selectedIndex = block->listIndex;
            return 0;
        }
    return 0;
}
