// Folders and files that the system tells little or nothing of.

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Scans end where a pass finds the dialog closed.
class ScanFailures : public testing::Test {
protected:
    ScanFailures() {
        std::filesystem::create_directory(library);
        chmod(folder.path().c_str(), 0755);
        directory.path = platform::FromNarrow(library.native());
        dialogOpen = false;
    }
    ~ScanFailures() override { chmod(library.c_str(), 0755); }

    Block& AddBlock(const wchar_t* name) {
        auto* const block = new Block;
        block->name = name;
        block->status = {77, 1, 2};
        directory.blocks.push_back(block);
        return *block;
    }

    const tests::TemporaryFolder folder;
    const std::filesystem::path library = folder.path() / "library";
    Directory directory;
};

} // namespace

TEST_F(ScanFailures, AFileWhoseStatusIsRefusedKeepsItsBlockAndWhatWasKnownOfIt) {
    folder.write("library/a.dwg", "x");
    const Block& block = AddBlock(L"a");
    AddBlock(L"gone");
    ASSERT_EQ(chmod(library.c_str(), 0444), 0);
    const int status = tests::inChild([&] {
        if (geteuid() == 0 && !tests::becomeNobody())
            return 99;
        LoadDir(&directory);
        return directory.blocks.size() == 1 && block.status == BlockStatus{77, 1, 2} ? 0 : 1;
    });
    if (status == 99)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(status, 0);
}

TEST_F(ScanFailures, AFolderThatMayNotBeListedKeepsItsCatalogue) {
    folder.write("library/a.dwg", "x");
    AddBlock(L"a");
    AddBlock(L"b");
    ASSERT_EQ(chmod(library.c_str(), 0111), 0);
    const int status = tests::inChild([&] {
        if (geteuid() == 0 && !tests::becomeNobody())
            return 99;
        return LoadDir(&directory) == 0 && directory.blocks.size() == 2 ? 0 : 1;
    });
    if (status == 99)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(status, 0);
}

TEST_F(ScanFailures, AFileThatWasReplacedByAnotherOfTheSameSizeAndTimesIsNotNoticed) {
    const auto file = folder.write("library/a.dwg", "one");
    LoadDir(&directory);
    ASSERT_EQ(directory.blocks.size(), 1u);
    Block& block = *directory.blocks.front();
    block.cachedStatus = block.status;
    const auto written = std::filesystem::last_write_time(file);
    folder.write("library/a.dwg", "two");
    std::filesystem::last_write_time(file, written);
    LoadDir(&directory);
    EXPECT_EQ(block.status, block.cachedStatus);
}
