// Descriptions written into real drawings of the formats that are saved in their own.
#include "tests/support/TemporaryFolder.h"

#include "editor/sdk/db.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/reading/DrawingType.h"
#include "tessaro/reading/PreviewSection.h"
#include "tessaro/reading/WriteDescription.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <memory>

namespace fs = std::filesystem;

namespace {

std::int32_t TypeOf(const fs::path& file) {
    std::array<std::uint8_t, kMagicSize> magic{};
    platform::File(file.wstring(), platform::File::modeRead).Read(magic.data(), magic.size());
    return DrawingType(magic);
}

/// The embedded picture as stored; bitmap or PNG.
std::vector<std::uint8_t> ImageOf(const fs::path& drawing) {
    platform::File file(drawing.wstring(), platform::File::modeRead);
    const PreviewSection section = ReadPreviewSection(file);
    return section.image ? ReadEntry(file, *section.image, kLargestPreview) : std::vector<std::uint8_t>();
}

std::wstring CommentsOf(const fs::path& file) {
    AcDbDatabase database(false, false);
    AcDbDatabaseSummaryInfo* made = nullptr;
    if (database.readDwgFile(file.wstring().c_str()) != 0 || acdbGetSummaryInfo(&database, made) != 0)
        return L"unreadable";
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    std::wstring text;
    summary->getComments(text);
    return text;
}

} // namespace

TEST(WriteDescriptionReal, DrawingsOf2000To2013KeepFormatAndPictureAndTakeTheText) {
    const fs::path real = tests::sharedFolder("drawings");
    if (real.empty())
        GTEST_SKIP() << "no real drawings beside the checkout";
    const tests::TemporaryFolder folder;
    Directory directory;
    directory.path = folder.path().wstring();
    currentDirectory = &directory;
    int written = 0;
    std::array<int, kFileTypeCount> byType{};
    for (const auto& entry : fs::recursive_directory_iterator(real)) {
        if (entry.path().extension() != ".dwg")
            continue;
        const std::int32_t type = TypeOf(entry.path());
        if (type < 16 || type > 20)
            continue;
        SCOPED_TRACE(entry.path().string());
        const fs::path drawing = folder.path() / "copy.dwg";
        fs::copy_file(entry.path(), drawing, fs::copy_options::overwrite_existing);
        fs::permissions(drawing, fs::perms::owner_write, fs::perm_options::add);
        const auto picture = ImageOf(drawing);
        Block block;
        block.name = L"copy";
        block.fileType = type;
        block.description = L"Ventil, Größe 3/4\", 弁";
        EXPECT_TRUE(WriteDescription(block));
        EXPECT_EQ(CommentsOf(drawing), block.description);
        EXPECT_EQ(TypeOf(drawing), type);
        EXPECT_EQ(ImageOf(drawing), picture);
        EXPECT_FALSE(fs::exists(folder.path() / "copy.dwg2"));
        ++written;
        ++byType[static_cast<std::size_t>(type)];
    }
    currentDirectory = nullptr;
    for (const std::size_t type : {16u, 17u, 18u, 19u, 20u})
        EXPECT_GT(byType[type], 0) << type;
    RecordProperty("written", written);
}
