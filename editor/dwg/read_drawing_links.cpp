#include "editor/dwg/read_drawing.h"

#include <unordered_set>

namespace dwg {

namespace {

class LinkResolver {
public:
    explicit LinkResolver(Drawing& target)
        : drawing(target), modelSpace(target.modelSpace()), paperSpace(target.paperSpace()) {}

    void run() {
        for (const auto& object : drawing.objects())
            resolveOwner(*object);
        for (const auto& object : drawing.objects()) {
            if (auto* const block = object->as<BlockHeader>())
                block->entities = members(*object, block->first, block->last, entitiesOf[object->handle], false);
            else if (OwnedChain* const chain = ownedChain(*object); chain != nullptr && hasParts(*object))
                chain->parts = members(*object, chain->first, chain->last, partsOf[object->handle], true);
        }
    }

private:
    static bool hasParts(const Object& object) {
        const auto* const insert = object.as<Insert>();
        return insert == nullptr || insert->hasAttributes;
    }

    static bool isFrame(const Object& object) {
        return object.type == object_type::block || object.type == object_type::endBlock ||
               object.type == object_type::sequenceEnd;
    }

    void resolveOwner(Object& object) {
        if (!object.isEntity())
            return;
        if (object.entity->space == Space::model)
            object.owner = {handle_code::softPointer, modelSpace};
        else if (object.entity->space == Space::paper)
            object.owner = {handle_code::softPointer, paperSpace};
        if (isFrame(object))
            return;
        (isSubEntity(object.type) ? partsOf : entitiesOf)[object.owner.value].push_back(object.handle);
    }

    /// The chain from `first` to `last`. Where it leads astray it ends, and what names the owner and wasn't met comes
    /// behind, in the order of handles.
    std::vector<Handle> members(const Object& owner, HandleRef first, HandleRef last, const std::vector<Handle>& owned,
                                bool parts) {
        std::vector<Handle> chain;
        std::unordered_set<Handle> met;
        Handle current = first.value;
        while (current != 0) {
            const Object* const object = drawing.find(current);
            if (object == nullptr || !object->isEntity() || isFrame(*object) || isSubEntity(object->type) != parts ||
                object->owner.value != owner.handle || !met.insert(current).second) {
                drawing.findings.push_back(
                    {objectPlace(owner.handle),
                     "its chain of entities leads to " + objectPlace(current) + ", which isn't its own", 0});
                break;
            }
            chain.push_back(current);
            if (current == last.value)
                break;
            current = object->entity->noLinks ? current + 1 : object->entity->next.value;
        }
        if (chain.size() < owned.size()) {
            drawing.findings.push_back(
                {objectPlace(owner.handle),
                 std::to_string(owned.size() - chain.size()) + " entities are its own and not in its chain; added", 0});
            for (const Handle handle : owned) {
                if (!met.contains(handle))
                    chain.push_back(handle);
            }
        }
        return chain;
    }

    Drawing& drawing;
    Handle modelSpace, paperSpace;
    /// By owner, ascending handles.
    std::unordered_map<Handle, std::vector<Handle>> entitiesOf, partsOf;
};

} // namespace

void resolveLinks(Drawing& drawing) {
    LinkResolver(drawing).run();
}

} // namespace dwg
