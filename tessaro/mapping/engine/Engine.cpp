#include "tessaro/mapping/engine/Engine.h"

#include "tessaro/mapping/engine/MappingRun.h"
#include "tessaro/platform/Paths.h"

namespace {

/// A scheme by block name has no pass.
bool RunPass(AcDbDatabase& side, MapScheme& scheme) {
    MappingRun run(side, scheme);
    switch (scheme.schemeType) {
    case 0:
        return run.MapLayerScheme();
    case 1:
        return run.MapLinetypeScheme();
    case 2:
        return run.MapColorScheme();
    default:
        return true;
    }
}

} // namespace

bool MapAndInsertDrawing(const std::wstring& file, const std::wstring& blockName, const std::wstring& schemeName) {
    AcDbDatabase side(false, false);
    MapScheme** const scheme = schemes.Lookup(schemeName);
    if (scheme == nullptr)
        return false;
    // A drawing may stand in its folder as DOOR.DWG.
    const std::wstring found = platform::FindPath(file).value_or(file);
    if (side.readDwgFile(found.c_str(), 1, false, nullptr) != eOk || !RunPass(side, **scheme))
        return false;
    AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectId definition;
    return drawing != nullptr && drawing->insert(definition, blockName.c_str(), &side, true) == eOk;
}
