#include "editor/dwg/read_drawing.h"
#include "editor/dwg/reading_limits.h"

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
                link(*object, block->entities, {block->first, block->last}, entitiesOf[object->handle], false);
            else if (OwnedChain* const chain = ownedChain(*object); chain != nullptr && hasParts(*object))
                link(*object, chain->parts, {chain->first, chain->last}, partsOf[object->handle], true);
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

    struct Ends {
        HandleRef first, last;
    };

    bool belongs(const Object& owner, Handle member, bool parts) const {
        const Object* const object = drawing.find(member);
        return object != nullptr && object->isEntity() && !isFrame(*object) && isSubEntity(object->type) == parts &&
               object->owner.value == owner.handle;
    }

    void report(const Object& owner, Handle member) {
        addFinding(drawing.findings, {objectPlace(owner.handle),
                                      "its entities lead to " + objectPlace(member) + ", which isn't its own", 0});
    }

    /// The chain that the ends name. Where it leads astray it ends.
    std::vector<Handle> followed(const Object& owner, const Ends& ends, bool parts) {
        std::vector<Handle> chain;
        std::unordered_set<Handle> met;
        Handle current = ends.first.value;
        while (current != 0) {
            if (!belongs(owner, current, parts) || !met.insert(current).second) {
                report(owner, current);
                break;
            }
            chain.push_back(current);
            if (current == ends.last.value)
                break;
            const EntityData& entity = *drawing.find(current)->entity;
            current = entity.noLinks ? current + 1 : entity.next.value;
        }
        return chain;
    }

    /// The members of a list that are what it says.
    std::vector<Handle> checked(const Object& owner, const std::vector<Handle>& list, bool parts) {
        std::vector<Handle> members;
        members.reserve(list.size());
        std::unordered_set<Handle> met;
        for (const Handle member : list) {
            if (member == 0)
                continue;
            if (belongs(owner, member, parts) && met.insert(member).second)
                members.push_back(member);
            else
                report(owner, member);
        }
        return members;
    }

    /// What names the owner and isn't among the members comes behind, in the order of handles.
    void link(const Object& owner, std::vector<Handle>& members, const Ends& ends, const std::vector<Handle>& owned,
              bool parts) {
        members = drawing.release <= Release::r2000 ? followed(owner, ends, parts) : checked(owner, members, parts);
        if (members.size() >= owned.size())
            return;
        addFinding(drawing.findings,
                   {objectPlace(owner.handle),
                    std::to_string(owned.size() - members.size()) + " entities are its own and not in its list; added",
                    0});
        const std::unordered_set<Handle> met(members.begin(), members.end());
        for (const Handle handle : owned) {
            if (!met.contains(handle))
                members.push_back(handle);
        }
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
