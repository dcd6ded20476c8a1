#include "tessaro/mapping/engine/MappingRun.h"

#include "tessaro/mapping/engine/LayerRecord.h"
#include "tessaro/mapping/engine/ResolveMap.h"
#include "tessaro/mapping/engine/Walk.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

namespace {

constexpr int kLayer = 0, kLinetype = 1;
constexpr std::uint16_t kByLayerColour = 256;
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

/// A colour index as decimal text.
std::wstring ColorText(std::uint16_t index) {
    static const std::vector<std::wstring> texts = [] {
        std::vector<std::wstring> made;
        while (made.size() <= kByLayerColour)
            made.push_back(std::to_wstring(made.size()));
        return made;
    }();
    return index < texts.size() ? texts[index] : std::to_wstring(index);
}

std::wstring LayerColorText(const AcDbLayerTableRecord& layer) {
    return ColorText(layer.colorIndex());
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
        if (!Resolve(source, target))
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
    ForEachEntity(side, [&](const AcDbEntity& entity) {
        std::optional<std::wstring> key = KeyOf(entity, special, layers, true);
        if (!key)
            return false;
        std::wstring target;
        if (Resolve(*key, target)) {
            target = platform::ToUpper(target);
            keep.Add(target);
            entityMap[*key] = target;
            return true;
        }
        // An entity that stays where it is keeps its layer.
        const std::wstring layer = entity.layer();
        if (layer == kDefpoints)
            entityMap[layer] = layer;
        else if (layer != kLayerZero)
            keep.Add(layer);
        return true;
    });
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
    std::unordered_map<std::wstring, AcDbObjectId> destinations;
    for (const auto& [key, target] : entityMap)
        layers.getAt(target.c_str(), destinations[key]);
    ForEachEntity(side, [&](AcDbEntity& entity) {
        const std::optional<std::wstring> key = KeyOf(entity, special, layers, false);
        if (!key)
            return false;
        const auto found = destinations.find(*key);
        if (found == destinations.end())
            return true;
        entity.upgradeOpen();
        entity.setLayer(found->second, true, false);
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
    constexpr SpecialEntry entries[] = {{L"*TEXT OBJECTS", true, false},
                                        {L"*DIMENSION OBJECTS", false, true},
                                        {L"*TEXT AND DIMENSION OBJECTS", true, true}};
    for (const SpecialEntry& entry : entries)
        if (scheme.maps.Lookup(entry.word) != nullptr)
            return entry;
    return {};
}

std::optional<std::wstring> MappingRun::KeyOf(const AcDbEntity& entity, const SpecialEntry& special,
                                              const AcDbLayerTable& layers, bool keepsDefpoints) {
    if (special.AppliesTo(entity))
        return special.word;
    if (scheme.schemeType == kLayer)
        return LayerOf(entity, layers).name;
    const bool byLinetype = scheme.schemeType == kLinetype;
    std::wstring own = byLinetype ? entity.linetype() : ColorText(entity.colorIndex());
    if (own == (byLinetype ? L"BYBLOCK" : L"0"))
        return std::nullopt;
    if (own != (byLinetype ? L"BYLAYER" : L"256"))
        return own;
    const LayerOfEntity& layer = LayerOf(entity, layers);
    return keepsDefpoints && layer.name == kDefpoints ? layer.name : layer.value;
}

const MappingRun::LayerOfEntity& MappingRun::LayerOf(const AcDbEntity& entity, const AcDbLayerTable& layers) {
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

bool MappingRun::Resolve(std::wstring& name, std::wstring& target) {
    constexpr int kAsk = 1;
    // A question that was cancelled comes again for the same name.
    if (scheme.unknownMode == kAsk)
        return ResolveMap(scheme, name, target);
    const auto [place, isNew] = answers.try_emplace(name);
    Answer& answer = place->second;
    if (isNew) {
        answer.name = name;
        answer.mapped = ResolveMap(scheme, answer.name, answer.target);
    }
    name = answer.name;
    if (answer.mapped)
        target = answer.target;
    return answer.mapped;
}
