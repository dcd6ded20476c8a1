#include "tests/dwg/model_support.h"

#include "editor/dwg/read_drawing.h"

#include <gtest/gtest.h>

namespace {

using namespace dwg;

TEST(ModelLinks, LinkingARealDrawingAsItWasReadChangesNothing) {
    const auto files = tests::drawingsOf2000();
    if (files.empty())
        GTEST_SKIP() << "no folder of real drawings";
    for (const auto& path : files) {
        auto drawing = readDrawing(*DrawingFile::open(path));
        ASSERT_TRUE(drawing.ok()) << path;
        linkEntities(*drawing);
        for (const auto& object : drawing->objects())
            EXPECT_FALSE(object->record.empty())
                << path << " " << typeName(*drawing, *object) << " " << objectPlace(object->handle);
        ASSERT_NE(drawing->namedObjects(), nullptr) << path;
        EXPECT_NE(drawing->modelSpace(), 0u) << path;
    }
}

} // namespace
