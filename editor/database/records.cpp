#include "editor/database/colours.h"
#include "editor/database/database_state.h"
#include "editor/database/names.h"

#include <cstdlib>

using namespace dwg::object_type;

int AcDbSymbolTableRecord::getName(std::wstring& name) const {
    const dwg::RecordHead* const head = editor::recordHead(*impl()->object);
    if (head == nullptr)
        return Acad::eNotApplicable;
    name = head->name;
    return eOk;
}

int AcDbSymbolTableRecord::setName(const wchar_t* name) {
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    dwg::Object& object = *impl()->object;
    dwg::RecordHead* const head = editor::recordHead(object);
    if (head == nullptr)
        return Acad::eNotApplicable;
    if (name == nullptr || !editor::isValidRecordName(name))
        return Acad::eInvalidInput;
    if (database() != nullptr) {
        AcDbDatabase::Impl& target = *database()->impl();
        if (target.isIndispensable(object))
            return Acad::eNotApplicable;
        const dwg::Handle same = target.findRecord(static_cast<std::uint16_t>(object.type - 1), name);
        if (same != 0 && same != object.handle)
            return Acad::eDuplicateRecordName;
        if (const auto* const block = object.as<dwg::BlockHeader>())
            target.renameFrame(*block, name);
    }
    head->name = name;
    object.changed();
    return eOk;
}

AcDbLayerTableRecord::AcDbLayerTableRecord()
    : AcDbSymbolTableRecord(Impl::fresh(desc(), dwg::object_type::layer, dwg::Layer{})) {
    constexpr std::uint16_t defaultLineweight = 31 << 5;
    impl()->body<dwg::Layer>()->flags |= defaultLineweight;
}

std::uint16_t AcDbLayerTableRecord::colorIndex() const {
    const auto* const layer = impl()->body<dwg::Layer>();
    if (layer == nullptr)
        return editor::colourForeground;
    const dwg::Color& color = layer->color;
    if (color.hasRgb)
        return editor::nearestIndex({static_cast<std::uint8_t>(color.rgb >> 16),
                                     static_cast<std::uint8_t>(color.rgb >> 8), static_cast<std::uint8_t>(color.rgb)});
    return static_cast<std::uint16_t>(std::abs(color.index));
}

int AcDbLayerTableRecord::setColorIndex(std::uint16_t index) {
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    auto* const layer = impl()->body<dwg::Layer>();
    if (layer == nullptr)
        return Acad::eNotApplicable;
    if (index == editor::colourByBlock || index >= editor::colourByLayer)
        return Acad::eOutOfRange;
    layer->color = {{static_cast<std::int16_t>(isOff() ? -index : index)}};
    impl()->object->changed();
    return eOk;
}

AcDbObjectId AcDbLayerTableRecord::linetypeObjectId() const {
    const auto* const layer = impl()->body<dwg::Layer>();
    if (layer == nullptr || layer->linetype.isNull() || database() == nullptr)
        return {};
    return {database(), layer->linetype.value};
}

int AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetype) {
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    auto* const layer = impl()->body<dwg::Layer>();
    if (layer == nullptr)
        return Acad::eNotApplicable;
    if (linetype.isNull())
        return Acad::eNullObjectId;
    if (linetype.database == nullptr || (database() != nullptr && linetype.database != database()))
        return Acad::eInvalidInput;
    const dwg::Object* const record = linetype.database->impl()->live(linetype.handle);
    if (record == nullptr || record->as<dwg::Linetype>() == nullptr)
        return Acad::eInvalidKey;
    layer->linetype.value = linetype.handle;
    impl()->object->changed();
    return eOk;
}

bool AcDbLayerTableRecord::isFrozen() const {
    const auto* const layer = impl()->body<dwg::Layer>();
    return layer != nullptr && (layer->flags & dwg::Layer::frozen) != 0;
}

bool AcDbLayerTableRecord::isOff() const {
    const auto* const layer = impl()->body<dwg::Layer>();
    return layer != nullptr && ((layer->flags & dwg::Layer::off) != 0 || layer->color.index < 0);
}
