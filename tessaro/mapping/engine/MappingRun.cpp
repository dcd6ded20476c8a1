#include "tessaro/mapping/engine/MappingRun.h"

#include "tessaro/mapping/engine/LayerRecord.h"
#include "tessaro/mapping/engine/ResolveMap.h"
#include "tessaro/mapping/engine/Walk.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

namespace {

constexpr int kLayer = 0, kLinetype = 1;
constexpr std::uint16_t kByBlockColour = 0, kByLayerColour = 256;
constexpr const wchar_t* kLayerZero = L"0";
constexpr const wchar_t* kDefpoints = L"DEFPOINTS";

bool IsStanding(const std::wstring& layer) {
    return layer == kLayerZero || layer == kDefpoints;
}

std::wstring LayerLinetypeName(const AcDbLayerTableRecord& layer) {
    AcDbLinetypeTableRecord* opened = nullptr;
    std::wstring name;
    if (acdbOpenObject(opened, layer.linetypeObjectId(), AcDb::kForRead) != eOk)
        return name;
    const Opened<AcDbLinetypeTableRecord> linetype(opened);
    linetype->getName(name);
    return name;
}

std::wstring LayerColorText(const AcDbLayerTableRecord& layer) {
    return std::to_wstring(layer.colorIndex());
}

} // namespace

bool MappingRun::MapLayerScheme() {
    AcDbLayerTable* table = nullptr;
    if (side.getLayerTable(table) != eOk)
        return false;
    const Opened<AcDbLayerTable> layers(table);
    ListLayers(*layers);
    for (const std::wstring& name : existing) {
        std::wstring source = name, target;
        if (!ResolveMap(scheme, source, target))
            target = source;
        target = platform::ToUpper(target);
        keep.Add(target);
        if (!IsStanding(source))
            erase.push_back(source);
        entityMap[source] = target;
    }
    CreateMissingLayers(*layers);
    ApplyMapToEntities(*layers);
    EraseReplacedLayers(*layers);
    return true;
}

bool MappingRun::MapLinetypeScheme() {
    return MapByEntity(FindSpecialEntry());
}

bool MappingRun::MapColorScheme() {
    return MapByEntity({});
}

bool MappingRun::MapByEntity(const SpecialEntry& special) {
    AcDbLayerTable* table = nullptr;
    if (side.getLayerTable(table) != eOk)
        return false;
    const Opened<AcDbLayerTable> layers(table);
    ListLayers(*layers);
    for (const std::wstring& name : existing)
        if (!IsStanding(name))
            erase.push_back(name);
    CollectByEntity(*layers, special);
    CreateMissingLayers(*layers);
    ApplyMapToEntities(*layers);
    EraseReplacedLayers(*layers);
    return true;
}

void MappingRun::ListLayers(AcDbLayerTable& layers) {
    ForEachRecord(layers, [this](const AcDbSymbolTableRecord& record) {
        std::wstring name;
        record.getName(name);
        // What is current can't be erased; "0" never has to be.
        if (name == kLayerZero)
            side.setClayer(record.objectId());
        existing.push_back(std::move(name));
    });
}

void MappingRun::CollectByEntity(const AcDbLayerTable& layers, const SpecialEntry& special) {
    std::unordered_map<const std::wstring*, Collected> seen;
    ForEachEntity(side, [&](const AcDbEntity& entity) {
        const std::wstring* const key = KeyOf(entity, special, layers, true);
        if (key == nullptr)
            return false;
        Collected& collected = seen[key];
        if (!collected.isFinal)
            collected = Collect(*key);
        if (!collected.isMapped)
            KeepInPlace(LayerOf(entity, layers));
        return true;
    });
}

MappingRun::Collected MappingRun::Collect(std::wstring key) {
    constexpr int kAsk = 1;
    std::wstring target;
    const bool isMapped = ResolveMap(scheme, key, target);
    if (isMapped) {
        target = platform::ToUpper(target);
        keep.Add(target);
        entityMap[key] = target;
    }
    // A question that was cancelled comes again for the same name; an entity that stays on DEFPOINTS enters that key.
    return {isMapped, scheme.unknownMode != kAsk && key != kDefpoints};
}

void MappingRun::KeepInPlace(LayerOfEntity& layer) {
    if (layer.name == kDefpoints) {
        entityMap[layer.name] = layer.name;
    } else if (!layer.isKept && layer.name != kLayerZero) {
        keep.Add(layer.name);
        layer.isKept = true;
    }
}

void MappingRun::CreateMissingLayers(AcDbLayerTable& layers) {
    const AcDbObjectId continuous = ContinuousLinetype(side);
    const std::unordered_set<std::wstring> present(existing.begin(), existing.end());
    layers.upgradeOpen();
    for (const std::wstring& name : keep.Names())
        if (!present.contains(name))
            AddLayer(layers, name, continuous);
    layers.downgradeOpen();
}

void MappingRun::ApplyMapToEntities(const AcDbLayerTable& layers) {
    const SpecialEntry special = FindSpecialEntry();
    /// Where a key leads; no target keeps an entity as it is, a layer that could not be made keeps it in its place.
    struct Destination {
        bool isTarget = false;
        AcDbObjectId layer;
    };
    std::unordered_map<const std::wstring*, Destination> destinations;
    ForEachEntity(side, [&](AcDbEntity& entity) {
        const std::wstring* const key = KeyOf(entity, special, layers, false);
        if (key == nullptr)
            return false;
        const auto [place, isNew] = destinations.try_emplace(key);
        Destination& destination = place->second;
        if (const auto found = isNew ? entityMap.find(*key) : entityMap.end(); found != entityMap.end()) {
            destination.isTarget = true;
            layers.getAt(found->second.c_str(), destination.layer);
        }
        if (!destination.isTarget)
            return true;
        entity.upgradeOpen();
        entity.setLayer(destination.layer, true, false);
        if (scheme.defaultToByLayer) {
            entity.setColorIndex(kByLayerColour, true);
            entity.setLinetype(L"BYLAYER", true);
        }
        return true;
    });
}

void MappingRun::EraseReplacedLayers(const AcDbLayerTable& layers) {
    std::vector<std::wstring> names;
    names.swap(erase);
    for (const std::wstring& name : names) {
        AcDbSymbolTableRecord* opened = nullptr;
        if (keep.Has(name) || layers.getAt(name.c_str(), opened, AcDb::kForWrite) != eOk)
            continue;
        const Opened<AcDbSymbolTableRecord> layer(opened);
        if (layer->erase(true) != eOk)
            platform::MessageBox(L"Could not erase layer " + name);
    }
}

bool MappingRun::SpecialEntry::AppliesTo(const AcDbEntity& entity) const {
    return (texts && entity.isA()->isDerivedFrom(AcDbText::desc())) ||
           (dimensions && entity.isA()->isDerivedFrom(AcDbDimension::desc()));
}

MappingRun::SpecialEntry MappingRun::FindSpecialEntry() const {
    const SpecialEntry entries[] = {{L"*TEXT OBJECTS", true, false},
                                    {L"*DIMENSION OBJECTS", false, true},
                                    {L"*TEXT AND DIMENSION OBJECTS", true, true}};
    for (const SpecialEntry& entry : entries)
        if (scheme.maps.Lookup(entry.word) != nullptr)
            return entry;
    return {};
}

const std::wstring* MappingRun::KeyOf(const AcDbEntity& entity, const SpecialEntry& special,
                                      const AcDbLayerTable& layers, bool keepsDefpoints) {
    if (special.AppliesTo(entity))
        return &special.word;
    if (scheme.schemeType == kLayer)
        return &LayerOf(entity, layers).name;
    if (scheme.schemeType == kLinetype) {
        std::wstring own = entity.linetype();
        if (own == L"BYBLOCK")
            return nullptr;
        if (own != L"BYLAYER")
            return &*ownLinetypes.insert(std::move(own)).first;
    } else if (const std::uint16_t own = entity.colorIndex(); own != kByLayerColour) {
        const auto [place, isNew] = ownColours.try_emplace(own);
        if (isNew)
            place->second = std::to_wstring(own);
        return own == kByBlockColour ? nullptr : &place->second;
    }
    const LayerOfEntity& layer = LayerOf(entity, layers);
    return keepsDefpoints && layer.name == kDefpoints ? &layer.name : &layer.value;
}

MappingRun::LayerOfEntity& MappingRun::LayerOf(const AcDbEntity& entity, const AcDbLayerTable& layers) {
    const auto [place, isNew] = layersOfEntities.try_emplace(entity.layerId().handle);
    LayerOfEntity& layer = place->second;
    if (!isNew)
        return layer;
    layer.name = entity.layer();
    AcDbSymbolTableRecord* opened = nullptr;
    if (scheme.schemeType == kLayer || layers.getAt(layer.name.c_str(), opened, AcDb::kForRead) != eOk)
        return layer;
    const Opened<AcDbSymbolTableRecord> record(opened);
    if (const auto* const found = dynamic_cast<const AcDbLayerTableRecord*>(opened))
        layer.value = scheme.schemeType == kLinetype ? LayerLinetypeName(*found) : LayerColorText(*found);
    return layer;
}
