// Cache files that are moved by a process that dies.
#include "tests/catalogue/Support.h"
#include "tests/catalogue/Told.h"
#include "tests/kill/Rounds.h"
#include "tests/support/TemporaryFolder.h"

#include "tessaro/catalogue/CacheOptions.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

using catalogue_tests::Wide;
using testing::IsEmpty;
namespace fs = std::filesystem;

namespace {

constexpr int kDirectories = 4;
constexpr std::size_t kFileSize = 100'000;
constexpr std::chrono::microseconds kLongest{30'000};

class KilledMoves : public testing::Test {
protected:
    KilledMoves() {
        iniPath = Wide(folder.path() / "tessaro35.ini");
        places = {folder.path() / "one", folder.path() / "two"};
        struct stat here, there;
        const fs::path memory = "/dev/shm";
        if (stat(folder.path().c_str(), &here) == 0 && stat(memory.c_str(), &there) == 0 &&
            here.st_dev != there.st_dev && access(memory.c_str(), W_OK) == 0)
            places.push_back(memory / folder.path().filename()); // On another file system a move is a copy.
        for (const fs::path& place : places)
            fs::create_directory(place);
    }
    ~KilledMoves() override {
        for (const fs::path& place : places)
            fs::remove_all(place);
    }

    /// The name of a file, 0 being the main cache, and what stands in it.
    static std::string Name(int number) {
        return number == 0 ? "tessaro35.cache" : "path" + std::to_string(number) + "_35.cache";
    }
    static std::string Content(int number) { return std::string(kFileSize, static_cast<char>('a' + number)); }

    /// All files in the first place, and a catalogue that knows them there.
    void Begin() const {
        for (const fs::path& place : places)
            for (int number = 0; number <= kDirectories; ++number)
                fs::remove(place / Name(number));
        for (int number = 0; number <= kDirectories; ++number)
            folder.write("one/" + Name(number), Content(number));
        for (const Directory* directory : directories)
            delete directory;
        directories.clear();
        ForgetIniFile(iniPath);
        cachePath = Wide(places.front() / Name(0));
        for (int number = 1; number <= kDirectories; ++number) {
            directories.push_back(new Directory);
            directories.back()->path = L"/folder" + std::to_wstring(number);
            directories.back()->cacheFile = Wide(places.front() / Name(number));
        }
    }
    /// Round and round the places, the settings saved each time.
    void MoveForever() const {
        for (std::size_t next = 1;; next = (next + 1) % places.size()) {
            MoveCacheFiles(Wide(places[next] / Name(0)));
            SaveIni(false);
        }
    }
    void ExpectNothingLostOrHalf() const {
        for (int number = 0; number <= kDirectories; ++number) {
            int copies = 0;
            for (const fs::path& place : places) {
                if (!fs::exists(place / Name(number)))
                    continue;
                ++copies;
                EXPECT_TRUE(tests::readFile(place / Name(number)) == Content(number)) << place / Name(number);
            }
            EXPECT_GE(copies, 1) << Name(number) << " is lost";
        }
        for (const fs::path& place : places)
            for (const auto& entry : fs::directory_iterator(place))
                EXPECT_TRUE(entry.path().filename().string().ends_with("35.cache")) << entry.path() << " was left";
    }
    /// What the next session finds in the settings.
    void ExpectWholeSettings() const {
        ForgetIniFile(iniPath);
        ASSERT_TRUE(ReadIniFile(iniPath));
        EXPECT_EQ(GetIniInt(L"Paths", L"NumPaths", 0, iniPath), kDirectories);
        std::wstring toldPlace;
        EXPECT_NE(GetIniString(L"Tessaro Options", L"CacheFile", nullptr, toldPlace, iniPath), 0);
        bool known = false;
        for (const fs::path& place : places)
            known = known || toldPlace == Wide(place / Name(0));
        EXPECT_TRUE(known);
        EXPECT_THAT(told.lines, IsEmpty());
    }

    const catalogue_tests::CleanState clean;
    const tests::TemporaryFolder folder;
    std::vector<fs::path> places;
    catalogue_tests::Told told;
};

} // namespace

TEST_F(KilledMoves, AtRandomMomentsLoseNoFileLeaveNoHalfAndWholeSettings) {
    Begin();
    SaveIni(false);
    tests::killInRounds(
        kLongest, [&] { MoveForever(); },
        [&](int) {
            ExpectNothingLostOrHalf();
            ExpectWholeSettings();
            Begin();
        });
}
