#include "editor/sdk/editor.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/mapping/engine/ResBuf.h"
#include "tessaro/placement/InsertTexts.h"
#include "tessaro/placement/OwnBlock.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

int XrefBlock(Block* block) {
    const Directory* const directory = currentDirectory;
    if (!IsBlockOf(directory, block) || !CanBeAnswered(DrawingPath(*directory, *block)))
        return 1;
    const std::wstring path = DrawingPath(*directory, *block);
    ApplyBlockNameScheme(block->name, directory->schemeName);

    ResBuf list;
    list.AppendString(L"._-xref");
    list.AppendString(overlayXRef != 0 ? L"_overlay" : L"_attach");
    list.AppendString(path);
    std::wstring repeat = (overlayXRef != 0 ? L"._-xref _o " : L"._-xref _a ") + path + L"\n";
    const double scale = PlacementScale(*directory);
    switch (directory->scaleMode) {
    case 0:
        list.AppendString(L"_scale");
        list.AppendString(L"1");
        repeat += L" _scale 1";
        break;
    case 1:
        list.AppendString(L"_scale");
        list.AppendVariable(L"dimscale");
        repeat += platform::Format(L" _scale %f", scale);
        break;
    case 3:
        list.AppendString(L"_scale");
        list.AppendReal(scale);
        repeat += platform::Format(L" _scale %f", scale);
        break;
    default:
        break;
    }
    if (directory->rotationMode == 0) {
        list.AppendString(L"_rotate");
        list.AppendReal(directory->rotationAngle);
        repeat += platform::Format(L" _rotate %f", directory->rotationAngle);
    }
    list.AppendString(L"\\");
    list.AppendEnd();
    placement.repeatCommand = repeat + L"\n";
    if (directory->repeat)
        placement.relaunchPending = true;
    placement.placementActive = true;
    if (acedCmdS(list.Head()) != 0)
        platform::MessageBox(L"This file cannot be xrefed", L"Tessaro");
    RestoreCurrentLayer();
    return 1;
}
