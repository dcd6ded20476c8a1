// The sample library keeps its own rules: names, descriptions, releases, layers, base points, pictures.
#include "samples/Library.h"
#include "tests/support/TemporaryFolder.h"

#include "editor/database/wireframe.h"
#include "editor/dwg/facts.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/thumbnail.h"

#include <algorithm>
#include <cwctype>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace {

using samples::Folder;
using samples::Recipe;

TEST(SampleLibrary, HasTwoHundredDrawingsInEightFoldersInFiveReleases) {
    std::size_t drawings = 0;
    std::set<int> releases;
    std::vector<std::string> folders;
    for (const Folder& folder : samples::library()) {
        folders.emplace_back(folder.name);
        drawings += folder.recipes.size();
        releases.insert(folder.release);
    }
    EXPECT_EQ(folders, (std::vector<std::string>{"doors", "electrical", "furniture", "mechanical", "plants", "sanitary",
                                                 "title-blocks", "windows"}));
    EXPECT_EQ(drawings, 200U);
    EXPECT_EQ(releases.size(), 5U);
}

TEST(SampleLibrary, NamesAreFoundInOneFolderOnlyAndDescriptionsFitIntoTheDialog) {
    std::map<std::wstring, std::wstring> seen;
    for (const Folder& folder : samples::library()) {
        for (const Recipe& recipe : folder.recipes) {
            std::wstring lower = recipe.name;
            std::transform(lower.begin(), lower.end(), lower.begin(), std::towlower);
            EXPECT_TRUE(seen.emplace(lower, recipe.name).second)
                << folder.name << " has another " << seen[lower].size();
            EXPECT_EQ(lower.find_first_not_of(L"abcdefghijklmnopqrstuvwxyz0123456789-"), std::wstring::npos)
                << folder.name;
            EXPECT_FALSE(recipe.comments.empty());
            EXPECT_LE(recipe.comments.size(), 70U);
        }
    }
}

class SampleFolder : public testing::TestWithParam<const char*> {
protected:
    static Folder named(const std::string& name) {
        for (Folder& folder : samples::library())
            if (folder.name == name)
                return std::move(folder);
        throw std::invalid_argument(name);
    }

    static void expectLayers(const dwg::Drawing& drawing, const Folder& folder, const std::string& name) {
        for (const dwg::BlockFacts& block : dwg::blockFacts(drawing)) {
            if (block.name != L"*MODEL_SPACE" && block.name != L"*Model_Space")
                continue;
            EXPECT_GT(block.entities, 0U) << name;
            for (const auto& [layer, count] : block.layers)
                EXPECT_TRUE(layer.starts_with(folder.layerPrefix))
                    << name << " has " << count << " objects on another layer";
            return;
        }
        ADD_FAILURE() << name << " has no model space";
    }

    static void expectBaseWithin(const AcDbDatabase& database, const std::string& name) {
        const editor::Extents extents = editor::wireframeOfModelSpace(database).extents();
        const AcGePoint3d base = database.insbase();
        ASSERT_FALSE(extents.empty) << name;
        constexpr double rounding = 1e-6;
        EXPECT_GE(base.x, extents.lowest.x - rounding) << name;
        EXPECT_LE(base.x, extents.highest.x + rounding) << name;
        EXPECT_GE(base.y, extents.lowest.y - rounding) << name;
        EXPECT_LE(base.y, extents.highest.y + rounding) << name;
    }

    tests::TemporaryFolder place;
};

TEST_P(SampleFolder, EveryDrawingIsSavedInItsReleaseWithPictureDescriptionLayersAndBasePoint) {
    const std::map<int, dwg::Release> releases = {{AcDb::kDHL_1015, dwg::Release::r2000},
                                                  {AcDb::kDHL_1800, dwg::Release::r2004},
                                                  {AcDb::kDHL_1021, dwg::Release::r2007},
                                                  {AcDb::kDHL_1024, dwg::Release::r2010},
                                                  {AcDb::kDHL_1027, dwg::Release::r2013}};
    const Folder folder = named(GetParam());
    for (const Recipe& recipe : folder.recipes) {
        const auto path = place.path() / (recipe.name + L".dwg");
        const std::string name = path.stem().string();
        samples::Sketch sketch(recipe.comments);
        recipe.draw(sketch);
        ASSERT_TRUE(sketch.save(path.wstring(), folder.release)) << name;

        const auto file = dwg::DrawingFile::open(path);
        ASSERT_TRUE(file) << name;
        EXPECT_EQ(file->release(), releases.at(folder.release)) << name;
        const auto drawing = dwg::readDrawing(*file);
        ASSERT_TRUE(drawing) << name;
        EXPECT_TRUE(drawing->findings.empty()) << name;
        expectLayers(*drawing, folder, name);
        const auto pictures = dwg::readPictures(file->source());
        ASSERT_TRUE(pictures) << name;
        EXPECT_EQ(pictures->size(), 1U) << name;

        AcDbDatabase database(false);
        ASSERT_EQ(database.readDwgFile(path.wstring().c_str()), eOk) << name;
        expectBaseWithin(database, name);
        AcDbDatabaseSummaryInfo* summary = nullptr;
        ASSERT_EQ(acdbGetSummaryInfo(&database, summary), eOk) << name;
        const std::unique_ptr<AcDbDatabaseSummaryInfo> owned(summary);
        std::wstring comments;
        EXPECT_EQ(summary->getComments(comments), eOk);
        EXPECT_EQ(comments, recipe.comments) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Library, SampleFolder,
                         testing::Values("doors", "electrical", "furniture", "mechanical", "plants", "sanitary",
                                         "title-blocks", "windows"),
                         [](const auto& folder) {
                             std::string name = folder.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(SampleProgram, MakesTheFoldersThatAreNamedAndKeepsFilesThatAreThere) {
    const tests::TemporaryFolder place;
    const std::string root = place.path().string();
    const std::string program = TESSARO_BIN_DIR "/tessaro-samples '" + root + "'";
    place.write("title-blocks/North-Arrow.dwg", "mine");
    EXPECT_EQ(std::system((program + " title-blocks > '" + root + "/out'").c_str()), 0);
    EXPECT_EQ(tests::readFile(place.path() / "out"),
              "title-blocks: 10 drawings\n10 drawings in 1 folders, and the plan " + root + "/Flat.dwg\n");
    EXPECT_EQ(tests::readFile(place.path() / "title-blocks/North-Arrow.dwg"), "mine");
    EXPECT_TRUE(std::filesystem::exists(place.path() / "title-blocks/Frame-A3.dwg"));
    EXPECT_FALSE(std::filesystem::exists(place.path() / "doors"));
    EXPECT_NE(std::system((program + " no-such-folder > /dev/null 2>&1").c_str()), 0);
}

} // namespace
