// Drawings whose description is written by a process that dies.
#include "tests/kill/Rounds.h"
#include "tests/reading/WriteDescriptionFixture.h"

#include "tessaro/reading/WriteDescription.h"

#include <map>

using namespace tests;

namespace {

constexpr std::chrono::microseconds kLongest{60'000};

struct Format {
    std::int32_t fileType;
    AcDb::AcDbDwgVersion version;
    const char* magic;
};
constexpr Format kFormats[] = {{16, AcDb::kDHL_1015, "AC1015"},
                               {17, AcDb::kDHL_1800, "AC1018"},
                               {18, AcDb::kDHL_1021, "AC1021"},
                               {19, AcDb::kDHL_1024, "AC1024"},
                               {20, AcDb::kDHL_1027, "AC1027"}};

class KilledWriteBacks : public WriteDescriptionTest {};

} // namespace

TEST_F(KilledWriteBacks, AtRandomMomentsLeaveEveryDrawingWholeInItsFormatWithOneOfTheTexts) {
    std::map<std::string, int> versions;
    for (const Format& format : kFormats) {
        WriteDrawing(format.magic, format.version);
        const std::string name = format.magic;
        AddBlock(format.fileType, L"", std::wstring(name.begin(), name.end()));
        versions[name] = 0;
    }
    int begun = 1;
    killInRounds(
        kLongest,
        [&] {
            for (int version = begun;; ++version)
                for (Block* block : directory.blocks) {
                    block->description = std::to_wstring(version);
                    WriteDescription(*block);
                }
        },
        [&](int) {
            for (auto& [name, version] : versions) {
                ASSERT_TRUE(std::filesystem::exists(Drawing(name))) << name;
                EXPECT_EQ(readFile(Drawing(name)).substr(0, 6), name);
                const std::wstring text = CommentsOf(Drawing(name));
                ASSERT_NE(text, L"unreadable") << name;
                const int found = text.empty() ? 0 : std::stoi(text);
                EXPECT_GE(found, version) << name << " has an older text than before";
                version = found;
                begun = std::max(begun, found + 1);
                // What a killed save leaves beside the drawing is no drawing for the catalogue, and in nobody's way.
                for (const std::string& file : Files())
                    if (file.starts_with(name + ".dwg2.") && file.size() > name.size() + 6)
                        std::filesystem::remove(folder.path() / file);
            }
        });
    for (Block* block : directory.blocks) {
        block->description = L"last";
        EXPECT_TRUE(WriteDescription(*block)) << "the next session writes as ever";
    }
    for (const auto& [name, version] : versions)
        EXPECT_EQ(CommentsOf(Drawing(name)), L"last");
    EXPECT_EQ(Files().size(), std::size(kFormats)) << "no temporary is left";
}
