#include "editor/database/colours.h"
#include "editor/database/database_state.h"
#include "editor/database/names.h"
#include "editor/database/transform.h"
#include "editor/dwg/model.h"

#include <functional>

using namespace dwg::object_type;

namespace {

constexpr const wchar_t* byLayerName = L"BYLAYER";
constexpr const wchar_t* byBlockName = L"BYBLOCK";
constexpr const wchar_t* continuousName = L"Continuous";

/// Carries a change out on the entity and, where asked for, on the attributes of an insertion or the vertices of a
/// polyline.
void changeWithParts(AcDbObject::Impl& state, bool withParts, const std::function<void(dwg::EntityData&)>& change) {
    if (state.database != nullptr)
        state.database->impl()->forgetUsedLayers();
    change(*state.object->entity);
    state.object->changed();
    const dwg::OwnedChain* const chain = dwg::ownedChain(*state.object);
    if (!withParts || chain == nullptr || state.database == nullptr)
        return;
    const auto changePart = [&](dwg::Handle handle) {
        dwg::Object* const part = state.database->impl()->change(handle);
        if (part == nullptr || !part->isEntity())
            return;
        change(*part->entity);
        part->changed();
    };
    for (const dwg::Handle part : chain->parts)
        changePart(part);
    changePart(chain->sequenceEnd.value);
}

std::wstring nameOf(const AcDbDatabase* database, dwg::HandleRef record) {
    const dwg::Object* const object = database == nullptr ? nullptr : database->impl()->drawing.find(record);
    const dwg::RecordHead* const head = object == nullptr ? nullptr : editor::recordHead(*object);
    return head == nullptr ? std::wstring() : head->name;
}

} // namespace

std::wstring AcDbEntity::layer() const {
    return nameOf(database(), impl()->object->entity->layer);
}

AcDbObjectId AcDbEntity::layerId() const {
    const dwg::HandleRef layer = impl()->object->entity->layer;
    return database() == nullptr ? AcDbObjectId{} : AcDbObjectId{database(), layer.value};
}

int AcDbEntity::setLayer(const wchar_t* name, bool doSubents, bool allowHidden) {
    if (database() == nullptr)
        return Acad::eNoDatabase;
    if (name == nullptr)
        return Acad::eInvalidInput;
    const dwg::Handle layer = database()->impl()->findRecord(layerControl, name);
    return layer == 0 ? Acad::eKeyNotFound : setLayer(AcDbObjectId{database(), layer}, doSubents, allowHidden);
}

int AcDbEntity::setLayer(AcDbObjectId layer, bool doSubents, bool) {
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    if (layer.isNull())
        return Acad::eNullObjectId;
    if (layer.database == nullptr || (database() != nullptr && layer.database != database()))
        return Acad::eInvalidInput;
    const dwg::Object* const record = layer.database->impl()->live(layer.handle);
    if (record == nullptr || record->as<dwg::Layer>() == nullptr)
        return Acad::eInvalidKey;
    changeWithParts(*impl(), doSubents, [&](dwg::EntityData& entity) { entity.layer.value = layer.handle; });
    return eOk;
}

std::uint16_t AcDbEntity::colorIndex() const {
    const dwg::Color& color = impl()->object->entity->color;
    if (color.hasRgb)
        return editor::nearestIndex({static_cast<std::uint8_t>(color.rgb >> 16),
                                     static_cast<std::uint8_t>(color.rgb >> 8), static_cast<std::uint8_t>(color.rgb)});
    return static_cast<std::uint16_t>(color.index < 0 ? -color.index : color.index);
}

int AcDbEntity::setColorIndex(std::uint16_t index, bool doSubents) {
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    if (index > editor::colourByLayer)
        return Acad::eOutOfRange;
    changeWithParts(*impl(), doSubents,
                    [&](dwg::EntityData& entity) { entity.color = {static_cast<std::int16_t>(index)}; });
    return eOk;
}

std::wstring AcDbEntity::linetype() const {
    const dwg::EntityData& entity = *impl()->object->entity;
    switch (entity.linetypeFrom) {
    case dwg::ByWhat::layer:
        return byLayerName;
    case dwg::ByWhat::block:
        return byBlockName;
    case dwg::ByWhat::continuous: {
        const dwg::Handle found =
            database() == nullptr ? 0 : database()->impl()->findRecord(linetypeControl, continuousName);
        return found == 0 ? continuousName : nameOf(database(), {dwg::handle_code::hardPointer, found});
    }
    case dwg::ByWhat::handle:
        break;
    }
    const std::wstring name = nameOf(database(), entity.linetype);
    for (const wchar_t* const special : {byLayerName, byBlockName}) {
        if (editor::sameName(name, special))
            return special;
    }
    return name;
}

int AcDbEntity::setLinetype(const wchar_t* name, bool doSubents) {
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    if (name == nullptr)
        return Acad::eInvalidInput;
    dwg::ByWhat from = dwg::ByWhat::handle;
    dwg::Handle record = 0;
    if (editor::sameName(name, byLayerName)) {
        from = dwg::ByWhat::layer;
    } else if (editor::sameName(name, byBlockName)) {
        from = dwg::ByWhat::block;
    } else if (editor::sameName(name, continuousName)) {
        from = dwg::ByWhat::continuous;
    } else {
        if (database() == nullptr)
            return Acad::eNoDatabase;
        record = database()->impl()->findRecord(linetypeControl, name);
        if (record == 0)
            return Acad::eKeyNotFound;
    }
    changeWithParts(*impl(), doSubents, [&](dwg::EntityData& entity) {
        entity.linetypeFrom = from;
        entity.linetype = {dwg::handle_code::hardPointer, record};
    });
    return eOk;
}

AcDbObjectId AcDbEntity::blockId() const {
    return database() == nullptr ? AcDbObjectId{} : AcDbObjectId{database(), impl()->object->owner.value};
}

AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end)
    : AcDbEntity(Impl::freshEntity(desc(), dwg::object_type::line,
                                   dwg::Line{.start = editor::fromPoint(start), .end = editor::fromPoint(end)})) {}

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : AcDbEntity(Impl::freshEntity(desc(), dwg::object_type::circle,
                                   dwg::Circle{.center = editor::fromPoint(center),
                                               .radius = radius,
                                               .extrusion = editor::fromVector(normal)})) {}

namespace {

dwg::Insert insertOf(const AcGePoint3d& position, dwg::Handle block) {
    dwg::Insert insert;
    insert.position = editor::fromPoint(position);
    insert.block.value = block;
    return insert;
}

} // namespace

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord)
    : AcDbEntity(Impl::freshEntity(desc(), dwg::object_type::insert, insertOf(position, blockTableRecord.handle))) {}

AcDbObjectId AcDbBlockReference::blockTableRecord() const {
    const auto* const insert = impl()->body<dwg::Insert>();
    return insert == nullptr ? AcDbObjectId{} : AcDbObjectId{database(), insert->block.value};
}

AcGePoint3d AcDbBlockReference::position() const {
    const auto* const insert = impl()->body<dwg::Insert>();
    if (insert == nullptr)
        return {};
    return editor::planeToWorld(insert->extrusion).point(editor::toPoint(insert->position));
}

double AcDbBlockReference::rotation() const {
    const auto* const insert = impl()->body<dwg::Insert>();
    return insert == nullptr ? 0 : insert->rotation;
}

int AcDbBlockReference::setRotation(double radians) {
    auto* const insert = impl()->body<dwg::Insert>();
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    if (insert == nullptr)
        return Acad::eNotApplicable;
    insert->rotation = radians;
    impl()->object->changed();
    return eOk;
}

AcGeVector3d AcDbBlockReference::scaleFactors() const {
    const auto* const insert = impl()->body<dwg::Insert>();
    return insert == nullptr ? AcGeVector3d{1, 1, 1} : editor::toVector(insert->scale);
}

int AcDbBlockReference::setScaleFactors(const AcGeVector3d& factors) {
    auto* const insert = impl()->body<dwg::Insert>();
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    if (insert == nullptr)
        return Acad::eNotApplicable;
    // A factor of zero would leave nothing that could be drawn or scaled back.
    if (factors.x == 0 || factors.y == 0 || factors.z == 0)
        return Acad::eInvalidInput;
    insert->scale = editor::fromVector(factors);
    impl()->object->changed();
    return eOk;
}
