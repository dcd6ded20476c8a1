#pragma once

#include "tessaro/mapping/MapScheme.h"

#include "editor/sdk/db.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Names in the order they came, each once.
class NameList {
public:
    void Add(const std::wstring& name) {
        if (known.insert(name).second)
            names.push_back(name);
    }
    bool Has(const std::wstring& name) const { return known.contains(name); }
    const std::vector<std::wstring>& Names() const { return names; }

private:
    std::vector<std::wstring> names;
    std::unordered_set<std::wstring> known;
};

/// One run of a scheme over a side database: which layers there are, which must be there at the end, which go, and
/// where each entity is to land. Names are compared exact and with case throughout, so that an entity whose layer or
/// linetype name has lower-case letters is not found in `entityMap` and stays as it is.
///
/// Made for one pass and thrown away. Main thread.
class MappingRun {
public:
    /// Neither is owned; the scheme may get new maps by the question for unknown names.
    MappingRun(AcDbDatabase& sideDatabase, MapScheme& mapScheme) : side(sideDatabase), scheme(mapScheme) {}

    /// The pass of a scheme by layer, by linetype or by colour, each with all its steps. False, with nothing done,
    /// where the layer table can't be opened.
    bool MapLayerScheme();
    bool MapLinetypeScheme();
    bool MapColorScheme();

    std::vector<std::wstring> existing; ///< the layers of the side database as they stand
    NameList keep;                      ///< layers that must exist in the end
    std::vector<std::wstring> erase;    ///< layers that go unless they are kept
    /// From a layer, a linetype, a colour index or a special entry, in upper case, to a layer.
    std::unordered_map<std::wstring, std::wstring> entityMap;

    /// The steps that the passes share, in their order.
    void ListLayers(AcDbLayerTable& layers);
    void CreateMissingLayers(AcDbLayerTable& layers);
    void ApplyMapToEntities(const AcDbLayerTable& layers);
    void EraseReplacedLayers(const AcDbLayerTable& layers);

private:
    /// Text and dimension entities go by their kind where the scheme has one of the three special entries.
    struct SpecialEntry {
        std::wstring word;
        bool texts = false;
        bool dimensions = false;

        bool AppliesTo(const AcDbEntity& entity) const;
    };
    SpecialEntry FindSpecialEntry() const;

    /// The first walk of a scheme by linetype or colour. DEFPOINTS as a layer is a key of its own here.
    void CollectByEntity(const AcDbLayerTable& layers, const SpecialEntry& special);
    bool MapByEntity(const SpecialEntry& special);
    /// What the entity is looked up by, the same text at the same place for as long as the run and `special` last; null
    /// for one that goes by its insertion (BYBLOCK).
    const std::wstring* KeyOf(const AcDbEntity& entity, const SpecialEntry& special, const AcDbLayerTable& layers,
                              bool keepsDefpoints);
    struct Collected {
        bool isMapped = false;
        bool isFinal = false; ///< the next entity of that key changes nothing
    };
    /// Enters the target of a key that has one.
    Collected Collect(std::wstring key);
    /// A layer by its name and its linetype or colour.
    struct LayerOfEntity {
        std::wstring name, value;
        bool isKept = false; ///< an entity stays on it
    };
    LayerOfEntity& LayerOf(const AcDbEntity& entity, const AcDbLayerTable& layers);
    void KeepInPlace(LayerOfEntity& layer);

    AcDbDatabase& side;
    MapScheme& scheme;
    std::unordered_map<std::uint64_t, LayerOfEntity> layersOfEntities; ///< by handle; none changes during a run
    std::unordered_set<std::wstring> ownLinetypes;                     ///< of entities, by name
    std::unordered_map<std::uint16_t, std::wstring> ownColours;        ///< of entities, as decimal text
};
