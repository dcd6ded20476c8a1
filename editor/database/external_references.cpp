#include "editor/database/external_references.h"

#include "editor/database/database_state.h"
#include "editor/database/names.h"

#include <algorithm>
#include <filesystem>

namespace editor {

using namespace dwg::object_type;

namespace {

constexpr std::size_t deepestNesting = 16;

const dwg::BlockHeader* referenceOf(const AcDbDatabase::Impl& database, dwg::Handle handle) {
    const dwg::Object* const record = database.live(handle);
    const auto* const block = record == nullptr ? nullptr : record->as<dwg::BlockHeader>();
    return block != nullptr && block->isExternalReference ? block : nullptr;
}

bool isSameFile(const std::wstring& one, const std::wstring& other) {
    std::error_code failure;
    return !one.empty() && !other.empty() && std::filesystem::equivalent(dwg::pathOf(one), dwg::pathOf(other), failure);
}

/// Reads the files of references; `chain` holds the drawings from the outermost on.
int load(AcDbDatabase& database, dwg::Handle handle, const ReferenceFinder& find, std::vector<std::wstring>& chain) {
    AcDbDatabase::Impl& state = *database.impl();
    const dwg::BlockHeader* const block = referenceOf(state, handle);
    if (block == nullptr)
        return Acad::eInvalidKey;
    const auto file = find(block->path);
    if (!file)
        return Acad::eFileNotFound;
    if (chain.size() > deepestNesting ||
        std::ranges::any_of(chain, [&](const std::wstring& outer) { return isSameFile(outer, *file); }))
        return Acad::eSelfReference;
    auto drawing = std::make_shared<AcDbDatabase>(false);
    if (const int status = drawing->readDwgFile(file->c_str()); status != eOk)
        return status;
    chain.push_back(*file);
    for (const ExternalReference& nested : externalReferences(*drawing)) {
        // A nested reference that can't be loaded leaves a gap, as a drawing that is opened does.
        if (!nested.overlay)
            (void)load(*drawing, nested.block.handle, find, chain);
    }
    chain.pop_back();
    // Its drawing's own base point is what lies at a reference's insertion point.
    if (const dwg::Point3 base = drawing->impl()->header.INSBASE; !(base == block->basePoint)) {
        dwg::Object& record = *state.change(handle);
        record.as<dwg::BlockHeader>()->basePoint = base;
        record.changed();
    }
    state.references[handle] = std::move(drawing);
    return eOk;
}

} // namespace

std::vector<ExternalReference> externalReferences(AcDbDatabase& database) {
    std::vector<ExternalReference> found;
    AcDbDatabase::Impl& state = *database.impl();
    const dwg::Object* const table = state.table(blockControl);
    if (table == nullptr)
        return found;
    for (const dwg::Handle handle : AcDbDatabase::Impl::records(*table)) {
        if (const dwg::BlockHeader* const block = referenceOf(state, handle))
            found.push_back(
                {state.id(handle), block->head.name, block->path, block->isOverlay, state.references.contains(handle)});
    }
    return found;
}

int attachReference(AcDbDatabase& database, const std::wstring& name, const std::wstring& path, bool overlay,
                    AcDbObjectId& block) {
    block = {};
    AcDbDatabase::Impl& state = *database.impl();
    if (!isValidRecordName(name) || path.empty())
        return Acad::eInvalidInput;
    dwg::Object* const table = state.table(blockControl);
    if (table == nullptr)
        return Acad::eNoDatabase;
    dwg::Handle handle = state.findRecord(blockControl, name);
    if (handle != 0 && referenceOf(state, handle) == nullptr)
        return Acad::eDuplicateRecordName;
    if (handle == 0) {
        dwg::BlockHeader header;
        header.head.name = name;
        dwg::Object object;
        object.handle = handle = state.drawing.newHandle();
        object.type = blockHeader;
        object.owner = {dwg::handle_code::softPointer, table->handle};
        object.body = std::move(header);
        state.enter(*table, handle);
        state.complete(state.add(std::move(object)));
    }
    dwg::Object& record = *state.change(handle);
    auto& header = *record.as<dwg::BlockHeader>();
    header.isExternalReference = true;
    header.isOverlay = overlay;
    header.path = path;
    record.changed();
    block = state.id(handle);
    return eOk;
}

int loadReference(AcDbObjectId block, const ReferenceFinder& find) {
    if (block.database == nullptr)
        return Acad::eNoDatabase;
    std::vector<std::wstring> chain{block.database->impl()->file};
    return load(*block.database, block.handle, find, chain);
}

AcDbDatabase* referencedDrawing(AcDbObjectId block) {
    if (block.database == nullptr || referenceOf(*block.database->impl(), block.handle) == nullptr)
        return nullptr;
    const auto& references = block.database->impl()->references;
    const auto found = references.find(block.handle);
    return found == references.end() ? nullptr : found->second.get();
}

int detachReference(AcDbObjectId block) {
    if (block.database == nullptr)
        return Acad::eNoDatabase;
    AcDbDatabase::Impl& state = *block.database->impl();
    const dwg::BlockHeader* const header = referenceOf(state, block.handle);
    if (header == nullptr)
        return Acad::eInvalidKey;
    const std::wstring prefix = header->head.name + L"|";
    const auto isLayerOf = [&](const dwg::Object& object) {
        const auto* const record = object.as<dwg::Layer>();
        return record != nullptr && record->head.name.size() > prefix.size() &&
               sameName(record->head.name.substr(0, prefix.size()), prefix);
    };
    std::vector<dwg::Handle> doomed{block.handle};
    for (const auto& object : state.drawing.objects()) {
        if (state.isErased(object->handle))
            continue;
        const auto* const insert = object->as<dwg::Insert>();
        if ((insert != nullptr && insert->block.value == block.handle) || isLayerOf(*object))
            doomed.push_back(object->handle);
    }
    // A layer that something else of the drawing is on stays.
    for (auto handle = doomed.rbegin(); handle != doomed.rend(); ++handle) {
        dwg::Object* const object = state.drawing.find(*handle);
        if (object->as<dwg::Layer>() == nullptr)
            state.setErased(*object, true);
    }
    for (const dwg::Handle handle : doomed) {
        dwg::Object* const object = state.drawing.find(handle);
        if (object->as<dwg::Layer>() != nullptr && state.refusalToErase(*object) == eOk)
            state.setErased(*object, true);
    }
    return eOk;
}

} // namespace editor
