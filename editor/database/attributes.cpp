#include "editor/database/attributes.h"

#include "editor/database/database_state.h"
#include "editor/database/transforming.h"

namespace editor {

using namespace dwg::object_type;

namespace {

constexpr std::uint8_t constantAttribute = 2, verifiedAttribute = 4, presetAttribute = 8;

std::vector<const dwg::Object*> definitionsIn(const AcDbDatabase::Impl& database, dwg::Handle block) {
    std::vector<const dwg::Object*> found;
    const dwg::Object* const record = database.live(block);
    const auto* const header = record == nullptr ? nullptr : record->as<dwg::BlockHeader>();
    if (header == nullptr)
        return found;
    for (const dwg::Handle handle : header->entities) {
        const dwg::Object* const entity = database.live(handle);
        const auto* const definition = entity == nullptr ? nullptr : entity->as<dwg::AttributeDefinition>();
        if (definition != nullptr && (definition->attribute.flags & constantAttribute) == 0)
            found.push_back(entity);
    }
    return found;
}

} // namespace

std::vector<AttributeQuestion> attributeQuestions(AcDbObjectId block) {
    std::vector<AttributeQuestion> questions;
    if (block.database == nullptr)
        return questions;
    for (const dwg::Object* const object : definitionsIn(*block.database->impl(), block.handle)) {
        const auto& definition = *object->as<dwg::AttributeDefinition>();
        const dwg::Attribute& attribute = definition.attribute;
        questions.push_back({attribute.tag, definition.prompt.empty() ? attribute.tag : definition.prompt,
                             attribute.text.value, (attribute.flags & presetAttribute) != 0,
                             (attribute.flags & verifiedAttribute) != 0});
    }
    return questions;
}

int addAttributes(AcDbObjectId reference, const std::vector<std::wstring>& values) {
    if (reference.database == nullptr)
        return Acad::eNoDatabase;
    AcDbDatabase::Impl& database = *reference.database->impl();
    const dwg::Object* const found = database.live(reference.handle);
    const auto* const placed = found == nullptr ? nullptr : found->as<dwg::Insert>();
    const dwg::Object* const record = placed == nullptr ? nullptr : database.live(placed->block.value);
    const auto* const header = record == nullptr ? nullptr : record->as<dwg::BlockHeader>();
    if (header == nullptr)
        return Acad::eInvalidKey;
    const AcGePoint3d base = toPoint(header->basePoint);
    const Transform map = planeToWorld(placed->extrusion)
                              .moved(toPoint(placed->position))
                              .turned(placed->rotation)
                              .scaled(toVector(placed->scale))
                              .moved({-base.x, -base.y, -base.z});
    std::vector<dwg::Object> attributes;
    for (const dwg::Object* const source : definitionsIn(database, placed->block.value)) {
        dwg::Object object;
        object.type = attribute;
        object.entity = source->entity;
        dwg::Attribute body = source->as<dwg::AttributeDefinition>()->attribute;
        if (attributes.size() < values.size())
            body.text.value = values[attributes.size()];
        object.body = std::move(body);
        // A definition that the reference flattens is shown where it was defined.
        (void)transformEntity(object, map);
        attributes.push_back(std::move(object));
    }
    if (attributes.empty())
        return eOk;

    dwg::Object& owner = *database.change(reference.handle);
    auto& insert = *owner.as<dwg::Insert>();
    const auto enter = [&](dwg::Object object) {
        object.handle = database.drawing.newHandle();
        const dwg::Handle handle = object.handle;
        database.drawing.setOwner(database.add(std::move(object)), reference.handle);
        return handle;
    };
    for (dwg::Object& object : attributes)
        insert.attributes.parts.push_back(enter(std::move(object)));
    dwg::Object end;
    end.type = sequenceEnd;
    end.entity.emplace();
    end.entity->layer = owner.entity->layer;
    end.body = dwg::SequenceEnd{};
    insert.attributes.sequenceEnd.value = enter(std::move(end));
    insert.hasAttributes = true;
    owner.changed();
    return eOk;
}

} // namespace editor
