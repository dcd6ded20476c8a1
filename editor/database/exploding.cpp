#include "editor/database/exploding.h"

#include "editor/database/database_state.h"
#include "editor/database/transforming.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace editor {

using namespace dwg::object_type;

namespace {

constexpr std::uint8_t invisibleAttribute = 1, constantAttribute = 2;

/// Takes a reference apart: first everything is worked out, then it enters the drawing.
class Exploder {
public:
    Exploder(AcDbDatabase::Impl& of, const dwg::Object& what)
        : database(of), reference(what), insert(*what.as<dwg::Insert>()),
          block(*of.drawing.body<dwg::BlockHeader>(insert.block)) {}

    /// False where nothing would come of it.
    bool plan() {
        const AcGePoint3d base = toPoint(block.basePoint);
        const Transform map = planeToWorld(insert.extrusion)
                                  .moved(toPoint(insert.position))
                                  .turned(insert.rotation)
                                  .scaled(toVector(insert.scale))
                                  .moved({-base.x, -base.y, -base.z});
        for (const dwg::Handle handle : block.entities) {
            if (const dwg::Object* const entity = database.live(handle); entity != nullptr && entity->isEntity())
                planEntity(*entity, map);
        }
        const bool isDivided = !trees.empty();
        planAttributes();
        return isDivided || !trees.empty() || left.empty();
    }

    std::vector<dwg::Handle> commit() {
        std::vector<dwg::Handle> made;
        for (EntityTree& tree : trees)
            made.push_back(enter(std::move(tree), reference.owner.value));
        if (!left.empty())
            made.push_back(enterLeft());
        dwg::Object& owner = *database.change(reference.owner.value);
        auto& entities = owner.as<dwg::BlockHeader>()->entities;
        entities.insert(entities.end(), made.begin(), made.end());
        owner.changed();
        return made;
    }

private:
    EntityTree copyOf(const dwg::Object& entity) const {
        EntityTree tree{entity, {}};
        const auto take = [&](dwg::Handle handle) {
            const dwg::Object* const part = database.live(handle);
            if (part != nullptr && part->isEntity())
                tree.parts.push_back(*part);
        };
        if (const dwg::OwnedChain* const chain = dwg::ownedChain(entity)) {
            std::ranges::for_each(chain->parts, take);
            take(chain->sequenceEnd.value);
        }
        return tree;
    }

    void planEntity(const dwg::Object& entity, const Transform& map) {
        EntityTree tree = copyOf(entity);
        if (const auto* const definition = entity.as<dwg::AttributeDefinition>()) {
            if ((definition->attribute.flags & constantAttribute) == 0)
                return;
            makeText(tree.whole, definition->attribute.text);
        }
        if (transformTree(tree, map))
            trees.push_back(std::move(tree));
        else
            left.push_back(copyOf(entity));
    }

    void planAttributes() {
        for (const dwg::Handle handle : insert.attributes.parts) {
            const dwg::Object* const part = database.live(handle);
            const auto* const attribute = part == nullptr ? nullptr : part->as<dwg::Attribute>();
            if (attribute == nullptr || (attribute->flags & invisibleAttribute) != 0 || attribute->text.value.empty())
                continue;
            EntityTree tree{*part, {}};
            makeText(tree.whole, attribute->text);
            trees.push_back(std::move(tree));
        }
    }

    static void makeText(dwg::Object& object, dwg::TextFields fields) {
        object.type = text;
        object.body = dwg::Text{std::move(fields)};
    }

    /// Gives the copy handles of its own and makes it part of a definition.
    dwg::Handle enter(EntityTree tree, dwg::Handle owner) {
        std::unordered_map<dwg::Handle, dwg::Handle> fresh;
        const auto rename = [&](dwg::Object& object) {
            const dwg::Handle handle = database.drawing.newHandle();
            fresh[object.handle] = handle;
            object.handle = handle;
        };
        rename(tree.whole);
        std::ranges::for_each(tree.parts, rename);
        const auto settle = [&](dwg::Object& object) {
            // What reacts on the original or hangs on it stays with it.
            object.reactors.clear();
            object.extensionDictionary.value = 0;
            dwg::mapReferences(object, [&](dwg::Handle handle) {
                const auto found = fresh.find(handle);
                return found == fresh.end() ? handle : found->second;
            });
            object.changed();
        };
        settle(tree.whole);
        std::ranges::for_each(tree.parts, settle);
        const dwg::Handle handle = tree.whole.handle;
        dwg::Object& added = database.add(std::move(tree.whole));
        database.drawing.setOwner(added, owner);
        for (dwg::Object& part : tree.parts)
            database.drawing.setOwner(database.add(std::move(part)), handle);
        return handle;
    }

    /// The reference to what could not be carried over.
    dwg::Handle enterLeft() {
        dwg::Object& definition = database.addAnonymousBlock();
        std::vector<dwg::Handle> entities;
        for (EntityTree& tree : left)
            entities.push_back(enter(std::move(tree), definition.handle));
        auto& header = *definition.as<dwg::BlockHeader>();
        header.basePoint = block.basePoint;
        header.entities = std::move(entities);
        EntityTree tree{reference, {}};
        auto& again = *tree.whole.as<dwg::Insert>();
        again.block.value = definition.handle;
        again.attributes = {};
        again.hasAttributes = false;
        return enter(std::move(tree), reference.owner.value);
    }

    AcDbDatabase::Impl& database;
    const dwg::Object& reference;
    const dwg::Insert& insert;
    const dwg::BlockHeader& block;
    std::vector<EntityTree> trees, left;
};

} // namespace

Explosion explodeReference(AcDbObjectId reference, std::vector<AcDbObjectId>& made) {
    made.clear();
    if (reference.database == nullptr)
        return Explosion::NotAReference;
    AcDbDatabase::Impl& database = *reference.database->impl();
    const dwg::Object* const object = database.live(reference.handle);
    const auto* const insert = object == nullptr ? nullptr : object->as<dwg::Insert>();
    if (insert == nullptr)
        return Explosion::NotAReference;
    const dwg::Object* const definition = database.live(insert->block.value);
    const auto* const block = definition == nullptr ? nullptr : definition->as<dwg::BlockHeader>();
    if (block == nullptr || database.drawing.body<dwg::BlockHeader>(object->owner) == nullptr)
        return Explosion::NotAReference;
    if (block->isExternalReference)
        return Explosion::ExternalReference;
    if (insert->rows > 1 || insert->columns > 1)
        return Explosion::Array;

    AcDbObject* opened = nullptr;
    if (database.open(opened, reference.handle, AcDb::kForWrite) != eOk)
        return Explosion::Refused;
    Exploder exploder(database, *object);
    Explosion result = Explosion::Indivisible;
    if (exploder.plan()) {
        for (const dwg::Handle handle : exploder.commit())
            made.push_back(database.id(handle));
        opened->erase();
        result = Explosion::Done;
    }
    opened->close();
    return result;
}

} // namespace editor
