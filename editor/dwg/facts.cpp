#include "editor/dwg/facts.h"

#include <algorithm>
#include <unordered_map>

namespace dwg {

namespace {

bool equalIgnoringCase(const std::wstring& left, std::wstring_view lowerRight) {
    return std::ranges::equal(left, lowerRight,
                              [](wchar_t a, wchar_t b) { return (a >= L'A' && a <= L'Z' ? a - L'A' + L'a' : a) == b; });
}

} // namespace

const RecordHead* recordHead(const Object& object) {
    return object.body.visit([](const auto& body) -> const RecordHead* {
        if constexpr (requires { body.head; })
            return &body.head;
        else
            return nullptr;
    });
}

RecordHead* recordHead(Object& object) {
    return const_cast<RecordHead*>(recordHead(std::as_const(object)));
}

std::wstring recordName(const Drawing& drawing, HandleRef record) {
    const Object* const object = drawing.find(record);
    const RecordHead* const head = object == nullptr ? nullptr : recordHead(*object);
    return head == nullptr ? std::wstring() : head->name;
}

std::optional<ViewFacts> activeView(const Drawing& drawing) {
    const Object* const table = drawing.firstOfType(object_type::viewportControl);
    const auto* const control = table == nullptr ? nullptr : table->as<TableControl>();
    if (control == nullptr)
        return std::nullopt;
    for (const HandleRef record : control->records) {
        const auto* const viewport = drawing.body<ViewportRecord>(record);
        if (viewport != nullptr && isActiveView(*viewport))
            return viewFacts(*viewport);
    }
    return std::nullopt;
}

bool isActiveView(const ViewportRecord& record) {
    return equalIgnoringCase(record.head.name, L"*active");
}

ViewFacts viewFacts(const ViewportRecord& record) {
    const double aspectRatio = record.height == 0 ? 0 : record.width / record.height;
    return {record.center, record.height, aspectRatio, record.width, record.direction, record.target, record.twist};
}

std::vector<LayerFacts> layerFacts(const Drawing& drawing) {
    std::vector<LayerFacts> layers;
    for (const auto& object : drawing.objects()) {
        if (const auto* const layer = object->as<Layer>())
            layers.push_back({layer->head.name, layer->color, recordName(drawing, layer->linetype)});
    }
    std::ranges::sort(layers, {}, &LayerFacts::name);
    return layers;
}

std::vector<std::wstring> linetypeNames(const Drawing& drawing) {
    std::vector<std::wstring> names;
    for (const auto& object : drawing.objects()) {
        if (const auto* const linetype = object->as<Linetype>())
            names.push_back(linetype->head.name);
    }
    std::ranges::sort(names);
    return names;
}

std::vector<BlockFacts> blockFacts(const Drawing& drawing) {
    std::vector<BlockFacts> blocks;
    std::unordered_map<std::wstring, std::size_t> places;
    for (const auto& object : drawing.objects()) {
        const auto* const header = object->as<BlockHeader>();
        if (header == nullptr)
            continue;
        const auto [place, isNew] = places.emplace(header->head.name, blocks.size());
        if (isNew)
            blocks.push_back({header->head.name, 0, {}, {}});
        BlockFacts& block = blocks[place->second];
        for (const Handle handle : header->entities) {
            const Object* const entity = drawing.find(handle);
            if (entity == nullptr || !entity->isEntity())
                continue;
            ++block.entities;
            ++block.types[typeName(drawing, *entity)];
            ++block.layers[recordName(drawing, entity->entity->layer)];
        }
    }
    return blocks;
}

} // namespace dwg
