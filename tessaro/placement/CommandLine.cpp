#include "editor/sdk/documents.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/OwnBlock.h"
#include "tessaro/placement/Placement.h"

namespace {

void Send(const std::wstring& text, bool echo) {
    AcApDocManager* const documents = acDocManagerPtr();
    if (documents != nullptr)
        documents->sendStringToExecute(documents->curDocument(), text.c_str(), true, false, echo);
}

} // namespace

void SendToCommandLine(const std::wstring& text) {
    Send(text, false);
}

int OpenBlock(Block* block) {
    const Directory* const directory = currentDirectory;
    if (!IsBlockOf(directory, block))
        return 1;
    pendingOpenPath = DrawingPath(*directory, *block);
    Send(L"norvanetessaroopen ", true);
    return 1;
}
