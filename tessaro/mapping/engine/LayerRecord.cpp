#include "tessaro/mapping/engine/LayerRecord.h"

#include "tessaro/mapping/engine/Walk.h"

#include <memory>

AcDbObjectId ContinuousLinetype(AcDbDatabase& database) {
    AcDbObjectId id;
    AcDbLinetypeTable* opened = nullptr;
    if (database.getLinetypeTable(opened) != eOk)
        return id;
    const Opened<AcDbLinetypeTable> linetypes(opened);
    linetypes->getAt(L"CONTINUOUS", id);
    return id;
}

AcDbObjectId AddLayer(AcDbLayerTable& layers, const std::wstring& name, AcDbObjectId linetype) {
    constexpr std::uint16_t kForeground = 7;
    auto record = std::make_unique<AcDbLayerTableRecord>();
    record->setName(name.c_str());
    record->setColorIndex(kForeground);
    record->setLinetypeObjectId(linetype);
    AcDbObjectId id;
    if (layers.add(id, record.get()) == eOk)
        record.release()->close(); // the table's from here on
    return id;
}
