#include "editor/dwg/model.h"

namespace dwg {

namespace {

void setLinks(Object& object, Handle previous, Handle next) {
    EntityData& entity = *object.entity;
    const bool adjacent = previous + 1 == object.handle && next == object.handle + 1;
    const bool same = entity.noLinks ? adjacent : entity.previous.value == previous && entity.next.value == next;
    if (same)
        return;
    entity.noLinks = adjacent;
    entity.previous = {handle_code::softPointer, previous};
    entity.next = {handle_code::softPointer, next};
    object.changed();
}

void setEnd(Object& owner, HandleRef& end, Handle wanted) {
    if (end.value == wanted)
        return;
    end = {handle_code::softPointer, wanted};
    owner.changed();
}

/// Only members that exist and are entities take part.
void linkChain(Drawing& drawing, Object& owner, const std::vector<Handle>& members, HandleRef& first, HandleRef& last) {
    std::vector<Object*> chain;
    chain.reserve(members.size());
    for (const Handle member : members) {
        Object* const object = drawing.find(member);
        if (object != nullptr && object->isEntity())
            chain.push_back(object);
    }
    for (std::size_t i = 0; i < chain.size(); ++i)
        setLinks(*chain[i], i == 0 ? 0 : chain[i - 1]->handle, i + 1 == chain.size() ? 0 : chain[i + 1]->handle);
    setEnd(owner, first, chain.empty() ? 0 : chain.front()->handle);
    setEnd(owner, last, chain.empty() ? 0 : chain.back()->handle);
}

} // namespace

OwnedChain* ownedChain(Object& object) {
    if (auto* const insert = object.as<Insert>())
        return &insert->attributes;
    if (auto* const polyline = object.as<Polyline2d>())
        return &polyline->vertices;
    if (auto* const polyline = object.as<Polyline3d>())
        return &polyline->vertices;
    if (auto* const mesh = object.as<PolyfaceMesh>())
        return &mesh->vertices;
    if (auto* const mesh = object.as<PolygonMesh>())
        return &mesh->vertices;
    return nullptr;
}

const OwnedChain* ownedChain(const Object& object) {
    return ownedChain(const_cast<Object&>(object));
}

void linkEntities(Drawing& drawing) {
    for (const auto& object : drawing.objects()) {
        if (auto* const block = object->as<BlockHeader>()) {
            linkChain(drawing, *object, block->entities, block->first, block->last);
        } else if (OwnedChain* const chain = ownedChain(*object)) {
            if (auto* const insert = object->as<Insert>();
                insert != nullptr && insert->hasAttributes == chain->parts.empty()) {
                insert->hasAttributes = !chain->parts.empty();
                object->changed();
            }
            linkChain(drawing, *object, chain->parts, chain->first, chain->last);
        }
    }
}

} // namespace dwg
