#pragma once

#include "editor/sdk/db.h"

#include <string>
#include <vector>

namespace editor {

enum class Purgeable { Block, Layer, Linetype, TextStyle };

struct UnusedRecord {
    AcDbObjectId record;
    std::wstring name;
};

/// Records of a table that nothing in the drawing needs and that may be erased, in the table's order.
std::vector<UnusedRecord> unusedRecords(AcDbDatabase& database, Purgeable kind);

} // namespace editor
