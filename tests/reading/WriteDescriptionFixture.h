#pragma once

#include "tests/support/TemporaryFolder.h"

#include "editor/sdk/db.h"
#include "tessaro/catalogue/Directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tests {

/// The comments of a drawing; "unreadable" where it can't be read.
std::wstring CommentsOf(const std::filesystem::path& file);
/// A 4 by 2 bitmap of 24 bits, each byte of its pixels of that value.
std::string SmallBitmap(char value);
/// The embedded bitmap of a drawing, empty without one.
std::string BitmapOf(const std::filesystem::path& drawing);

/// A current Directory over a folder of its own, with real drawings.
class WriteDescriptionTest : public testing::Test {
protected:
    WriteDescriptionTest();
    ~WriteDescriptionTest() override;

    std::filesystem::path Drawing(const std::string& name = "door") const { return folder.path() / (name + ".dwg"); }
    std::filesystem::path Temporary(const std::string& name = "door") const { return folder.path() / (name + ".dwg2"); }
    std::filesystem::path Backup() const { return folder.path() / "door.bak"; }
    /// Names in the folder, in their order.
    std::vector<std::string> Files() const;

    /// A drawing of that release with a picture.
    void WriteDrawing(const std::string& name = "door", AcDb::AcDbDwgVersion version = AcDb::kDHL_1015) const;
    Block& AddBlock(std::int32_t fileType, const std::wstring& description, const std::wstring& name = L"door");

    TemporaryFolder folder;
    Directory directory;
};

} // namespace tests
