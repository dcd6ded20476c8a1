#pragma once

#include "editor/sdk/db.h"

#include <memory>

/// Closes an object at the end of its scope.
struct CloseObject {
    void operator()(AcDbObject* object) const { object->close(); }
};
template <class T> using Opened = std::unique_ptr<T, CloseObject>;

/// Calls `visit` with every record of a table in its order, open for read; erased ones are passed over.
template <class Visit> void ForEachRecord(const AcDbSymbolTable& table, Visit&& visit) {
    AcDbSymbolTableIterator* made = nullptr;
    if (table.newIterator(made) != eOk)
        return;
    for (const std::unique_ptr<AcDbSymbolTableIterator> walk(made); !walk->done(); walk->step()) {
        AcDbSymbolTableRecord* record = nullptr;
        if (walk->getRecord(record, AcDb::kForRead) != eOk)
            continue;
        const Opened<AcDbSymbolTableRecord> opened(record);
        visit(*record);
    }
}

/// Calls `visit` with every entity of every block record, spaces and nested definitions alike, open for read. The
/// entity is closed where `visit` gives true.
template <class Visit> void ForEachEntity(AcDbDatabase& database, Visit&& visit) {
    AcDbBlockTable* table = nullptr;
    if (database.getBlockTable(table) != eOk)
        return;
    const Opened<AcDbBlockTable> blocks(table);
    ForEachRecord(*table, [&](const AcDbSymbolTableRecord& record) {
        AcDbBlockTableRecordIterator* made = nullptr;
        const auto* const block = dynamic_cast<const AcDbBlockTableRecord*>(&record);
        if (block == nullptr || block->newIterator(made) != eOk)
            return;
        for (const std::unique_ptr<AcDbBlockTableRecordIterator> walk(made); !walk->done(); walk->step()) {
            AcDbEntity* entity = nullptr;
            if (walk->getEntity(entity, AcDb::kForRead) == eOk && visit(*entity))
                entity->close();
        }
    });
}
