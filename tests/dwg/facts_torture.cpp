// A twentieth of what dev/torture does, on files that the tests make themselves. A crash ends the test's process, a
// hang its time.

#include "editor/dwg/convert_drawing.h"
#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/summary_info.h"
#include "editor/dwg/write_drawing.h"
#include "tests/dwg/container_builder.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/torture_cases.h"

#include <gmock/gmock.h>

namespace {

using dwg::Bytes;
using dwg::Release;

constexpr tools::DamagePlan twentieth{10, 100};

Bytes defaultDrawing(Release release = Release::r2000) {
    auto made = dwg::convertDrawing(dwg::makeDefaultDrawing(), dwg::makeDefaultHeader({2460000, 0}), release,
                                    [](std::uint32_t) { return std::int16_t{7}; });
    const auto bytes = dwg::writeDrawing(made.drawing, made.header, {}, 1);
    EXPECT_TRUE(bytes) << bytes.error().reason;
    return bytes ? *bytes : Bytes();
}

std::vector<tests::NamedBytes> someSections(Release release) {
    dwg::SummaryInfo info;
    info.texts.comments = L"a description";
    Bytes objects(0x7400 + 999);
    for (std::size_t i = 0; i < objects.size(); ++i)
        objects[i] = static_cast<std::uint8_t>(i * i);
    // Header variables of 2004 are longer than those of 2000, so reading them meets the end of the section.
    const Bytes header = dwg::writeHeaderVariables(dwg::HeaderVariables{}, 30);
    return {{"AcDb:Header", tests::guarded(release, header, header.size() * 8)},
            {"AcDb:SummaryInfo", dwg::writeSummaryInfo(info, release, 30)},
            {"AcDb:Template", {0, 0, 1, 0, 0, 0}},
            {"AcDb:AcDbObjects", objects}};
}

void torture(const Bytes& whole, const tools::DamagePlan& plan = twentieth) {
    ASSERT_FALSE(whole.empty());
    const std::size_t undamaged = tools::readEverything(whole);
    EXPECT_GT(undamaged, 20u);
    std::size_t damaged = 0;
    for (std::size_t i = 0; i < plan.count(); ++i) {
        const Bytes copy = tools::damagedCopy(whole, plan, i);
        EXPECT_NE(copy, whole) << i;
        damaged += tools::readEverything(copy) != undamaged;
    }
    EXPECT_GE(damaged, plan.cuts) << "a cut always shows";
}

TEST(Torture, theDefaultDrawingOf2000) {
    torture(defaultDrawing());
}

TEST(Torture, theDefaultDrawingOfEveryLaterRelease) {
    for (const Release release : {Release::r2004, Release::r2007, Release::r2010, Release::r2013, Release::r2018})
        torture(defaultDrawing(release), {5, 30});
}

TEST(Torture, pagedFiles) {
    for (const Release release : {Release::r2004, Release::r2010, Release::r2018})
        torture(tests::buildPagedFile(release, someSections(release)));
}

TEST(Torture, aFileOf2007) {
    torture(tests::buildFile2007(someSections(Release::r2007)));
}

TEST(Torture, theSeedsOfTheFuzzTarget) {
    std::size_t seeds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TESSARO_SOURCE_DIR "/fuzz/seeds/dwg")) {
        SCOPED_TRACE(entry.path());
        const std::string text = tests::readFile(entry.path());
        torture(Bytes(text.begin(), text.end()));
        ++seeds;
    }
    EXPECT_GE(seeds, 6u);
}

TEST(Torture, damageIsTheSameInEveryRun) {
    const Bytes whole = defaultDrawing();
    for (std::size_t i = 0; i < twentieth.count(); ++i)
        EXPECT_EQ(tools::damagedCopy(whole, twentieth, i), tools::damagedCopy(whole, twentieth, i));
    EXPECT_EQ(tools::damagedCopy(whole, twentieth, 5).size(), whole.size() / 2);
}

} // namespace
