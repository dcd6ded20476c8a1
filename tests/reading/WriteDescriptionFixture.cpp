#include "tests/reading/WriteDescriptionFixture.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/reading/PreviewSection.h"

#include <algorithm>
#include <memory>

namespace tests {

std::wstring CommentsOf(const std::filesystem::path& file) {
    AcDbDatabase database(false, false);
    AcDbDatabaseSummaryInfo* made = nullptr;
    if (database.readDwgFile(file.wstring().c_str()) != 0 || acdbGetSummaryInfo(&database, made) != 0)
        return L"unreadable";
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    std::wstring text;
    summary->getComments(text);
    return text;
}

std::string SmallBitmap(char value) {
    std::string bytes(40, '\0');
    bytes[0] = 40;
    bytes[4] = 4;
    bytes[8] = 2;
    bytes[12] = 1;
    bytes[14] = 24;
    return bytes + std::string(24, value);
}

std::string BitmapOf(const std::filesystem::path& drawing) {
    platform::File file(drawing.wstring(), platform::File::modeRead);
    const auto entry = FindEntry(file, kBitmapCode);
    if (!entry)
        return {};
    const auto bytes = ReadEntry(file, entry->place, kLargestPreview);
    return {bytes.begin(), bytes.end()};
}

WriteDescriptionTest::WriteDescriptionTest() {
    directory.path = folder.path().wstring();
    currentDirectory = &directory;
}

WriteDescriptionTest::~WriteDescriptionTest() {
    for (Block* block : directory.blocks)
        delete block;
    directory.blocks.clear();
    currentDirectory = nullptr;
}

std::vector<std::string> WriteDescriptionTest::Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

void WriteDescriptionTest::WriteDrawing(const std::string& name, AcDb::AcDbDwgVersion version) const {
    AcDbDatabase database(true, false);
    database.setThumbnailBitmap(SmallBitmap('\x55'));
    ASSERT_EQ(database.saveAs(Drawing(name).wstring().c_str(), false, version), 0);
}

Block& WriteDescriptionTest::AddBlock(std::int32_t fileType, const std::wstring& description,
                                      const std::wstring& name) {
    auto* const block = new Block;
    block->name = name;
    block->fileType = fileType;
    block->description = description;
    directory.blocks.push_back(block);
    return *block;
}

} // namespace tests
