// Cache files that follow the main cache to another place: another folder, another disk, no place at all.
#include "tests/catalogue/ArchiveFixture.h"
#include "tests/support/ChildProcess.h"

#include "tessaro/catalogue/CacheOptions.h"
#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/host/ModuleState.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

using catalogue_tests::Wide;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

namespace {

constexpr int kNoRight = 99;
constexpr int kDirectories = 3;

/// A catalogue with pictures whose files are all on disk.
class MoveCache : public testing::Test {
protected:
    MoveCache() {
        demandLoadCache = 1;
        cachePath = Wide(old / "tessaro35.cache");
        fs::create_directories(old);
        fs::create_directories(fresh);
        for (int number = 1; number <= kDirectories; ++number) {
            auto* const directory = new Directory;
            directories.push_back(directory);
            directory->path = L"/folder" + std::to_wstring(number);
            directory->cacheFile = Wide(old / Name(number));
            for (int slot = 0; slot < 20 * number; ++slot) {
                directory->LargeForWrite().Add(Picture(kLargeWidth, kLargeHeight));
                directory->SmallForWrite().Add(Picture(kSmallWidth, kSmallHeight));
            }
            SaveDirCache(*directory);
        }
        WriteMainCache();
    }
    static std::string Name(int number) { return "path" + std::to_string(number) + "_35.cache"; }
    static std::vector<std::string> Files(const fs::path& place) {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(place))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }
    /// What the files at that place say, by their names.
    static std::map<std::string, std::string> Contents(const fs::path& place) {
        std::map<std::string, std::string> contents;
        for (const std::string& name : Files(place))
            contents[name] = tests::readFile(place / name);
        return contents;
    }
    void ExpectPathsIn(const fs::path& place) const {
        EXPECT_EQ(cachePath, Wide(place / "tessaro35.cache"));
        int number = 0;
        for (const Directory* directory : directories)
            EXPECT_EQ(directory->cacheFile, Wide(place / Name(++number)));
    }
    /// A restart with the present paths reads the catalogue, and each Directory its pictures.
    void ExpectReadable() const {
        const std::wstring path = cachePath;
        for (const Directory* directory : directories)
            delete directory;
        directories.clear();
        const MainCacheReading read = ReadMainCache();
        EXPECT_TRUE(read.opened && !read.failed);
        ASSERT_EQ(directories.size(), std::size_t{kDirectories});
        int number = 0;
        for (Directory* directory : directories) {
            directory->cacheFile = Wide(fs::path(path).parent_path() / Name(++number));
            LoadDirCache(*directory);
            EXPECT_EQ(directory->largeImages->Count(), 1 + 20 * number);
        }
        EXPECT_THAT(told.lines, IsEmpty());
    }

    const catalogue_tests::CleanState clean;
    const tests::TemporaryFolder folder;
    const fs::path old = folder.path() / "old", fresh = folder.path() / "new";
    catalogue_tests::Told told;
};

} // namespace

TEST_F(MoveCache, ToAnotherFolderTakesAllFilesAsTheyAre) {
    const auto before = Contents(old);
    ASSERT_EQ(before.size(), std::size_t{kDirectories + 1});
    MoveCacheFiles(Wide(fresh / "tessaro35.cache"));
    EXPECT_EQ(Contents(fresh), before);
    EXPECT_THAT(Files(old), IsEmpty());
    ExpectPathsIn(fresh);
    ExpectReadable();
}

TEST_F(MoveCache, ToAnotherFileSystemTakesAllFilesAsTheyAre) {
    const int status = tests::inChild([this] {
        if (!tests::mountSmallDisk(fresh, 8 << 20))
            return kNoRight;
        const auto before = Contents(old);
        MoveCacheFiles(Wide(fresh / "tessaro35.cache"));
        EXPECT_EQ(Contents(fresh), before);
        EXPECT_THAT(Files(old), IsEmpty());
        ExpectPathsIn(fresh);
        ExpectReadable();
        return HasFailure() ? 1 : 0;
    });
    if (status == kNoRight)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(status, 0);
}

TEST_F(MoveCache, ToADiskWithoutRoomLeavesTheOldFilesWholeAndNothingHalfWritten) {
    const int status = tests::inChild([this] {
        if (!tests::mountSmallDisk(fresh, 64 << 10))
            return kNoRight;
        std::ofstream rest(fresh / "rest");
        const std::string part(4096, 'x');
        while (rest.write(part.data(), static_cast<std::streamsize>(part.size())).flush()) {
        }
        rest.close();
        const auto before = Contents(old);
        MoveCacheFiles(Wide(fresh / "tessaro35.cache"));
        EXPECT_EQ(Contents(old), before);
        EXPECT_THAT(Files(fresh), ElementsAre("rest"));
        ExpectPathsIn(fresh);
        return HasFailure() ? 1 : 0;
    });
    if (status == kNoRight)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(status, 0);
}

TEST_F(MoveCache, ToAPlaceThatDoesNotExistTakesThePathsAndLeavesTheFiles) {
    const auto before = Contents(old);
    MoveCacheFiles(Wide(folder.path() / "none" / "tessaro35.cache"));
    ExpectPathsIn(folder.path() / "none");
    EXPECT_EQ(Contents(old), before);
    EXPECT_FALSE(fs::exists(folder.path() / "none")) << "no folder is made";
    EXPECT_THAT(told.lines, IsEmpty()) << "a failed move is not told";
    WriteMainCache();
    ASSERT_EQ(told.lines.size(), 2u) << "the next save is";
    EXPECT_THAT(told.lines.back(), HasSubstr(L"The cache file could not be written to:\n" + cachePath + L"\n"));
}

TEST_F(MoveCache, ToAFolderThatTakesNoFilesTakesThePathsAndLeavesTheFiles) {
    const auto before = Contents(old);
    ASSERT_EQ(chmod(fresh.c_str(), 0555), 0);
    const int status = tests::inChild([this] {
        if (geteuid() == 0 && !tests::becomeNobody())
            return kNoRight;
        MoveCacheFiles(Wide(fresh / "tessaro35.cache"));
        ExpectPathsIn(fresh);
        WriteMainCache();
        EXPECT_EQ(told.lines.size(), 2u);
        return HasFailure() ? 1 : 0;
    });
    ASSERT_EQ(chmod(fresh.c_str(), 0755), 0);
    if (status == kNoRight)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Contents(old), before);
    EXPECT_THAT(Files(fresh), IsEmpty());
}

TEST_F(MoveCache, ToTheNameOfAFolderMovesTheDirectoriesFilesAlone) {
    const std::string main = tests::readFile(old / "tessaro35.cache");
    MoveCacheFiles(Wide(fresh));
    EXPECT_EQ(cachePath, Wide(fresh));
    EXPECT_TRUE(fs::is_directory(fresh));
    EXPECT_THAT(Files(fresh), IsEmpty());
    EXPECT_EQ(tests::readFile(old / "tessaro35.cache"), main) << "the main cache stays where it was";
    EXPECT_THAT(Files(folder.path()), ElementsAre("new", "old", Name(1), Name(2), Name(3)));
    WriteMainCache();
    ASSERT_EQ(told.lines.size(), 2u);
    EXPECT_THAT(told.lines.back(), HasSubstr(L"The cache file could not be written to:\n" + cachePath + L"\n"));
}

TEST_F(MoveCache, NeverReplacesAFileThatAnotherDirectoryHas) {
    // Display order and numbers differ: what was the second file's name is given to the third Directory.
    directories.splice(directories.begin(), directories, std::prev(directories.end()));
    const auto before = Contents(old);
    MoveCacheFiles(Wide(old / "tessaro35.cache2"));
    int number = 0;
    for (const Directory* directory : directories)
        EXPECT_EQ(directory->cacheFile, Wide(old / Name(++number)));
    const auto after = Contents(old);
    for (int file = 1; file <= kDirectories; ++file)
        EXPECT_EQ(after.at(Name(file)), before.at(Name(file))) << file;
}
