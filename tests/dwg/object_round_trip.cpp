#include "tests/dwg/model_support.h"

#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace dwg;

/// The record with zero bits from `count` on: what fills up the last byte is no data, and some writers leave old bits.
std::vector<std::uint8_t> withoutFilling(std::vector<std::uint8_t> record, std::size_t count) {
    if (record.size() == (count + 7) / 8 && count % 8 != 0)
        record.back() &= static_cast<std::uint8_t>(0xFF00 >> count % 8);
    return record;
}

/// Objects of the real drawings whose bits aren't the shortest spelling of their values, with the reason.
const std::map<std::pair<std::string, Handle>, std::string> otherSpellings = {
    {{"PolyLine2D.dwg", 0x12D}, "its names escape characters that the drawing's code page has"},
    {{"entities-2d.dwg", 0x3B}, "an alignment point at the origin is stored"},
    {{"entities-2d.dwg", 0x42}, "an alignment point at the origin is stored"},
    {{"entities-3d.dwg", 0x3B}, "an alignment point at the origin is stored"},
    {{"entities-3d.dwg", 0x42}, "an alignment point at the origin is stored"},
    {{"example_2004.dwg", 0x44C}, "its text escapes characters that the drawing's code page has"},
    {{"example_r14.dwg", 0xD5C}, "its text escapes characters that the drawing's code page has"},
};

std::size_t roundTripAll(const std::filesystem::path& path) {
    const auto file = DrawingFile::open(path);
    if (!file.ok())
        return 0;
    const auto drawing = readDrawing(*file);
    if (!drawing.ok())
        return 0;
    for (const Finding& finding : drawing->findings)
        ADD_FAILURE() << path << " " << finding.place << ": " << finding.reason;
    const ObjectContext context(*drawing);
    for (const auto& object : drawing->objects()) {
        const auto record = encodeObject(*object, context);
        EXPECT_TRUE(record.ok());
        if (otherSpellings.contains({path.filename(), object->handle})) {
            EXPECT_NE(tests::hex(object->record), tests::hex(record->bytes));
            const auto again = decodeObject(record->bytes, context);
            EXPECT_TRUE(again.ok());
            EXPECT_EQ(tests::hex(encodeObject(*again, context)->bytes), tests::hex(record->bytes));
            continue;
        }
        const auto read = withoutFilling(object->record, record->count);
        EXPECT_TRUE(read == record->bytes)
            << path << " " << typeName(*drawing, *object) << " " << std::hex << object->handle << "\n"
            << tests::hex(read) << "\n"
            << tests::hex(record->bytes);
    }
    return drawing->objects().size();
}

TEST(ObjectRoundTrip, EveryObjectOfRealDrawingsGivesItsOwnBitsAgain) {
    const auto files = tests::realDrawings();
    if (files.empty())
        GTEST_SKIP() << "no folder of real drawings";
    for (const auto& path : files)
        EXPECT_GT(roundTripAll(path), 0u) << path;
}

TEST(ObjectRoundTrip, OnlyTypesThatAreNotDecodedAreCarriedInRealDrawings) {
    const auto files = tests::realDrawings();
    if (files.empty())
        GTEST_SKIP() << "no folder of real drawings";
    for (const auto& path : files) {
        const auto drawing = readDrawing(*DrawingFile::open(path));
        ASSERT_TRUE(drawing.ok()) << path;
        for (const auto& object : drawing->objects()) {
            const bool decoded =
                object->type < object_type::firstClass &&
                (object->type <= object_type::trace || object->type == object_type::ellipse ||
                 (object->type >= object_type::ray && object->type <= object_type::dictionary) ||
                 object->type == object_type::spline || object->type == object_type::hatch ||
                 (object->type >= object_type::multilineText && object->type <= object_type::viewportEntityHeader &&
                  object->type != 46 && object->type != 47 && object->type != object_type::dimensionStyleControl) ||
                 object->type == object_type::lightweightPolyline);
            EXPECT_FALSE(decoded && object->as<Carried>() != nullptr) << path << " " << typeName(*drawing, *object);
        }
    }
}

} // namespace
