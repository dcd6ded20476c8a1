#include "editor/database/space_entities.h"

#include "editor/database/database_state.h"

#include <algorithm>

namespace editor {

namespace {

const dwg::BlockHeader* modelSpaceOf(const AcDbDatabase::Impl& database) {
    return database.drawing.body<dwg::BlockHeader>({0, database.modelSpace()});
}

bool isEntityOf(const AcDbDatabase::Impl& database, dwg::Handle handle) {
    const dwg::Object* const object = database.live(handle);
    return object != nullptr && object->isEntity();
}

} // namespace

std::vector<AcDbObjectId> modelSpaceEntities(const AcDbDatabase& database) {
    std::vector<AcDbObjectId> entities;
    const AcDbDatabase::Impl& state = *database.impl();
    const dwg::BlockHeader* const space = modelSpaceOf(state);
    if (space == nullptr)
        return entities;
    for (const dwg::Handle handle : space->entities) {
        if (isEntityOf(state, handle))
            entities.push_back(state.id(handle));
    }
    return entities;
}

AcDbObjectId lastEntity(const AcDbDatabase& database) {
    const AcDbDatabase::Impl& state = *database.impl();
    const dwg::BlockHeader* const space = modelSpaceOf(state);
    if (space == nullptr)
        return {};
    const auto last = std::find_if(space->entities.rbegin(), space->entities.rend(),
                                   [&](dwg::Handle handle) { return isEntityOf(state, handle); });
    return last == space->entities.rend() ? AcDbObjectId() : state.id(*last);
}

bool isEntity(AcDbObjectId id) {
    return id.database != nullptr && isEntityOf(*id.database->impl(), id.handle);
}

} // namespace editor
