// Saves of cache files by a process that is killed.
#include "tests/catalogue/ArchiveFixture.h"
#include "tests/support/ChildProcess.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/catalogue/Raster.h"
#include "tessaro/host/ModuleState.h"

#include <filesystem>
#include <random>
#include <set>

namespace {

/// A cache file each of whose parts tells its version, so that halves of two don't go unseen.
class VersionedFile {
public:
    virtual ~VersionedFile() = default;
    virtual void Save(int version) = 0;
    /// -1 where the file is damaged or mixed.
    virtual int Version() = 0;
};

class VersionedMainCache : public VersionedFile {
public:
    explicit VersionedMainCache(const std::filesystem::path& folder) {
        cachePath = catalogue_tests::Wide(folder / "saved");
        demandLoadCache = 1;
    }
    ~VersionedMainCache() override { Forget(); }
    void Save(int version) override {
        Forget();
        for (int i = 0; i < 4; ++i) {
            directories.push_back(new Directory);
            directories.back()->path = std::to_wstring(version);
            for (int block = 0; block < 50; ++block) {
                directories.back()->blocks.push_back(new Block);
                directories.back()->blocks.back()->name = std::to_wstring(version);
            }
        }
        WriteMainCache();
    }
    int Version() override {
        Forget();
        if (const MainCacheReading read = ReadMainCache(); !read.opened || read.failed || directories.size() != 4)
            return -1;
        const std::wstring version = directories.front()->path;
        for (const Directory* directory : directories) {
            if (directory->path != version || directory->blocks.size() != 50)
                return -1;
            for (const Block* block : directory->blocks)
                if (block->name != version)
                    return -1;
        }
        return std::stoi(version);
    }

private:
    static void Forget() {
        for (Directory* directory : directories)
            delete directory;
        directories.clear();
    }
};

class VersionedPictures : public VersionedFile {
public:
    explicit VersionedPictures(const std::filesystem::path& folder) {
        directory.cacheFile = catalogue_tests::Wide(folder / "saved");
    }
    void Save(int version) override {
        directory.ResetImageLists(true);
        for (int slot = 1; slot < 4; ++slot) {
            directory.LargeForWrite().Add(Coloured(kLargeWidth, kLargeHeight, version));
            directory.SmallForWrite().Add(Coloured(kSmallWidth, kSmallHeight, version));
        }
        SaveDirCache(directory);
    }
    /// Modulo sixteen.
    int Version() override {
        directory.ResetImageLists(true);
        LoadDirCache(directory);
        if (directory.largeImages->Count() != 4 || directory.smallImages->Count() != 4)
            return -1;
        for (int version = 0; version < 16; ++version) {
            bool whole = true;
            for (int slot = 1; slot < 4; ++slot)
                whole = whole && directory.largeImages->Draw(slot) == Coloured(kLargeWidth, kLargeHeight, version) &&
                        directory.smallImages->Draw(slot) == Coloured(kSmallWidth, kSmallHeight, version);
            if (whole)
                return version;
        }
        return -1;
    }

private:
    static Picture Coloured(int width, int height, int version) {
        Picture picture(width, height);
        const auto& c = kStandardColours[static_cast<std::size_t>(version % 16)];
        FillRectangle(picture, 0, 0, width, height, {c[0], c[1], c[2], 0});
        return picture;
    }

    Directory directory;
};

enum class Kind { mainCache, pictures };

class KilledCacheSave : public testing::TestWithParam<Kind> {
protected:
    KilledCacheSave() {
        if (GetParam() == Kind::mainCache)
            file = std::make_unique<VersionedMainCache>(folder.path());
        else
            file = std::make_unique<VersionedPictures>(folder.path());
    }
    std::ptrdiff_t Files() const { return std::distance(std::filesystem::directory_iterator(folder.path()), {}); }

    const catalogue_tests::CleanState clean;
    const tests::TemporaryFolder folder;
    catalogue_tests::Told told;
    std::unique_ptr<VersionedFile> file;
};

INSTANTIATE_TEST_SUITE_P(Cache, KilledCacheSave, testing::Values(Kind::mainCache, Kind::pictures),
                         [](const testing::TestParamInfo<Kind>& kind) {
                             return kind.param == Kind::mainCache ? "MainCache" : "Pictures";
                         });

} // namespace

TEST_P(KilledCacheSave, AtEachFileCallInTurnARestartReadsAWholeOldOrNewFile) {
    std::set<std::string> calls;
    int saved = 0;
    file->Save(saved);
    for (int number = 1;; ++number) {
        const tests::Killed killed = tests::killAtFileCall(number, [&] { file->Save((saved + 1) % 16); });
        if (killed.refused)
            GTEST_SKIP() << "this system lets no process watch its child";
        const int version = file->Version();
        EXPECT_TRUE(version == saved || version == (saved + 1) % 16) << killed.at << " " << number << " " << version;
        calls.insert(killed.at);
        if (killed.done) {
            EXPECT_EQ(version, (saved + 1) % 16);
            break;
        }
        saved = (saved + 2) % 16;
        file->Save(saved);
        EXPECT_EQ(file->Version(), saved) << "the next run saves as ever";
        EXPECT_EQ(Files(), 1) << "what was left beside is gone";
    }
    for (const char* const call : {"openat", "write", "rename"})
        EXPECT_TRUE(calls.contains(call)) << call;
    EXPECT_TRUE(told.lines.empty());
}

TEST_P(KilledCacheSave, AtRandomMomentsARestartReadsAWholeOldOrNewFile) {
    std::mt19937 random(4711);
    file->Save(0);
    for (int round = 0; round < 200; ++round) {
        const std::chrono::microseconds moment(random() % 3000);
        tests::killAfter(moment, [&](const std::function<void()>& begun) {
            begun();
            for (int version = 1;; version = (version + 1) % 16)
                file->Save(version);
        });
        ASSERT_GE(file->Version(), 0) << "round " << round;
    }
    file->Save(7);
    EXPECT_EQ(file->Version(), 7);
    EXPECT_EQ(Files(), 1);
    EXPECT_TRUE(told.lines.empty());
}
