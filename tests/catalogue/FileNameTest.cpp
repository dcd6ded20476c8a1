#include "tessaro/catalogue/FileName.h"

#include "tests/catalogue/Support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using catalogue_tests::Wide;

TEST(FileName, SplitsThePathItHolds) {
    CFileName name(L"/lib/a.b/tessaro35.old.ini");
    EXPECT_EQ(name.GetPath(), L"/lib/a.b/tessaro35.old.ini");
    EXPECT_EQ(name.GetDriveDir(), L"/lib/a.b/");
    EXPECT_EQ(name.GetTitle(), L"tessaro35.old");
    EXPECT_EQ(name.GetFileName(), L"tessaro35.old.ini");
    EXPECT_EQ(name.GetExtension(), L".ini");
    name.SetPath(L"x");
    EXPECT_EQ(name.GetPath(), L"x");
    EXPECT_EQ(name.GetDriveDir(), L"");
    EXPECT_EQ(name.GetTitle(), L"x");
    EXPECT_EQ(name.GetFileName(), L"x");
    EXPECT_EQ(name.GetExtension(), L"");
}

TEST(FileName, ExistsWithOneSeparatorAtItsEnd) {
    const tests::TemporaryFolder folder;
    const std::wstring file = Wide(folder.write("F.txt", ""));
    EXPECT_TRUE(CFileName(file).Exists());
    EXPECT_TRUE(CFileName(Wide(folder.path()) + L"/").Exists());
    EXPECT_TRUE(CFileName(Wide(folder.path()) + L"\\").Exists());
    EXPECT_TRUE(CFileName(file + L"/").Exists());
    EXPECT_FALSE(CFileName(file + L"x").Exists());
    EXPECT_FALSE(CFileName(L"").Exists());
}

TEST(FileName, TypesHaveNames) {
    const tests::TemporaryFolder folder;
    EXPECT_EQ(CFileName(L"/a/chair.dwg").GetTypeName(), L"DWG File");
    EXPECT_EQ(CFileName(L"/a/chair").GetTypeName(), L"File");
    EXPECT_EQ(CFileName(L"/a/chair.").GetTypeName(), L"File");
    EXPECT_EQ(CFileName(Wide(folder.path())).GetTypeName(), L"File folder");
}
