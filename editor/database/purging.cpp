#include "editor/database/purging.h"

#include "editor/database/database_state.h"
#include "editor/database/references.h"

#include <algorithm>
#include <unordered_set>

namespace editor {

using namespace dwg::object_type;

namespace {

std::uint16_t tableOf(Purgeable kind) {
    switch (kind) {
    case Purgeable::Block:
        return blockControl;
    case Purgeable::Layer:
        return layerControl;
    case Purgeable::Linetype:
        return linetypeControl;
    case Purgeable::TextStyle:
        break;
    }
    return styleControl;
}

/// All that some object names, but for what merely lists or owns it.
std::unordered_set<dwg::Handle> namedHandles(const AcDbDatabase::Impl& database) {
    std::unordered_set<dwg::Handle> named;
    for (const auto& object : database.drawing.objects()) {
        const bool lists = object->as<dwg::TableControl>() != nullptr || object->as<dwg::BlockControl>() != nullptr ||
                           object->as<dwg::Dictionary>() != nullptr || object->type == dimensionStyleControl;
        if (lists || database.isErased(object->handle))
            continue;
        visitReferences(*object, [&](dwg::Handle handle) {
            if (handle != object->handle && handle != object->owner.value)
                named.insert(handle);
        });
    }
    return named;
}

} // namespace

std::vector<UnusedRecord> unusedRecords(AcDbDatabase& database, Purgeable kind) {
    std::vector<UnusedRecord> unused;
    AcDbDatabase::Impl& state = *database.impl();
    const dwg::Object* const table = state.table(tableOf(kind));
    if (table == nullptr)
        return unused;
    const auto named = namedHandles(state);
    for (const dwg::Handle handle : AcDbDatabase::Impl::records(*table)) {
        const dwg::Object* const record = state.live(handle);
        const dwg::RecordHead* const head = record == nullptr ? nullptr : recordHead(*record);
        // The full look, object by object, is for what the quick one lets through.
        if (head != nullptr && !named.contains(handle) && !head->dependent && state.refusalToErase(*record) == eOk)
            unused.push_back({state.id(handle), head->name});
    }
    return unused;
}

} // namespace editor
