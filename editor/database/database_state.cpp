#include "editor/database/database_state.h"

#include "editor/database/journal.h"
#include "editor/database/names.h"
#include "editor/dwg/dimension_style_table.h"

#include <algorithm>
#include <string>

using namespace dwg::object_type;

void AcDbDatabase::Impl::adopt() {
    opened.clear();
    erased.clear();
    tables.clear();
    forgetUsedLayers();
    for (const std::uint16_t type : {blockControl, layerControl, styleControl, linetypeControl, viewControl, ucsControl,
                                     viewportControl, applicationControl, dimensionStyleControl}) {
        const dwg::Object* const found = drawing.firstOfType(type);
        if (found != nullptr)
            tables[type] = found->handle;
    }
    modelSpaceHandle = drawing.modelSpace();
    paperSpaceHandle = drawing.paperSpace();
}

dwg::Object* AcDbDatabase::Impl::live(dwg::Handle handle) {
    return isErased(handle) ? nullptr : drawing.find(handle);
}

const dwg::Object* AcDbDatabase::Impl::live(dwg::Handle handle) const {
    return isErased(handle) ? nullptr : drawing.find(handle);
}

dwg::Object* AcDbDatabase::Impl::change(dwg::Handle handle) {
    if (journal)
        journal->touch(handle);
    dwg::Object* const object = drawing.find(handle);
    if (object != nullptr && object->isEntity())
        forgetUsedLayers();
    return object;
}

dwg::Object& AcDbDatabase::Impl::add(dwg::Object object) {
    if (journal)
        journal->touch(object.handle);
    forgetUsedLayers();
    return *drawing.add(std::move(object));
}

void AcDbDatabase::Impl::changeHeader() {
    if (journal)
        journal->touchHeader();
}

void AcDbDatabase::Impl::changeClasses() {
    if (journal)
        journal->touchClasses();
}

void AcDbDatabase::Impl::markErased(dwg::Handle handle, bool isErasedNow) {
    if (const dwg::Object* const object = drawing.find(handle); object != nullptr && object->isEntity())
        forgetUsedLayers();
    if (isErasedNow)
        erased.insert(handle);
    else
        erased.erase(handle);
}

std::unique_ptr<dwg::Object> AcDbDatabase::Impl::takeOut(dwg::Handle handle) {
    forgetUsedLayers();
    dwg::Object* const object = drawing.find(handle);
    auto taken = std::make_unique<dwg::Object>(std::move(*object));
    taken->handle = handle;
    if (const auto wrapper = opened.find(handle); wrapper != opened.end()) {
        AcDbObject::Impl& state = *wrapper->second->impl();
        state.own = std::make_unique<dwg::Object>(*taken);
        state.object = state.own.get();
    }
    drawing.remove(handle);
    return taken;
}

void AcDbDatabase::Impl::putBack(dwg::Object object) {
    forgetUsedLayers();
    dwg::Object& there = *drawing.add(std::move(object));
    if (const auto wrapper = opened.find(there.handle); wrapper != opened.end()) {
        AcDbObject::Impl& state = *wrapper->second->impl();
        state.object = &there;
        state.own.reset();
    }
}

dwg::Object& AcDbDatabase::Impl::addAnonymousBlock() {
    std::wstring name;
    for (int number = 1; name.empty() || findRecord(blockControl, name) != 0; ++number)
        name = L"*U" + std::to_wstring(number);
    dwg::BlockHeader definition;
    definition.head.name = name;
    definition.anonymous = true;
    dwg::Object& control = *table(blockControl);
    dwg::Object object;
    object.handle = drawing.newHandle();
    object.type = blockHeader;
    object.owner = {dwg::handle_code::softPointer, control.handle};
    object.body = std::move(definition);
    dwg::Object& added = add(std::move(object));
    enter(control, added.handle);
    complete(added);
    return added;
}

int AcDbDatabase::Impl::open(AcDbObject*& result, dwg::Handle handle, AcDb::OpenMode mode) {
    result = nullptr;
    if (handle == 0)
        return Acad::eNullObjectId;
    if (isErased(handle))
        return Acad::eWasErased;
    auto slot = opened.find(handle);
    // What left the drawing is its interface object's own.
    if (slot == opened.end() || slot->second->impl()->own) {
        dwg::Object* const object = drawing.find(handle);
        if (object == nullptr)
            return Acad::eInvalidKey;
        if (slot == opened.end())
            slot = opened.emplace(handle, editor::makeInterfaceObject(&self, drawing, *object)).first;
    }
    AcDbObject::Impl& state = *slot->second->impl();
    if (mode != AcDb::kForNotify && state.writing)
        return Acad::eWasOpenForWrite;
    if (mode == AcDb::kForWrite) {
        if (state.readers > 0)
            return Acad::eWasOpenForRead;
        change(handle);
        state.writing = true;
    } else {
        ++state.readers;
    }
    result = slot->second.get();
    return eOk;
}

void AcDbDatabase::Impl::expectOpened(std::size_t more) {
    if (more > opened.size())
        opened.reserve(opened.size() + more);
}

dwg::Object& AcDbDatabase::Impl::take(AcDbObject* object) {
    AcDbObject::Impl& state = *object->impl();
    state.own->handle = drawing.newHandle();
    dwg::Object& added = add(std::move(*state.own));
    state.own.reset();
    state.object = &added;
    state.database = &self;
    state.writing = true;
    opened[added.handle].reset(object);
    return added;
}

dwg::Object* AcDbDatabase::Impl::table(std::uint16_t type) {
    const auto found = tables.find(type);
    return found == tables.end() ? nullptr : drawing.find(found->second);
}

const dwg::Object* AcDbDatabase::Impl::table(std::uint16_t type) const {
    return const_cast<Impl*>(this)->table(type);
}

std::vector<dwg::Handle> AcDbDatabase::Impl::records(const dwg::Object& table) {
    std::vector<dwg::Handle> handles;
    const auto append = [&](const dwg::HandleRef& reference) {
        if (!reference.isNull())
            handles.push_back(reference.value);
    };
    if (const auto* const blocks = table.as<dwg::BlockControl>()) {
        append(blocks->modelSpace);
        append(blocks->paperSpace);
        std::ranges::for_each(blocks->records, append);
    } else if (const auto* const control = table.as<dwg::TableControl>()) {
        if (table.type == linetypeControl)
            std::ranges::for_each(control->standing, append);
        std::ranges::for_each(control->records, append);
    } else if (const auto* const carried = table.as<dwg::Carried>(); table.type == dimensionStyleControl) {
        if (carried != nullptr)
            std::ranges::for_each(dwg::dimensionStyles(*carried), append);
    }
    return handles;
}

dwg::Handle AcDbDatabase::Impl::findRecord(std::uint16_t tableType, std::wstring_view name) const {
    const dwg::Object* const control = table(tableType);
    if (control == nullptr)
        return 0;
    for (const dwg::Handle handle : records(*control)) {
        const dwg::Object* const record = live(handle);
        const dwg::RecordHead* const head = record == nullptr ? nullptr : editor::recordHead(*record);
        if (head != nullptr && (head->name == name || editor::sameName(head->name, name)))
            return handle;
    }
    return 0;
}

void AcDbDatabase::Impl::enter(dwg::Object& table, dwg::Handle record) {
    const dwg::HandleRef reference{dwg::handle_code::softOwner, record};
    change(table.handle);
    if (auto* const blocks = table.as<dwg::BlockControl>())
        blocks->records.push_back(reference);
    else if (auto* const control = table.as<dwg::TableControl>())
        control->records.push_back(reference);
    else if (auto* const carried = table.as<dwg::Carried>(); carried != nullptr && table.type == dimensionStyleControl)
        dwg::addDimensionStyle(*carried, record);
    table.changed();
}
