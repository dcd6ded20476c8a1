#include "editor/database/cloning.h"
#include "editor/database/colours.h"
#include "editor/database/database_state.h"
#include "editor/database/names.h"
#include "editor/dwg/convert_drawing.h"

#include <algorithm>

using namespace dwg::object_type;

namespace {

/// The definition of that name, or a new empty one.
dwg::Object& definitionNamed(AcDbDatabase::Impl& database, dwg::Handle existing, dwg::Handle reserved,
                             const wchar_t* name) {
    if (existing != 0)
        return *database.change(existing);
    dwg::BlockHeader header;
    header.head.name = name;
    dwg::Object object;
    object.handle = reserved;
    object.type = blockHeader;
    dwg::Object& table = *database.table(blockControl);
    object.owner = {dwg::handle_code::softPointer, table.handle};
    object.body = std::move(header);
    dwg::Object& added = database.add(std::move(object));
    database.enter(table, added.handle);
    database.complete(added);
    return added;
}

bool isSameFile(const std::wstring& one, const std::wstring& other) {
    std::error_code failure;
    return !one.empty() && !other.empty() && std::filesystem::equivalent(dwg::pathOf(one), dwg::pathOf(other), failure);
}

/// A copy of a drawing in the form of another release, what is erased in it included.
void convertInto(const AcDbDatabase::Impl& from, AcDbDatabase::Impl& into, dwg::Release release) {
    auto converted = dwg::convertDrawing(from.drawing, from.header, release,
                                         [](std::uint32_t rgb) { return editor::nearestIndexOf(rgb); });
    into.drawing = std::move(converted.drawing);
    into.header = std::move(converted.header);
    into.leftOut = std::move(converted.leftOut);
    into.file = from.file;
    into.adopt();
    for (const auto& object : into.drawing.objects())
        if (from.isErased(object->handle))
            into.markErased(object->handle, true);
}

} // namespace

int AcDbDatabase::insert(AcDbObjectId& id, const wchar_t* blockName, AcDbDatabase* source, bool) {
    id = {};
    if (source == nullptr || blockName == nullptr || !editor::isValidRecordName(blockName))
        return Acad::eInvalidInput;
    if (!state->hasDrawing() || !source->state->hasDrawing())
        return Acad::eNoDatabase;
    if (source == this || isSameFile(state->file, source->state->file))
        return Acad::eSelfReference;
    if (source->state->drawing.release != state->drawing.release) {
        AcDbDatabase converted(false);
        convertInto(*source->state, *converted.state, state->drawing.release);
        const int status = insert(id, blockName, &converted);
        state->leftOut = converted.state->leftOut;
        return status;
    }

    const dwg::Handle existing = state->findRecord(blockControl, blockName);
    if (existing != 0 && state->isIndispensable(*state->drawing.find(existing)))
        return Acad::eInvalidInput;
    const dwg::Handle reserved = existing != 0 ? existing : state->drawing.newHandle();
    state->changeClasses();
    editor::Cloner cloner(*source->state, *state);
    cloner.planModelSpace(reserved, blockName);
    const bool isCircular =
        cloner.isCircular() || std::ranges::any_of(cloner.existingDefinitions(), [&](dwg::Handle definition) {
            return state->draws(definition, reserved);
        });
    if (isCircular)
        return Acad::eSelfReference;

    dwg::Object& object = definitionNamed(*state, existing, reserved, blockName);
    auto& block = *object.as<dwg::BlockHeader>();
    for (const dwg::Handle entity : block.entities) {
        if (dwg::Object* const old = state->drawing.find(entity))
            state->setErased(*old, true);
    }
    block.entities = cloner.commit();
    block.basePoint = source->state->header.INSBASE;
    block.isExternalReference = block.isOverlay = false;
    block.path.clear();
    block.hasAttributes = std::ranges::any_of(block.entities, [&](dwg::Handle entity) {
        return state->drawing.body<dwg::AttributeDefinition>({0, entity}) != nullptr;
    });
    object.changed();
    id = state->id(object.handle);
    return eOk;
}
