#include "tests/mapping_engine/Expectation.h"

#include "editor/database/colours.h"
#include "editor/dwg/object_types.h"

#include <algorithm>
#include <cwctype>
#include <optional>

namespace tests {

namespace {

using Maps = std::vector<std::pair<std::wstring, std::wstring>>;

std::wstring upper(std::wstring text) {
    for (wchar_t& letter : text)
        letter = static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(letter)));
    return text;
}

std::wstring nameOf(const dwg::Drawing& drawing, dwg::HandleRef record) {
    if (const auto* const layer = drawing.body<dwg::Layer>(record))
        return layer->head.name;
    const auto* const linetype = drawing.body<dwg::Linetype>(record);
    return linetype == nullptr ? L"" : linetype->head.name;
}

std::wstring linetypeOf(const dwg::Drawing& drawing, const dwg::EntityData& entity) {
    switch (entity.linetypeFrom) {
    case dwg::ByWhat::layer:
        return L"BYLAYER";
    case dwg::ByWhat::block:
        return L"BYBLOCK";
    case dwg::ByWhat::continuous:
        // The drawing's own spelling, which the oldest releases have in upper case.
        for (const auto& object : drawing.objects())
            if (const auto* const linetype = object->as<dwg::Linetype>();
                linetype != nullptr && upper(linetype->head.name) == L"CONTINUOUS")
                return linetype->head.name;
        return L"Continuous";
    case dwg::ByWhat::handle:
        break;
    }
    return nameOf(drawing, entity.linetype);
}

/// A true colour counts by the index that the host has for it.
int indexOf(const dwg::Color& color) {
    return color.hasRgb ? editor::nearestIndexOf(color.rgb) : std::abs(int(color.index));
}

std::optional<std::wstring> target(const Maps& maps, const std::wstring& name) {
    for (const auto& [from, to] : maps)
        if (from == name || (from.ends_with(L'*') && name.starts_with(from.substr(0, from.size() - 1))))
            return to;
    return std::nullopt;
}

} // namespace

Expectation Expectation::read(const dwg::Drawing& drawing) {
    using namespace dwg::object_type;
    Expectation found;
    for (const auto& object : drawing.objects())
        if (const auto* const layer = object->as<dwg::Layer>())
            found.layers.push_back({layer->head.name, nameOf(drawing, layer->linetype), indexOf(layer->color)});
    for (const auto& object : drawing.objects()) {
        const auto* const block = object->as<dwg::BlockHeader>();
        if (block == nullptr)
            continue;
        for (const dwg::Handle handle : block->entities) {
            const dwg::Object* const entity = drawing.find(handle);
            if (entity == nullptr || !entity->isEntity())
                continue;
            const std::string type = dwg::typeName(drawing, *entity);
            PlainEntity plain;
            plain.handle = handle;
            plain.block = block->head.name;
            plain.layer = nameOf(drawing, entity->entity->layer);
            plain.linetype = linetypeOf(drawing, *entity->entity);
            plain.colour = indexOf(entity->entity->color);
            plain.isText = type == "TEXT" || type == "ATTDEF" || type == "ATTRIB";
            plain.isDimension = type.starts_with("DIMENSION") || type.ends_with("_DIMENSION");
            if (const dwg::OwnedChain* const chain = dwg::ownedChain(*entity))
                for (const dwg::Handle part : chain->parts)
                    if (const dwg::Object* const owned = drawing.find(part); owned != nullptr && owned->isEntity())
                        plain.partLayers.insert(nameOf(drawing, owned->entity->layer));
            found.entities.push_back(std::move(plain));
        }
    }
    return found;
}

void Expectation::apply(int schemeType, const Maps& maps, bool byLayer) {
    const wchar_t* const special = L"*TEXT AND DIMENSION OBJECTS";
    const bool hasSpecial = schemeType == 1 && std::ranges::any_of(maps, [&](auto& m) { return m.first == special; });
    const std::wstring none = schemeType == 1 ? L"BYLAYER" : L"256", fixed = schemeType == 1 ? L"BYBLOCK" : L"0";
    std::set<std::wstring> keys, kept; // what the first walk enters; what stays or is a target
    const auto valueOf = [&](const std::wstring& layer) -> std::wstring {
        for (const PlainLayer& each : layers)
            if (each.name == layer)
                return schemeType == 1 ? each.linetype : std::to_wstring(each.colour);
        return L"";
    };
    const auto keyOf = [&](const PlainEntity& entity, bool first) -> std::optional<std::wstring> {
        if (hasSpecial && (entity.isText || entity.isDimension))
            return special;
        if (schemeType == 0)
            return entity.layer;
        const std::wstring own = schemeType == 1 ? entity.linetype : std::to_wstring(entity.colour);
        if (own == fixed)
            return std::nullopt;
        if (own != none)
            return own;
        return first && entity.layer == L"DEFPOINTS" ? entity.layer : valueOf(entity.layer);
    };
    std::map<std::wstring, std::wstring> moves;
    std::vector<std::wstring> candidates;
    for (const PlainLayer& layer : layers) {
        const std::wstring name = schemeType == 0 ? upper(layer.name) : layer.name;
        if (name != L"0" && name != L"DEFPOINTS")
            candidates.push_back(name);
        if (schemeType == 0)
            kept.insert(moves[name] = upper(target(maps, name).value_or(name)));
    }
    if (schemeType != 0) {
        for (const PlainEntity& entity : entities) {
            const auto key = keyOf(entity, true);
            if (!key)
                continue;
            if (const auto to = target(maps, upper(*key)))
                kept.insert(moves[upper(*key)] = upper(*to));
            else if (entity.layer == L"DEFPOINTS")
                moves[entity.layer] = entity.layer;
            else if (entity.layer != L"0")
                kept.insert(entity.layer);
        }
    }
    std::set<std::wstring> used;
    for (PlainEntity& entity : entities) {
        const auto key = keyOf(entity, false);
        const auto move = key ? moves.find(*key) : moves.end();
        if (move != moves.end()) {
            entity.layer = move->second;
            entity.partLayers.clear();
            if (byLayer) {
                entity.colour = 256;
                entity.linetype = L"BYLAYER";
            }
        }
        used.insert(upper(entity.layer));
        for (const std::wstring& layer : entity.partLayers)
            used.insert(upper(layer));
    }
    for (const PlainLayer& layer : layers)
        layersAfter.insert(upper(layer.name));
    for (const std::wstring& name : kept)
        layersAfter.insert(upper(name));
    for (const std::wstring& name : candidates) {
        if (kept.contains(name))
            continue;
        if (used.contains(upper(name)))
            messages.push_back(L"Could not erase layer " + name);
        else
            layersAfter.erase(upper(name));
    }
}

} // namespace tests
