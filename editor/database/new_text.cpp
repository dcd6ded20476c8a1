#include "editor/database/new_text.h"

#include "editor/database/database_state.h"
#include "editor/database/names.h"

namespace editor {

using namespace dwg::object_type;

namespace {

const dwg::TextStyle* styleNamed(const AcDbDatabase& database, const std::wstring& name) {
    const AcDbDatabase::Impl& state = *database.impl();
    const dwg::Handle handle = name.empty() ? state.header.TEXTSTYLE.value : state.findRecord(styleControl, name);
    const dwg::Object* const record = state.live(handle);
    return record == nullptr ? nullptr : record->as<dwg::TextStyle>();
}

} // namespace

std::wstring currentTextStyle(const AcDbDatabase& database) {
    const dwg::TextStyle* const style = styleNamed(database, L"");
    return style == nullptr ? std::wstring() : style->head.name;
}

bool hasTextStyle(const AcDbDatabase& database, const std::wstring& name) {
    const dwg::TextStyle* const style = name.empty() ? nullptr : styleNamed(database, name);
    return style != nullptr && !style->isShapeFile;
}

double fixedTextHeight(const AcDbDatabase& database, const std::wstring& style) {
    const dwg::TextStyle* const found = styleNamed(database, style);
    return found == nullptr ? 0 : found->fixedHeight;
}

double textHeight(const AcDbDatabase& database) {
    return database.impl()->header.TEXTSIZE;
}

void setTextHeight(AcDbDatabase& database, double height) {
    database.impl()->changeHeader();
    database.impl()->header.TEXTSIZE = height;
}

AcDbObjectId addText(AcDbDatabase& database, const NewText& text) {
    AcDbDatabase::Impl& state = *database.impl();
    dwg::Object* const space = state.change(state.modelSpace());
    const dwg::TextStyle* const style = styleNamed(database, text.style);
    if (space == nullptr || style == nullptr || !(text.height > 0))
        return {};
    dwg::TextFields fields;
    fields.elevation = text.point.z;
    fields.insertion = {text.point.x, text.point.y};
    fields.rotation = text.rotation;
    fields.height = text.height;
    fields.widthFactor = style->widthFactor;
    fields.oblique = style->oblique;
    fields.value = text.value;
    if (!text.style.empty())
        fields.style.value = state.findRecord(styleControl, text.style);
    constexpr std::uint16_t horizontal[] = {0, 1, 2, 4};
    fields.horizontal = horizontal[static_cast<int>(text.justification)];
    if (fields.horizontal != 0)
        fields.alignment = fields.insertion;

    dwg::Object object;
    object.handle = state.drawing.newHandle();
    object.type = dwg::object_type::text;
    object.entity.emplace();
    object.body = dwg::Text{std::move(fields)};
    dwg::Object& added = state.add(std::move(object));
    state.drawing.setOwner(added, space->handle);
    state.complete(added);
    space->as<dwg::BlockHeader>()->entities.push_back(added.handle);
    space->changed();
    return state.id(added.handle);
}

} // namespace editor
