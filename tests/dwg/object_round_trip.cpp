#include "tests/dwg/model_support.h"

#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace dwg;

TEST(ObjectRoundTrip, EveryObjectOfRealDrawingsGivesItsOwnBitsAgain) {
    const auto files = tests::drawingsOf2000();
    if (files.empty())
        GTEST_SKIP() << "no folder of real drawings";
    std::map<std::string, std::pair<int, int>> counts;
    for (const auto& path : files) {
        const auto file = DrawingFile::open(path);
        ASSERT_TRUE(file.ok()) << path;
        const auto drawing = readDrawing(*file);
        ASSERT_TRUE(drawing.ok()) << path << ": " << drawing.error().reason;
        for (const Finding& finding : drawing->findings)
            std::cout << path.filename() << " " << finding.place << " " << finding.reason << "\n";
        const ObjectContext context(*drawing);
        for (const auto& object : drawing->objects()) {
            const auto record = encodeObject(*object, context);
            ASSERT_TRUE(record.ok());
            auto& [all, carried] = counts[typeName(*drawing, *object)];
            ++all;
            carried += object->as<Carried>() != nullptr;
            EXPECT_EQ(tests::hex(object->record), tests::hex(*record))
                << path << " " << typeName(*drawing, *object) << " " << std::hex << object->handle;
        }
    }
    for (const auto& [name, count] : counts)
        std::cout << name << " " << count.first << " carried " << count.second << "\n";
}

} // namespace
