#include "tests/database/only_the_summary.h"

#include "editor/database/database_state.h"
#include "editor/sdk/db.h"

#include <gtest/gtest.h>

namespace tests {

void expectOnlyTheSummaryChanged(const std::filesystem::path& from, const std::filesystem::path& to) {
    AcDbDatabase before(false), after(false);
    ASSERT_EQ(before.readDwgFile(from.wstring().c_str()), eOk);
    ASSERT_EQ(after.readDwgFile(to.wstring().c_str()), eOk);
    const AcDbDatabase::Impl& old = *before.impl();
    const AcDbDatabase::Impl& fresh = *after.impl();
    EXPECT_EQ(fresh.drawing.release, old.drawing.release);
    EXPECT_EQ(fresh.pictures, old.pictures);
    dwg::HeaderVariables header = fresh.header;
    header.HANDSEED = old.header.HANDSEED; // a summary that is an object may be a new one
    EXPECT_EQ(header, old.header);
    const dwg::Object* const names = fresh.drawing.namedObjects();
    for (const auto& object : old.drawing.objects()) {
        const dwg::Object* const same = fresh.drawing.find(object->handle);
        ASSERT_NE(same, nullptr) << std::hex << object->handle;
        const bool isSummary = old.drawing.release < dwg::Release::r2004 &&
                               (same == names || (names != nullptr && same->as<dwg::DataRecord>() != nullptr &&
                                                  same->owner.value == names->handle));
        if (!isSummary) {
            ASSERT_EQ(same->record, object->record) << std::hex << object->handle;
        }
    }
    EXPECT_LE(fresh.drawing.objects().size(), old.drawing.objects().size() + 1);
}

} // namespace tests
