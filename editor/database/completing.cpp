#include "editor/database/database_state.h"

#include <unordered_set>

using namespace dwg::object_type;

namespace {

dwg::Object frameEntity(std::uint16_t type, dwg::Body body, dwg::Handle record, dwg::Handle layer) {
    dwg::Object object;
    object.type = type;
    object.owner = {dwg::handle_code::softPointer, record};
    object.entity.emplace();
    object.entity->layer.value = layer;
    object.body = std::move(body);
    return object;
}

/// The text style that an entity names; null for entities without text.
dwg::HandleRef* textStyleOf(dwg::Object& object) {
    if (auto* const text = object.as<dwg::Text>())
        return &text->text.style;
    if (auto* const attribute = object.as<dwg::Attribute>())
        return &attribute->text.style;
    if (auto* const definition = object.as<dwg::AttributeDefinition>())
        return &definition->attribute.text.style;
    if (auto* const paragraph = object.as<dwg::MultilineText>())
        return &paragraph->style;
    return nullptr;
}

} // namespace

void AcDbDatabase::Impl::complete(dwg::Object& object) {
    if (object.isEntity()) {
        if (object.entity->layer.isNull())
            object.entity->layer.value = header.CLAYER.value;
        if (dwg::HandleRef* const style = textStyleOf(object); style != nullptr && style->isNull())
            style->value = header.TEXTSTYLE.value;
        return;
    }
    if (auto* const made = object.as<dwg::Layer>()) {
        if (made->linetype.isNull())
            made->linetype.value = header.linetypeContinuous.value;
        const auto* const zero = drawing.body<dwg::Layer>({0, findRecord(layerControl, L"0")});
        if (made->plotStyle.isNull() && zero != nullptr)
            made->plotStyle = zero->plotStyle;
        return;
    }
    if (auto* const definition = object.as<dwg::BlockHeader>(); definition != nullptr && definition->begin.isNull()) {
        const dwg::Handle zero = findRecord(layerControl, L"0");
        const auto addFrame = [&](dwg::Object frame) {
            frame.handle = drawing.newHandle();
            return add(std::move(frame)).handle;
        };
        const dwg::BlockBegin begin{definition->head.name};
        definition->begin.value = addFrame(frameEntity(block, begin, object.handle, zero));
        definition->end.value = addFrame(frameEntity(endBlock, dwg::BlockEnd{}, object.handle, zero));
    }
}

void AcDbDatabase::Impl::renameFrame(const dwg::BlockHeader& block, const wchar_t* name) {
    dwg::Object* const frame = change(block.begin.value);
    auto* const begin = frame == nullptr ? nullptr : frame->as<dwg::BlockBegin>();
    if (begin == nullptr)
        return;
    begin->name = name;
    frame->changed();
}

bool AcDbDatabase::Impl::draws(dwg::Handle from, dwg::Handle target) const {
    std::unordered_set<dwg::Handle> seen;
    std::vector<dwg::Handle> open{from};
    while (!open.empty()) {
        const dwg::Handle handle = open.back();
        open.pop_back();
        if (handle == target)
            return true;
        const dwg::Object* const record = live(handle);
        const auto* const definition = record == nullptr ? nullptr : record->as<dwg::BlockHeader>();
        if (definition == nullptr || !seen.insert(handle).second)
            continue;
        for (const dwg::Handle entity : definition->entities) {
            const dwg::Object* const object = live(entity);
            const auto* const insert = object == nullptr ? nullptr : object->as<dwg::Insert>();
            if (insert != nullptr)
                open.push_back(insert->block.value);
        }
    }
    return false;
}
