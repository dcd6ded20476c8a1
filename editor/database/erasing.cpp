#include "editor/database/database_state.h"
#include "editor/database/journal.h"
#include "editor/database/names.h"
#include "editor/database/references.h"
#include "editor/dwg/dimension_style_table.h"

#include <algorithm>

using namespace dwg::object_type;

namespace {

bool isRecordOfTable(const dwg::Object& object) {
    return editor::recordHead(object) != nullptr;
}

bool isTable(const dwg::Object& object) {
    return object.as<dwg::TableControl>() != nullptr || object.as<dwg::BlockControl>() != nullptr ||
           object.type == dimensionStyleControl;
}

/// Entities but for the marks of a definition's or a chain's ends, which can do without their layer.
bool isDrawn(const dwg::Object& object) {
    return object.isEntity() && object.type != block && object.type != endBlock && object.type != sequenceEnd;
}

/// Whether `user` needs the record `used`, not merely lists it, belongs to it or reacts on it.
bool needs(const dwg::Object& user, dwg::Handle used) {
    if (user.handle == used || user.owner.value == used || isTable(user) || user.as<dwg::Dictionary>() != nullptr)
        return false;
    const bool reacts = std::ranges::any_of(user.reactors, [&](dwg::HandleRef r) { return r.value == used; });
    std::ptrdiff_t count = reacts ? -1 : 0;
    editor::visitReferences(user, [&](dwg::Handle handle) { count += handle == used ? 1 : 0; });
    return count > 0;
}

} // namespace

bool AcDbDatabase::Impl::isIndispensable(const dwg::Object& object) const {
    if (isTable(object) || object.handle == modelSpaceHandle || object.handle == paperSpaceHandle)
        return true;
    if (object.type == block || object.type == endBlock || object.type == sequenceEnd)
        return true;
    const dwg::RecordHead* const head = editor::recordHead(object);
    if (head == nullptr)
        return object.as<dwg::Dictionary>() != nullptr && object.owner.isNull();
    const auto isNamed = [&](const wchar_t* name) { return editor::sameName(head->name, name); };
    switch (object.type) {
    case layer:
        return isNamed(L"0");
    case linetype:
        return isNamed(L"ByLayer") || isNamed(L"ByBlock") || isNamed(L"Continuous");
    case style:
    case dimensionStyle:
        return isNamed(L"Standard");
    case application:
        return isNamed(L"ACAD");
    case blockHeader:
        return !object.as<dwg::BlockHeader>()->layout.isNull();
    default:
        return false;
    }
}

int AcDbDatabase::Impl::refusalToErase(const dwg::Object& object) const {
    const dwg::Handle handle = object.handle;
    if (isIndispensable(object) || handle == header.CLAYER.value)
        return Acad::eCannotBeErasedByCaller;
    if (!isRecordOfTable(object))
        return eOk;
    if (handle == header.TEXTSTYLE.value || handle == header.CELTYPE.value || handle == header.DIMSTYLE.value)
        return Acad::eObjectIsReferenced;
    // What else names a layer (filters, lists of frozen layers) can do without it.
    if (object.type == layer)
        return layersInUse().contains(handle) ? Acad::eObjectIsReferenced : eOk;
    const bool isUsed = std::ranges::any_of(
        drawing.objects(), [&](const auto& user) { return !isErased(user->handle) && needs(*user, handle); });
    return isUsed ? Acad::eObjectIsReferenced : eOk;
}

const std::unordered_set<dwg::Handle>& AcDbDatabase::Impl::layersInUse() const {
    if (!usedLayers) {
        usedLayers.emplace();
        for (const auto& user : drawing.objects()) {
            if (isDrawn(*user) && !isErased(user->handle))
                usedLayers->insert(user->entity->layer.value);
        }
    }
    return *usedLayers;
}

void AcDbDatabase::Impl::setErased(dwg::Object& object, bool erasing) {
    const auto set = [&](dwg::Handle handle) {
        if (journal)
            journal->touchErasure(handle);
        markErased(handle, erasing);
    };
    set(object.handle);
    if (const dwg::OwnedChain* const chain = dwg::ownedChain(object)) {
        std::ranges::for_each(chain->parts, set);
        if (!chain->sequenceEnd.isNull())
            set(chain->sequenceEnd.value);
    }
    const auto* const block = object.as<dwg::BlockHeader>();
    if (block == nullptr)
        return;
    set(block->begin.value);
    set(block->end.value);
    for (const dwg::Handle entity : block->entities) {
        if (dwg::Object* const part = drawing.find(entity))
            setErased(*part, erasing);
    }
}

void AcDbDatabase::Impl::purgeErased() {
    if (erased.empty())
        return;
    for (const auto& object : drawing.objects()) {
        if (isErased(object->handle))
            continue;
        bool names = false;
        editor::visitReferences(*object, [&](dwg::Handle handle) { names = names || isErased(handle); });
        if (!names)
            continue;
        change(object->handle);
        if (auto* const carried = object->as<dwg::Carried>();
            carried != nullptr && object->type == dimensionStyleControl) {
            for (const dwg::HandleRef style : dwg::dimensionStyles(*carried)) {
                if (isErased(style.value))
                    dwg::removeDimensionStyle(*carried, style.value);
            }
        }
        dwg::mapReferences(*object, [&](dwg::Handle handle) { return isErased(handle) ? 0 : handle; });
        if (object->isEntity() && object->entity->layer.isNull())
            object->entity->layer.value = findRecord(layerControl, L"0");
        const auto isNull = [](const dwg::HandleRef& reference) { return reference.isNull(); };
        std::erase_if(object->reactors, isNull);
        if (auto* const control = object->as<dwg::TableControl>())
            std::erase_if(control->records, isNull);
        else if (auto* const blocks = object->as<dwg::BlockControl>())
            std::erase_if(blocks->records, isNull);
        else if (auto* const definition = object->as<dwg::BlockHeader>())
            std::erase_if(definition->insertions, isNull);
        else if (auto* const dictionary = object->as<dwg::Dictionary>())
            std::erase_if(dictionary->items, [](const auto& item) { return item.object.isNull(); });
    }
    for (const dwg::Handle handle : erased) {
        if (drawing.find(handle) == nullptr)
            continue;
        change(handle);
        takeOut(handle);
    }
    if (journal)
        journal->joinToLast();
}
