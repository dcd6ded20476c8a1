#include "tests/mapping_engine/RealPassTest.h"

#include "tessaro/platform/Text.h"

#include <ostream>
#include <set>

namespace tests {

void PrintTo(const KindOfScheme& kind, std::ostream* out) {
    *out << kind.name;
}

const std::vector<KindOfScheme> kSchemes = {
    {"Layers",
     0,
     true,
     {{L"TAVOLO*", L"Tables"},
      {L"R-DOOR-A*", L"Doors"},
      {L"SOME*", L"0"},
      {L"3T_*", L"Parts"},
      {L"WORK", L"Tables"},
      {L"C*", L"Columns"}}},
    {"Linetypes",
     1,
     false,
     {{L"CONTINUOUS", L"Solid"}, {L"D*", L"Dashes"}, {L"*TEXT AND DIMENSION OBJECTS", L"Notes"}}},
    {"Colours", 2, true, {{L"7", L"White"}, {L"1*", L"Tens"}, {L"2", L"Yellow"}}},
    {"BlockNames", 3, true, {{L"*", L"Placed"}}},
};

void RealPassTest::ExpectPass(const std::filesystem::path& file, const KindOfScheme& kind,
                              const Expectation& expected) {
    messages.clear();
    AcDbDatabase sideDrawing(false);
    ASSERT_EQ(sideDrawing.readDwgFile(file.wstring().c_str()), eOk);
    MapScheme scheme = MakeScheme(kind.schemeType, kind.maps, kind.byLayer);
    MappingRun run(sideDrawing, scheme);
    ASSERT_TRUE(kind.schemeType == 0   ? run.MapLayerScheme()
                : kind.schemeType == 1 ? run.MapLinetypeScheme()
                                       : run.MapColorScheme());
    EXPECT_THAT(messages, testing::UnorderedElementsAreArray(expected.messages));
    int different = 0;
    for (const PlainEntity& entity : expected.entities) {
        const Look found = UpperLookOf({&sideDrawing, entity.handle});
        if (found != Told(entity) && ++different < 5)
            ADD_FAILURE() << std::hex << entity.handle << " is " << testing::PrintToString(found) << ", not "
                          << testing::PrintToString(Told(entity));
    }
    EXPECT_EQ(different, 0);
    std::set<std::wstring> left;
    for (const std::wstring& name : LayersOf(sideDrawing))
        left.insert(platform::ToUpper(name));
    EXPECT_EQ(left, expected.layersAfter);
}

Look RealPassTest::Told(const PlainEntity& entity) {
    return {platform::ToUpper(entity.layer), entity.colour, entity.linetype};
}

Look RealPassTest::UpperLookOf(AcDbObjectId entity) {
    Look look = LookOf(entity);
    look.layer = platform::ToUpper(look.layer);
    return look;
}

} // namespace tests
