#include "editor/database/layers.h"

#include "editor/database/database_state.h"

#include <cstdlib>

namespace editor {

namespace {

const dwg::Layer* layerOf(AcDbObjectId layer) {
    const dwg::Object* const record = layer.database == nullptr ? nullptr : layer.database->impl()->live(layer.handle);
    return record == nullptr ? nullptr : record->as<dwg::Layer>();
}

std::uint16_t flagOf(LayerState state) {
    switch (state) {
    case LayerState::Off:
        return dwg::Layer::off;
    case LayerState::Frozen:
        return dwg::Layer::frozen;
    case LayerState::Locked:
        break;
    }
    return dwg::Layer::locked;
}

} // namespace

bool layerHas(AcDbObjectId layer, LayerState state) {
    const dwg::Layer* const record = layerOf(layer);
    return record != nullptr &&
           ((record->flags & flagOf(state)) != 0 || (state == LayerState::Off && record->color.index < 0));
}

int setLayerState(AcDbObjectId layer, LayerState state, bool on) {
    if (layerOf(layer) == nullptr)
        return Acad::eInvalidKey;
    AcDbDatabase::Impl& database = *layer.database->impl();
    if (state == LayerState::Frozen && on && database.header.CLAYER.value == layer.handle)
        return Acad::eInvalidInput;
    dwg::Object& object = *database.change(layer.handle);
    auto& record = *object.as<dwg::Layer>();
    const std::uint16_t flag = flagOf(state);
    record.flags = static_cast<std::uint16_t>(on ? record.flags | flag : record.flags & ~flag);
    // A colour below zero says the same as the flag.
    if (state == LayerState::Off)
        record.color.index =
            static_cast<std::int16_t>(on ? -std::abs(record.color.index) : std::abs(record.color.index));
    object.changed();
    return eOk;
}

} // namespace editor
