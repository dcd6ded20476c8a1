// The real helper behind the bridge, over drawings that the host's library writes and over real ones.

#include "tessaro/reading/Examine.h"

#include "editor/sdk/db.h"
#include "tessaro/browser/preview/Dib.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Bridge.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <memory>

using namespace tests;

namespace {

class RealHelper : public testing::Test {
protected:
    RealHelper() {
        ForgetServices();
        LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
        preview = PreviewBytes(kDibHeaderSize, 0);
        preview[4] = 200;
        preview[8] = 100;
    }
    ~RealHelper() override {
        ForgetServices();
        LocalPath.clear();
    }

    bool load(const std::filesystem::path& file, bool wantInsPts = true) {
        block = Block{};
        points.clear();
        return LoadDrawing(platform::FromNarrow(file.string()), block, wantInsPts, &preview, points);
    }

    /// A new drawing with this comment, saved as that release.
    static void save(const std::filesystem::path& file, const wchar_t* comments, const AcGePoint3d& base = {}) {
        AcDbDatabase database;
        AcDbDatabaseSummaryInfo* opened = nullptr;
        ASSERT_EQ(acdbGetSummaryInfo(&database, opened), 0);
        const std::unique_ptr<AcDbDatabaseSummaryInfo> info(opened);
        ASSERT_EQ(info->setComments(comments), 0);
        ASSERT_EQ(acdbPutSummaryInfo(info.get(), &database), 0);
        ASSERT_EQ(database.setInsbase(base), 0);
        ASSERT_EQ(database.saveAs(platform::FromNarrow(file.string()).c_str()), 0);
    }

    PreviewBytes preview;
    Block block;
    MarkPoints points;
    TemporaryFolder folder;
};

TEST_F(RealHelper, givesCommentsAndDatesOfADrawing) {
    const auto file = folder.path() / "a.dwg";
    save(file, L"Schrank, 3 Türen");
    ASSERT_TRUE(load(file));
    EXPECT_EQ(block.description, L"Schrank, 3 Türen");
    EXPECT_EQ(block.created, block.modified);
    EXPECT_NEAR(static_cast<double>(block.modified), static_cast<double>(platform::CurrentTime()), 60);
}

TEST_F(RealHelper, readsADrawingWhoseNameIsNotPlain) {
    const auto file = folder.path() / "Tür € 𝕏.dwg";
    save(file, L"x");
    EXPECT_TRUE(load(file));
}

TEST_F(RealHelper, doesNotChangeTheDrawing) {
    const auto file = folder.path() / "a.dwg";
    save(file, L"x");
    const std::string before = readFile(file);
    const auto written = std::filesystem::last_write_time(file);
    ASSERT_TRUE(load(file));
    EXPECT_EQ(readFile(file), before);
    EXPECT_EQ(std::filesystem::last_write_time(file), written);
}

TEST_F(RealHelper, answersFalseForWhatIsNoDrawing) {
    EXPECT_FALSE(load(folder.write("empty.dwg", "")));
    EXPECT_FALSE(load(folder.write("text.dwg", std::string(1000, 'x'))));
    EXPECT_FALSE(load(folder.write("mark.dwg", "AC1015")));
    EXPECT_FALSE(load(folder.path() / "absent.dwg"));
}

TEST_F(RealHelper, givesNoPointWhereNoneIsWanted) {
    const auto file = folder.path() / "a.dwg";
    save(file, L"x");
    ASSERT_TRUE(load(file, false));
    EXPECT_TRUE(points.empty());
}

TEST_F(RealHelper, datesAreTheSameMomentInEveryZone) {
    const auto file = folder.path() / "a.dwg";
    save(file, L"x");
    ASSERT_TRUE(load(file));
    const platform::Time here = block.modified;
    const char* const before = std::getenv("TZ");
    const std::string zone = before == nullptr ? "" : before;
    setenv("TZ", "Asia/Kolkata", 1);
    tzset();
    EXPECT_TRUE(load(file));
    EXPECT_EQ(block.modified, here);
    if (before == nullptr)
        unsetenv("TZ");
    else
        setenv("TZ", zone.c_str(), 1);
    tzset();
}

TEST_F(RealHelper, ofRealDrawingsGivesTheirStoredDateAndPoint) {
    const auto drawings = sharedFolder("drawings");
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    struct Row {
        const char* name;
        std::int64_t day, milliseconds; ///< of the last change, as stored
        MarkPoints points;              ///< in a picture of 200 by 100
    };
    // Points by the view: (x - centre x) / width + 1/2 of the width, likewise upward.
    const Row rows[] = {
        {"2000/Arc.dwg",
         2456827,
         25829441,
         {200 * ((0 - -10.30543733550006) / 51.25751958117447 + 0.5),
          100 * ((0 - 10.02263864953424) / 20.49489104393754 + 0.5)}},
        {"sample_2000.dwg",
         2454593,
         73055421,
         {200 * ((0 - 84.69406211131027) / 579.1266267114818 + 0.5),
          100 * ((0 - 54.69049130495463) / 283.1758873258349 + 0.5)}},
        {"2000/TS1.dwg",
         0,
         0,
         {200 * ((21.80219510337525 - 18.26194922364861) / 160.58126014657765 + 0.5),
          100 * ((56.22944148001 - 17.7766334487948) / 80.93295511387514 + 0.5)}},
        {"example_r13.dwg",
         2458722,
         38275126,
         {200 * ((0 - 5771.997569792082) / 19003.49850377354 + 0.5),
          100 * ((0 - 480.4575041872413) / 12697.215035928868 + 0.5)}},
        {"example_r14.dwg",
         2458288,
         40209000,
         {200 * ((0 - 5771.997569792082) / 19003.49850377354 + 0.5),
          100 * ((0 - 480.4575041872413) / 12697.215035928868 + 0.5)}},
        {"2004/Arc.dwg",
         2456827,
         25840066,
         {200 * ((0 - -10.30543733550006) / 51.25751958117447 + 0.5),
          100 * ((0 - 10.02263864953424) / 20.49489104393754 + 0.5)}},
        {"2007/Arc.dwg",
         2456827,
         25848174,
         {200 * ((0 - -10.30543733550006) / 51.25751958117447 + 0.5),
          100 * ((0 - 10.02263864953424) / 20.49489104393754 + 0.5)}},
        {"2010/Arc.dwg",
         2456827,
         25854486,
         {200 * ((0 - -10.30543733550006) / 51.25751958117447 + 0.5),
          100 * ((0 - 10.02263864953424) / 20.49489104393754 + 0.5)}},
        {"2013/Arc.dwg",
         2456827,
         25039298,
         {200 * ((0 - -10.30543733550006) / 51.25751958117447 + 0.5),
          100 * ((0 - 10.02263864953424) / 20.49489104393754 + 0.5)}},
        {"2018/Arc.dwg",
         2458218,
         42546576,
         {200 * ((0 - -10.30543733550006) / 51.25751958117447 + 0.5),
          100 * ((0 - 10.02263864953424) / 20.49489104393754 + 0.5)}},
        {"example_2018.dwg",
         2458691,
         57944000,
         {200 * ((0 - 8367.405932476484) / 24194.315229142343 + 0.5),
          100 * ((0 - 480.4575041872413) / 12697.215035928868 + 0.5)}},
        {"sample_2018.dwg",
         2458264,
         55763000,
         {200 * ((0 - 84.69406211131033) / 579.1266267114819 + 0.5),
          100 * ((0 - 130.1219865101348) / 434.0388777361952 + 0.5)}},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(load(drawings / row.name)) << row.name;
        if (row.day != 0) {
            EXPECT_EQ(block.modified, (row.day - 2440588) * 86400 + row.milliseconds / 1000) << row.name;
        }
        ASSERT_EQ(points.size(), 2U) << row.name;
        EXPECT_NEAR(points[0], row.points[0], 1e-9) << row.name;
        EXPECT_NEAR(points[1], row.points[1], 1e-9) << row.name;
    }
}

TEST_F(RealHelper, readsRealDrawingsOfEveryRelease) {
    const auto drawings = sharedFolder("drawings");
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    for (const char* name : {"example_r13.dwg", "example_r14.dwg", "example_2004.dwg", "example_2007.dwg",
                             "example_2010.dwg", "example_2013.dwg", "example_2018.dwg"}) {
        EXPECT_TRUE(load(drawings / name)) << name;
        EXPECT_NE(block.modified, 0) << name;
    }
    EXPECT_FALSE(load(drawings / "r11" / "ACEB10.dwg")) << "older than what is read";
}

} // namespace
