#include "editor/dwg/model.h"

#include "editor/dwg/code_page.h"

#include <algorithm>

namespace dwg {

namespace {

constexpr auto handleOf = [](const std::unique_ptr<Object>& object) { return object->handle; };

std::string narrowName(const std::wstring& name) {
    return CodePage().encode(name);
}

} // namespace

Object* Drawing::find(Handle handle) {
    const auto found = index.find(handle);
    return found == index.end() ? nullptr : found->second;
}

const Object* Drawing::find(Handle handle) const {
    const auto found = index.find(handle);
    return found == index.end() ? nullptr : found->second;
}

Object* Drawing::add(Object object) {
    if (object.handle == 0 || index.contains(object.handle))
        return nullptr;
    raiseHandleSeed(object.handle + 1);
    auto owned = std::make_unique<Object>(std::move(object));
    Object* const added = owned.get();
    const auto place = byHandle.empty() || byHandle.back()->handle < added->handle
                           ? byHandle.end()
                           : std::ranges::lower_bound(byHandle, added->handle, {}, handleOf);
    byHandle.insert(place, std::move(owned));
    index.emplace(added->handle, added);
    return added;
}

void Drawing::remove(Handle handle) {
    if (index.erase(handle) != 0)
        byHandle.erase(std::ranges::lower_bound(byHandle, handle, {}, handleOf));
}

Handle Drawing::newHandle() {
    return seed++;
}

void Drawing::raiseHandleSeed(Handle atLeast) {
    seed = std::max(seed, atLeast);
}

const Object* Drawing::firstOfType(std::uint16_t type) const {
    const auto found = std::ranges::find_if(byHandle, [type](const auto& object) { return object->type == type; });
    return found == byHandle.end() ? nullptr : found->get();
}

Object* Drawing::firstOfType(std::uint16_t type) {
    return const_cast<Object*>(std::as_const(*this).firstOfType(type));
}

const BlockControl* Drawing::blocks() const {
    const Object* const table = firstOfType(object_type::blockControl);
    return table == nullptr ? nullptr : table->as<BlockControl>();
}

Handle Drawing::modelSpace() const {
    const BlockControl* const table = blocks();
    return table == nullptr ? 0 : table->modelSpace.value;
}

Handle Drawing::paperSpace() const {
    const BlockControl* const table = blocks();
    return table == nullptr ? 0 : table->paperSpace.value;
}

const Object* Drawing::namedObjects() const {
    const auto found = std::ranges::find_if(
        byHandle, [](const auto& object) { return object->type == object_type::dictionary && object->owner.isNull(); });
    return found == byHandle.end() ? nullptr : found->get();
}

Object* Drawing::namedObjects() {
    return const_cast<Object*>(std::as_const(*this).namedObjects());
}

const ObjectClass* Drawing::classOf(const Object& object) const {
    if (object.type < object_type::firstClass)
        return nullptr;
    const auto found = std::ranges::lower_bound(classes, object.type, {}, &ObjectClass::number);
    return found == classes.end() || found->number != object.type ? nullptr : &*found;
}

std::uint16_t Drawing::classNumber(const ObjectClass& wanted) {
    const auto found = std::ranges::find(classes, wanted.dxfName, &ObjectClass::dxfName);
    if (found != classes.end())
        return found->number;
    ObjectClass added = wanted;
    added.number = classes.empty() ? object_type::firstClass : static_cast<std::uint16_t>(classes.back().number + 1);
    classes.push_back(std::move(added));
    return classes.back().number;
}

void Drawing::setOwner(Object& entity, Handle owner) const {
    entity.owner = {handle_code::softPointer, owner};
    if (entity.entity) {
        const bool inModel = owner != 0 && owner == modelSpace();
        const bool inPaper = owner != 0 && owner == paperSpace();
        entity.entity->space = inModel ? Space::model : inPaper ? Space::paper : Space::owner;
    }
    entity.changed();
}

std::string objectPlace(Handle handle) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    do {
        text.insert(text.begin(), digits[handle & 0xF]);
        handle >>= 4;
    } while (handle != 0);
    return "object " + text;
}

std::string typeName(const Drawing& drawing, const Object& object) {
    if (const std::optional<std::string_view> name = fixedTypeName(object.type))
        return std::string(*name);
    if (const ObjectClass* const found = drawing.classOf(object))
        return narrowName(found->dxfName);
    return object.isEntity() ? "UNKNOWN_ENT" : "UNKNOWN_OBJ";
}

} // namespace dwg
