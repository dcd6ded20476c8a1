#include "tests/dwg/model_support.h"

#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"

#include <gtest/gtest.h>

#include <cstdlib>
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

/// Whether objects of the type are decoded, whatever they are.
bool isDecoded(const Object& object) {
    constexpr std::uint16_t tolerance = 46, multiline = 47;
    using namespace object_type;
    const auto within = [&](std::uint16_t first, std::uint16_t last) {
        return object.type >= first && object.type <= last;
    };
    return within(0, trace) || within(ellipse, object_type::spline) || within(ray, dictionary) ||
           (within(multilineText, viewportEntityHeader) && object.type != tolerance && object.type != multiline &&
            object.type != dimensionStyleControl) ||
           object.type == lightweightPolyline || object.type == hatch;
}

void roundTrip(const Drawing& drawing, const Object& object, const std::filesystem::path& path) {
    const ObjectContext context(drawing);
    const auto record = encodeObject(object, context);
    ASSERT_TRUE(record.ok());
    EXPECT_FALSE(isDecoded(object) && object.as<Carried>() != nullptr) << path << " " << typeName(drawing, object);
    if (otherSpellings.contains({path.filename(), object.handle})) {
        EXPECT_NE(tests::hex(object.record), tests::hex(record->bytes));
        const auto again = decodeObject(record->bytes, context);
        ASSERT_TRUE(again.ok());
        EXPECT_EQ(tests::hex(encodeObject(*again, context)->bytes), tests::hex(record->bytes));
        return;
    }
    const auto read = withoutFilling(object.record, record->count);
    EXPECT_TRUE(read == record->bytes) << path << " " << typeName(drawing, object) << " " << std::hex << object.handle
                                       << "\n"
                                       << tests::hex(read) << "\n"
                                       << tests::hex(record->bytes);
}

TEST(ObjectRoundTrip, EveryObjectOfRealDrawingsGivesItsOwnBitsAgainAndOnlyTypesThatAreNotDecodedAreCarried) {
    const auto files = tests::realDrawings();
    if (files.empty())
        GTEST_SKIP() << "no folder of real drawings";
    // Of the large one, whose objects are alike, every seventh; TESSARO_ALL_DRAWINGS=1 takes all.
    const bool all = std::getenv("TESSARO_ALL_DRAWINGS") != nullptr;
    for (const auto& path : files) {
        const auto drawing = readDrawing(*DrawingFile::open(path));
        ASSERT_TRUE(drawing.ok()) << path;
        for (const Finding& finding : drawing->findings)
            ADD_FAILURE() << path << " " << finding.place << ": " << finding.reason;
        const std::size_t step = !all && path.filename() == "Dynblocks.dwg" ? 7 : 1;
        for (std::size_t i = 0; i < drawing->objects().size(); i += step)
            roundTrip(*drawing, *drawing->objects()[i], path);
    }
}

} // namespace
