#include "tessaro/mapping/engine/Engine.h"

#include "tessaro/mapping/engine/LayerRecord.h"
#include "tessaro/mapping/engine/ResolveMap.h"
#include "tessaro/mapping/engine/Walk.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

AcDbObjectId savedClayer;
bool clayerSaved = false;

namespace {

constexpr int kBlockName = 3;

/// The layer of that name in whatever case; null without one.
AcDbObjectId FindLayer(const AcDbLayerTable& layers, const std::wstring& wanted) {
    AcDbObjectId found;
    ForEachRecord(layers, [&](const AcDbSymbolTableRecord& record) {
        std::wstring name;
        record.getName(name);
        if (found.isNull() && platform::EqualNoCase(name, wanted))
            found = record.objectId();
    });
    return found;
}

void SetCurrentLayerByScheme(AcDbDatabase& drawing, const std::wstring& blockName, MapScheme& scheme) {
    std::wstring name = platform::ToUpper(blockName), target;
    if (!ResolveMap(scheme, name, target))
        return;
    AcDbLayerTable* opened = nullptr;
    if (drawing.getLayerTable(opened) != eOk)
        return;
    const Opened<AcDbLayerTable> layers(opened);
    if (const AcDbObjectId present = FindLayer(*layers, target); !present.isNull()) {
        if (drawing.setClayer(present) != eOk)
            platform::MessageBox(L"Could not set layer, 1");
        return;
    }
    layers->upgradeOpen();
    if (drawing.setClayer(AddLayer(*layers, target, ContinuousLinetype(drawing))) != eOk)
        platform::MessageBox(L"Could not set layer, 2");
}

} // namespace

void ApplyBlockNameScheme(const std::wstring& blockName, const std::wstring& schemeName) {
    MapScheme** const scheme = schemes.Lookup(schemeName);
    if (scheme == nullptr || (*scheme)->schemeType != kBlockName)
        return;
    AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase();
    if (drawing == nullptr)
        return;
    savedClayer = drawing->clayer();
    clayerSaved = true;
    SetCurrentLayerByScheme(*drawing, blockName, **scheme);
}

void RestoreCurrentLayer() {
    if (!clayerSaved)
        return;
    AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase();
    if (drawing == nullptr || drawing->setClayer(savedClayer) != eOk)
        platform::MessageBox(L"Could not set layer");
    clayerSaved = false;
}
