// Settings, backups, catalogue and pictures whose save is broken off.
#include "tests/catalogue/Support.h"
#include "tests/catalogue/Told.h"
#include "tests/kill/Rounds.h"
#include "tests/support/TemporaryFolder.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

using catalogue_tests::Wide;
using testing::IsEmpty;
namespace fs = std::filesystem;

namespace {

constexpr int kDirectories = 6, kBlocks = 20, kPictures = 3;
constexpr std::chrono::microseconds kLongest{30'000};

/// A catalogue all of whose parts tell its version, so that halves of two don't go unseen.
class KilledSaves : public testing::Test {
protected:
    KilledSaves() {
        iniPath = Wide(folder.path() / "tessaro35.ini");
        cachePath = Wide(folder.path() / "tessaro35.cache");
        backupIni = 1;
        demandLoadCache = 1;
    }
    ~KilledSaves() override { Forget(); }

    static void Forget() {
        for (const Directory* directory : directories)
            delete directory;
        directories.clear();
        ForgetIniFile(iniPath);
    }
    static std::wstring Path(int number) { return L"/folder" + std::to_wstring(number); }
    /// As at the end of a session.
    void Save(int version) const {
        Forget();
        for (int number = 1; number <= kDirectories; ++number) {
            auto* const directory = new Directory;
            directories.push_back(directory);
            directory->path = Path(number);
            directory->description = std::to_wstring(version);
            directory->cacheFile = CacheFileName(number);
            for (int block = 0; block < kBlocks; ++block) {
                directory->blocks.push_back(new Block);
                directory->blocks.back()->name = std::to_wstring(version);
            }
            for (int slot = 0; slot < kPictures; ++slot) {
                directory->LargeForWrite().Add(Picture(kLargeWidth, kLargeHeight));
                directory->SmallForWrite().Add(Picture(kSmallWidth, kSmallHeight));
            }
            SaveDirCache(*directory);
        }
        SaveIni(true);
    }
    /// -1 where the file is missing, broken off or mixed.
    static int VersionOfSettings(const fs::path& file) {
        const std::wstring name = Wide(file);
        std::set<int> versions;
        if (!ReadIniFile(name))
            versions.insert(-1);
        for (int number = 1; number <= kDirectories; ++number)
            versions.insert(GetIniInt(Path(number), L"Description", -1, name));
        ForgetIniFile(name);
        return versions.size() == 1 ? *versions.begin() : -1;
    }
    static int VersionOfCatalogue() {
        Forget();
        const MainCacheReading read = ReadMainCache();
        std::set<std::wstring> versions;
        for (const Directory* directory : directories) {
            versions.insert(directory->description);
            if (directory->blocks.size() != kBlocks)
                return -1;
            for (const Block* block : directory->blocks)
                versions.insert(block->name);
        }
        return read.opened && !read.failed && directories.size() == kDirectories && versions.size() == 1
                   ? std::stoi(*versions.begin())
                   : -1;
    }
    void ExpectWholePictures() const {
        for (Directory* directory : directories) {
            LoadDirCache(*directory);
            EXPECT_EQ(directory->largeImages->Count(), kPictures + 1);
            EXPECT_EQ(directory->smallImages->Count(), kPictures + 1);
        }
        EXPECT_THAT(told.lines, IsEmpty()) << "nothing was found damaged";
    }

    const catalogue_tests::CleanState clean;
    const tests::TemporaryFolder folder;
    catalogue_tests::Told told;
};

} // namespace

TEST_F(KilledSaves, AtRandomMomentsLeaveSettingsBackupsCatalogueAndPicturesWhole) {
    int inSettings = 1, inCatalogue = 1; // One is written after the other.
    const auto next = [&] { return std::max(inSettings, inCatalogue) + 1; };
    Save(1);
    tests::killInRounds(
        kLongest,
        [&] {
            for (int version = next();; ++version)
                Save(version);
        },
        [&](int) {
            const int settings = VersionOfSettings(folder.path() / "tessaro35.ini");
            EXPECT_GE(settings, inSettings);
            for (int number = 1; number <= 9; ++number) {
                const fs::path backup = folder.path() / ("tessaro35.bk" + std::to_string(number));
                if (fs::exists(backup)) {
                    EXPECT_GE(VersionOfSettings(backup), 0) << backup;
                }
            }
            const int catalogue = VersionOfCatalogue();
            EXPECT_GE(catalogue, inCatalogue);
            ExpectWholePictures();
            inSettings = settings;
            inCatalogue = catalogue;
        });
    const int last = next();
    Save(last);
    EXPECT_EQ(VersionOfSettings(folder.path() / "tessaro35.ini"), last) << "the next session saves as ever";
    EXPECT_EQ(VersionOfCatalogue(), last);
    for (const auto& entry : fs::directory_iterator(folder.path()))
        EXPECT_EQ(entry.path().string().find(".saving"), std::string::npos) << entry.path() << " was left";
}
