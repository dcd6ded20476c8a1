// The main cache as LoadIni reads and SaveIni writes it.
#include "tests/catalogue/ArchiveFixture.h"
#include "tests/catalogue/SettingsFixture.h"

#include "tessaro/catalogue/CacheMessages.h"
#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tests/support/ChildProcess.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using catalogue_tests::Container;
using catalogue_tests::Digits;
using catalogue_tests::Hex;
using catalogue_tests::Packed;
using catalogue_tests::Told;
using catalogue_tests::Unpacked;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::int64_t kStamp = 1700000000;

/// Two folders and five blocks, written by hand.
const char* const kCatalogue = "00f1536500000000"                                      // stamp
                               "8c000000 23000000 96000000 3c000000 69000000 6a000000" // column widths
                               "02000000"                                              // directories
                               "00000000 00000000 01000000 0000000000000000"           // scale, rotation, sort, angle
                               "00000000 00000000 00000000 01000000 01000000"          // flags
                               "fffeff06 '/doors' fffeff05 'Doors'"                    // path, description
                               "00000000 ffffffff 03000000"                            // top, selected, view
                               "fffeff06 '<None>' 01000000 fffeff0f '/path1_35.cache'" // scheme, large, cache file
                               "03000000"                                              // blocks
                               "fffeff04 'door' fffeff06 'A door' 01000000"            // one
                               "0100000000000000 0200000000000000 0300000000000000"    // creation, write, size
                               "0400000000000000 0500000000000000 01000000 10000000"   // created, modified, slot, type
                               "fffeff04 'gate' fffeff00 01000000"                     // two
                               "0600000000000000 0700000000000000 0800000000000000"    //
                               "0900000000000000 0a00000000000000 02000000 15000000"   //
                               "fffeff02 3dd800de fffeff01 'x' 01000000" // three, whose name is one character
                               "0000000000000000 0000000000000000 ffffffffffffffff"  // never examined
                               "0000000000000000 0000000000000000 00000000 00000000" //
                               "03000000 01000000 0d000000 00000000008056c0"         // the second folder, turned by -90
                               "01000000 01000000 01000000 00000000 00000000"        //
                               "fffeff08 '/windows' fffeff00"                        //
                               "02000000 01000000 00000000"                          //
                               "fffeff03 'dry' 00000000 fffeff0f '/path7_35.cache'"  //
                               "02000000"                                            //
                               "fffeff01 'a' fffeff00 01000000"                      // four
                               "0100000000000000 0100000000000000 0100000000000000"  //
                               "0100000000000000 0100000000000000 00000000 00000000" //
                               "fffeff01 'b' fffeff00 01000000"                      // five
                               "ffffffffffffffff 0000000000000080 ffffffffffffff7f"  //
                               "0100000000000000 0100000000000000 ffffffff ffffffff"; //

class MainCache : public catalogue_tests::SettingsTest {
protected:
    MainCache() { demandLoadCache = 1; }

    std::filesystem::path CacheFile() const { return folder.path() / "tessaro35.cache"; }
    std::string CacheBytes() const { return tests::readFile(CacheFile()); }
    void WriteCache(const std::string& bytes) const { folder.write("tessaro35.cache", bytes); }
    /// A settings file with these paths that was last written at that time.
    void WriteSettings(const std::string& paths, std::int64_t time) {
        Disk("[Tessaro Options]\nDemandLoadCache=1\nColumn1Width=11\n" + paths);
        SetWriteTime(time);
    }
    void SetWriteTime(std::int64_t time) const {
        const timespec times[] = {{time, 0}, {time, 0}};
        utimensat(AT_FDCWD, (folder.path() / "tessaro35.ini").c_str(), times, 0);
    }
    static std::string OnePath(const std::string& path) { return "[Paths]\nNumPaths=1\nPath1=" + path + "\n"; }
    static void Forget() {
        for (Directory* directory : directories)
            delete directory;
        directories.clear();
    }
    /// What is told where the cache can't be read.
    std::vector<std::wstring> Invalid() const {
        return {L"box " + platform::ArchiveException(platform::ArchiveException::endOfFile, cachePath).ErrorText(),
                L"print Tessaro: Invalid cache file, CArchiveException!\n"};
    }

    std::vector<std::wstring> Unwritable(platform::FileException::Cause cause) const {
        return {L"box " + platform::FileException(cause, cachePath).ErrorText(),
                L"box The cache file could not be written to:\n" + cachePath +
                    L"\nPlease correct the problem by clicking the preferences button in Tessaro\nand changing the "
                    L"location. This error is typically generated by setting the\nlocation to a read-only directory, "
                    L"but may also occur if hard-drive space is low."};
    }

    Told told;
};

} // namespace

TEST_F(MainCache, ACatalogueWrittenByHandIsReadAndWrittenBackToTheByte) {
    const std::string plain = Hex(kCatalogue);
    WriteCache(Container(plain));
    WriteSettings(OnePath("/not/looked/at"), kStamp);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/doors", L"/windows"));
    EXPECT_EQ(columnWidths, (std::array<int, 6>{140, 35, 150, 60, 105, 106}));
    const Directory& windows = *directories.back();
    EXPECT_EQ(windows.rotationAngle, -90.0);
    EXPECT_EQ(windows.schemeName, L"dry");
    EXPECT_FALSE(windows.useLargeImages);
    EXPECT_EQ(windows.blocks.back()->name, L"b");
    EXPECT_EQ(windows.blocks.back()->imageIndex, -1);
    const Block& face = *directories.front()->blocks.back();
    EXPECT_EQ(face.name, L"\U0001F600");
    EXPECT_EQ(face.cachedStatus.m_size, ~std::uint64_t{0});

    SaveIni(true);
    EXPECT_EQ(Digits(Unpacked(CacheBytes())), Digits(plain));
    EXPECT_EQ(CacheBytes(), Container(plain));
    EXPECT_THAT(told.lines, IsEmpty());
    EXPECT_GE(told.waits, 2);
}

TEST_F(MainCache, WithoutCompressionTheSameBytesStandThereBare) {
    const std::string plain = Hex(kCatalogue);
    useCompression = 0;
    WriteCache(plain);
    WriteSettings("", kStamp);
    LoadIni();
    EXPECT_EQ(directories.size(), 2u);
    SaveIni(true);
    EXPECT_EQ(CacheBytes(), plain);
}

TEST_F(MainCache, AStampThatEqualsTheSettingsTimeSpeaksForTheSettings) {
    WriteCache(Container(Hex(kCatalogue)));
    WriteSettings(OnePath("/other"), kStamp);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/doors", L"/windows")) << "the settings' paths are not consulted";
    EXPECT_EQ(columnWidths[0], 140) << "nor their widths";
}

TEST_F(MainCache, WithAnotherStampTheSettingsTellThePaths) {
    WriteCache(Container(Hex(kCatalogue)));
    WriteSettings(OnePath("/windows") + "[/windows]\nDescription=Glass\nScale=Prompt\n", kStamp + 1);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/windows"));
    const Directory& windows = *directories.front();
    EXPECT_EQ(windows.description, L"Glass") << "the description is the settings'";
    EXPECT_EQ(windows.scaleMode, 3) << "all else is the cache's";
    EXPECT_EQ(windows.blocks.size(), 2u);
    EXPECT_EQ(columnWidths[0], 11);
}

TEST_F(MainCache, ReadOnlySettingsAreReadWhateverTheStampSays) {
    WriteCache(Container(Hex(kCatalogue)));
    WriteSettings(OnePath("/windows"), kStamp);
    std::filesystem::permissions(folder.path() / "tessaro35.ini", std::filesystem::perms::owner_read);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/windows"));
}

TEST_F(MainCache, WithReadOnlySettingsPicturesAreKeptFromStartToStartAllTheSame) {
    WriteSettings(OnePath("/a"), kStamp);
    std::filesystem::permissions(folder.path() / "tessaro35.ini", std::filesystem::perms::owner_read);
    LoadIni();
    ASSERT_EQ(directories.size(), 1u);
    directories.front()->SmallForWrite().Add(Picture(kSmallWidth, kSmallHeight));
    SaveDirCache(*directories.front());
    const std::string before = Disk();
    SaveIni(true);
    EXPECT_EQ(Disk(), before);
    Forget();
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/a"));
    LoadDirCache(*directories.front());
    EXPECT_EQ(directories.front()->smallImages->Count(), 2);
    EXPECT_THAT(told.lines, IsEmpty());
}

TEST_F(MainCache, WithoutSettingsTheCatalogueIsEmptiedWithItsCacheFiles) {
    std::string plain = Hex(kCatalogue);
    WriteCache(Container(plain));
    LoadIni();
    EXPECT_THAT(Paths(), IsEmpty());
    EXPECT_EQ(CacheBytes(), Container(plain)) << "the main cache itself stays";
}

TEST_F(MainCache, ADirectoryThatNoPathNamesGoesWithItsCacheFile) {
    const auto gone = folder.write("path1_35.cache", "x"), kept = folder.write("path2_35.cache", "y");
    WriteSettings(OnePath("/a"), kStamp);
    for (const auto& [path, file] : {std::pair(L"/gone", gone), std::pair(L"/a", kept)}) {
        directories.push_back(new Directory);
        directories.back()->path = path;
        directories.back()->cacheFile = catalogue_tests::Wide(file);
    }
    SaveIni(true);
    Forget();
    WriteSettings(OnePath("/a"), kStamp + 1);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/a"));
    EXPECT_FALSE(std::filesystem::exists(gone));
    EXPECT_TRUE(std::filesystem::exists(kept));
}

TEST_F(MainCache, APathWhoseCaseWasEditedIsASecondDirectoryBesideTheCachedOne) {
    WriteCache(Container(Hex(kCatalogue)));
    WriteSettings("[Paths]\nNumPaths=2\nPath1=/DOORS\nPath2=/windows\n", kStamp + 1);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/doors", L"/windows", L"/DOORS"));
    EXPECT_EQ(directories.back()->cacheFile, catalogue_tests::Wide(folder.path() / "path2_35.cache"))
        << "the first number that nobody has";
}

TEST_F(MainCache, NewPathsComeBehindTheCachedOnesInWhateverOrderTheyAreListed) {
    WriteCache(Container(Hex(kCatalogue)));
    WriteSettings("[Paths]\nNumPaths=3\nPath1=/new\nPath2=/windows\nPath3=/doors\n", kStamp + 1);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/doors", L"/windows", L"/new"));
}

TEST_F(MainCache, WithTheCacheDeletedTheNumbersStartAnewInListOrder) {
    WriteSettings("[Paths]\nNumPaths=2\nPath1=/b\nPath2=/a\n", kStamp);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/b", L"/a"));
    EXPECT_EQ(directories.front()->cacheFile, catalogue_tests::Wide(folder.path() / "path1_35.cache"));
    EXPECT_EQ(directories.back()->cacheFile, catalogue_tests::Wide(folder.path() / "path2_35.cache"));
    EXPECT_TRUE(directories.front()->blocks.empty()) << "each is read as a first scan";
    EXPECT_THAT(told.lines, IsEmpty());
}

TEST_F(MainCache, AnEmptyCacheIsDeletedAndAllComesFromTheSettings) {
    WriteCache("");
    WriteSettings(OnePath("/a"), -1);
    SetWriteTime(kStamp);
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/a"));
    EXPECT_THAT(told.lines, testing::ElementsAreArray(Invalid()));
    EXPECT_FALSE(std::filesystem::exists(CacheFile()));
    EXPECT_EQ(columnWidths[0], 11);
}

TEST_F(MainCache, ACountLargerThanTheStreamDiscardsWhatWasReadCompletely) {
    for (const char* count : {"03000000", "ffffffff"}) {
        std::string plain = Hex(kCatalogue);
        plain.replace(32, 4, Hex(count));
        WriteCache(Container(plain));
        WriteSettings(OnePath("/windows"), kStamp);
        told.lines.clear();
        LoadIni();
        EXPECT_THAT(Paths(), ElementsAre(L"/windows"));
        EXPECT_TRUE(directories.front()->blocks.empty()) << "made anew";
        EXPECT_THAT(told.lines, testing::ElementsAreArray(Invalid()));
        EXPECT_FALSE(std::filesystem::exists(CacheFile()));
        Forget();
    }
}

TEST_F(MainCache, ACatalogueCutAnywhereIsDiscardedWithOneMessage) {
    const std::string plain = Hex(kCatalogue);
    WriteSettings("", kStamp);
    for (std::size_t length = 0; length < plain.size(); length += 13) {
        WriteCache(plain.substr(0, length));
        told.lines.clear();
        LoadIni();
        ASSERT_THAT(Paths(), IsEmpty()) << length;
        ASSERT_THAT(told.lines, testing::ElementsAreArray(Invalid())) << length;
        ASSERT_FALSE(std::filesystem::exists(CacheFile())) << length;
    }
}

TEST_F(MainCache, BytesBehindTheLastRecordAreNotLookedAt) {
    WriteCache(Hex(kCatalogue) + "more");
    WriteSettings("", kStamp);
    LoadIni();
    EXPECT_EQ(directories.size(), 2u);
    EXPECT_THAT(told.lines, IsEmpty());
}

TEST_F(MainCache, WithCompressionSwitchedOffAPackedCacheIsDeletedAndOnAgainABareOneIsRead) {
    WriteCache(Container(Hex(kCatalogue)));
    WriteSettings(OnePath("/windows"), kStamp);
    useCompression = 0;
    LoadIni();
    EXPECT_EQ(told.lines, Invalid());
    EXPECT_FALSE(std::filesystem::exists(CacheFile()));
    SaveIni(true);
    Forget();
    useCompression = 1;
    told.lines.clear();
    LoadIni();
    EXPECT_THAT(Paths(), ElementsAre(L"/windows"));
    EXPECT_THAT(told.lines, IsEmpty());
}

TEST_F(MainCache, AContainerOfTheSecondKindIsReadAsTheFirst) {
    const std::string plain = Hex(kCatalogue);
    WriteCache(Container(Packed(plain), static_cast<std::uint32_t>(plain.size()), 2));
    WriteSettings("", kStamp);
    LoadIni();
    EXPECT_EQ(directories.size(), 2u);
}

TEST_F(MainCache, AContainerOfTheThirdKindWithAWrongChecksumTellsOfThePassword) {
    const std::string plain = Hex(kCatalogue);
    WriteCache(Container(Packed(plain), static_cast<std::uint32_t>(plain.size()), 3, 1));
    WriteSettings("", kStamp);
    EXPECT_THROW(LoadIni(), platform::UserException);
    EXPECT_THAT(told.lines, ElementsAre(L"box Password incorrect!!!"));
    EXPECT_TRUE(std::filesystem::exists(CacheFile())) << "no handler of the cache's";
}

TEST_F(MainCache, AFileThatFailsIsToldByItsOwnLineAndDeleted) {
    WriteSettings(OnePath("/a"), kStamp);
    std::filesystem::create_symlink("/proc/self/mem", CacheFile());
    LoadIni();
    const platform::FileException failure(platform::FileException::hardIO, cachePath);
    EXPECT_THAT(told.lines,
                ElementsAre(L"box " + failure.ErrorText(), L"print Tessaro: Invalid cache file, CFileException!\n"));
    EXPECT_THAT(Paths(), ElementsAre(L"/a"));
}

TEST_F(MainCache, AStreamOfAnotherVersionHasABoxOfItsOwnInThePlaceOfTheLine) {
    const platform::ArchiveException exception(platform::ArchiveException::badSchema, L"/c");
    TellInvalidMainCache(exception);
    EXPECT_THAT(told.lines, ElementsAre(L"box " + exception.ErrorText(),
                                        L"warning Removing old cache file due to a new version.\nPlease allow all "
                                        L"directories will re-build for best performance."));
}

TEST_F(MainCache, TheStampIsTheSettingsTimeFromBeforeTheSave) {
    WriteSettings(OnePath("/a"), kStamp);
    LoadIni();
    SaveIni(true);
    EXPECT_EQ(Digits(Unpacked(CacheBytes()).substr(0, 8)), Digits(Hex("00f1536500000000")));
    const auto after = platform::GetFileStatus(iniPath);
    ASSERT_TRUE(after.has_value());
    EXPECT_NE(after->modified, kStamp) << "the settings are written behind the cache";
}

TEST_F(MainCache, WithoutSettingsTheStampIsZero) {
    SaveIni(true);
    EXPECT_EQ(Unpacked(CacheBytes()), std::string(36, '\0'));
}

TEST_F(MainCache, OnlyAFinalSaveWritesTheCache) {
    WriteSettings("", kStamp);
    SaveIni(false);
    EXPECT_FALSE(std::filesystem::exists(CacheFile()));
}

TEST_F(MainCache, AReadOnlyCacheIsToldWithItsNameAndTheSettingsAreWrittenAllTheSame) {
    WriteCache("old");
    std::filesystem::permissions(CacheFile(), std::filesystem::perms::owner_read);
    directories.push_back(new Directory);
    directories.back()->path = L"/a";
    SaveIni(true);
    EXPECT_EQ(told.lines, Unwritable(platform::FileException::accessDenied));
    EXPECT_EQ(CacheBytes(), "old");
    EXPECT_EQ(Value("paths", "path1"), "/a");
}

TEST_F(MainCache, AFullDiskIsToldAndLeavesTheOldCacheAndTheSettingsAreWritten) {
    const int result = tests::inChild([this] {
        if (!tests::mountSmallDisk(folder.path(), 64 << 10))
            return 99;
        WriteCache("old");
        directories.push_back(new Directory);
        directories.back()->path = L"/a";
        for (int i = 0; i < 2000; ++i)
            directories.back()->blocks.push_back(new Block);
        useCompression = 0;
        SaveIni(true);
        EXPECT_EQ(told.lines, Unwritable(platform::FileException::diskFull));
        EXPECT_EQ(CacheBytes(), "old");
        EXPECT_EQ(Value("paths", "path1"), "/a");
        return HasFailure() ? 1 : 0;
    });
    if (result == 99)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(result, 0);
}

TEST_F(MainCache, AReadOnlyFolderIsTold) {
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const int result = tests::inChild([this] {
        if (geteuid() == 0 && !tests::becomeNobody())
            return 99;
        WriteMainCache();
        EXPECT_EQ(told.lines, Unwritable(platform::FileException::accessDenied));
        return HasFailure() ? 1 : 0;
    });
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    if (result == 99)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(result, 0);
}

TEST_F(MainCache, LocalizeSetBeforeARestartReadsFalseAfterIt) {
    directories.push_back(new Directory);
    directories.back()->path = L"/a";
    directories.back()->localize = true;
    WriteSettings(OnePath("/a"), kStamp);
    SaveIni(true);
    SetWriteTime(kStamp);
    Forget();
    LoadIni();
    ASSERT_EQ(directories.size(), 1u);
    EXPECT_FALSE(directories.front()->localize);
}

TEST_F(MainCache, TheTrailOfAReadingStandsInTheLog) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto session = [this](bool damaged) {
        std::filesystem::create_directory(folder.path() / "Log");
        moduleFolder = catalogue_tests::Wide(folder.path());
        std::string plain = Hex(kCatalogue);
        if (damaged)
            plain.resize(300);
        WriteCache(plain);
        WriteSettings("", kStamp);
        LoadIni();
        std::string log;
        for (const auto& file : std::filesystem::directory_iterator(folder.path() / "Log"))
            log = tests::readFile(file.path());
        const std::string begin = "Open the cachefile\r\nCachefile opened\r\nRead Cols From Archive\r\n"
                                  "Read DirCount From Archive\r\nRead Dirs From Archive\r\n";
        const std::string end = damaged ? "CArchiveException: 3\r\nLoad Directories\r\nLoadIni return\r\n"
                                        : "Done with cachefile\r\nLoadIni return\r\n";
        const std::size_t at = log.find("Open the cachefile");
        EXPECT_NE(at, std::string::npos);
        EXPECT_EQ(log.substr(std::min(at, log.size())), begin + end);
        std::filesystem::remove_all(folder.path());
        std::_Exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(session(false), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(session(true), testing::ExitedWithCode(0), "");
}
