#include "editor/sdk/db.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Text.h"

#include <memory>

namespace {

/// The record of `pendingBlockName` in the current drawing, open for read, or null.
AcDbSymbolTableRecord* OpenPendingDefinition() {
    AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase();
    AcDbBlockTable* table = nullptr;
    if (drawing == nullptr || drawing->getBlockTable(table) != eOk)
        return nullptr;
    AcDbSymbolTableIterator* made = nullptr;
    AcDbSymbolTableRecord* found = nullptr;
    if (table->newIterator(made) == eOk) {
        const std::unique_ptr<AcDbSymbolTableIterator> iterator(made);
        for (iterator->start(true, true); !iterator->done() && found == nullptr; iterator->step(true, true)) {
            AcDbSymbolTableRecord* record = nullptr;
            if (iterator->getRecord(record, AcDb::kForRead) != eOk)
                continue;
            std::wstring name;
            if (record->getName(name) == eOk && platform::EqualNoCase(name, placement.pendingBlockName))
                found = record;
            else
                record->close();
        }
    }
    table->close();
    return found;
}

} // namespace

bool BlockExistsInDrawing() {
    AcDbSymbolTableRecord* const record = OpenPendingDefinition();
    if (record == nullptr)
        return false;
    record->close();
    return true;
}

void EraseBlockDefinition() {
    AcDbSymbolTableRecord* const record = OpenPendingDefinition();
    if (record == nullptr)
        return;
    record->upgradeOpen();
    record->erase(true);
    record->close();
}
