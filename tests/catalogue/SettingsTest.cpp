#include "tessaro/catalogue/Settings.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tests/catalogue/HostRecorder.h"
#include "tests/catalogue/SettingsFixture.h"
#include "tests/catalogue/WindowRecorder.h"

#include <atomic>
#include <cstdlib>
#include <sys/stat.h>
#include <thread>

using catalogue_tests::SupportPath;
using catalogue_tests::Wide;
using catalogue_tests::WindowRecorder;

namespace {

class Settings : public catalogue_tests::SettingsTest {
protected:
    Settings() { SupportPath::found.reset(); }

    Directory* Add(const std::wstring& path, const std::wstring& cacheFile = L"") {
        auto* const directory = new Directory;
        directory->path = path;
        directory->cacheFile = cacheFile;
        directories.push_back(directory);
        return directory;
    }
    std::vector<std::wstring> CacheFiles() const {
        std::vector<std::wstring> files;
        for (const Directory* directory : directories)
            files.push_back(platform::SplitPath(directory->cacheFile).nameAndExtension());
        return files;
    }
};

} // namespace

TEST_F(Settings, TheFileIsTakenFromTheHostsSupportPath) {
    SupportPath::found = Wide(folder.path() / "Support/TESSARO35.INI");
    iniPath.clear();
    LoadIni();
    EXPECT_EQ(SupportPath::asked, L"tessaro35.ini");
    EXPECT_EQ(iniPath, Wide(folder.path() / "Support/tessaro35.ini")) << "folder kept, name rebuilt";
    EXPECT_EQ(cachePath, Wide(folder.path() / "Support/tessaro35.cache"));
}

TEST_F(Settings, ElseTheFileBesideTheModuleElseTheUsersFolder) {
    moduleFolder = Wide(folder.path() / "module");
    folder.write("module/tessaro35.ini", "");
    iniPath.clear();
    LoadIni();
    EXPECT_EQ(iniPath, Wide(folder.path() / "module/tessaro35.ini"));
    std::filesystem::remove(folder.path() / "module/tessaro35.ini");
    setenv("XDG_DOCUMENTS_DIR", (folder.path() / "docs").c_str(), 1);
    iniPath.clear();
    LoadIni();
    EXPECT_EQ(iniPath, Wide(folder.path() / "docs/Tessaro/tessaro35.ini"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "docs/Tessaro")) << "the folder is made";
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "docs/Tessaro/tessaro35.ini")) << "the file is not";
    SaveIni(false);
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "docs/Tessaro/tessaro35.ini"));
    EXPECT_EQ(UserFolder(), Wide(folder.path() / "docs/Tessaro"));
    unsetenv("XDG_DOCUMENTS_DIR");
}

TEST_F(Settings, APathThatIsKnownIsNotSearchedAgain) {
    SupportPath::found = L"/other/tessaro35.ini";
    const std::wstring before = iniPath;
    LoadIni();
    EXPECT_EQ(iniPath, before);
}

TEST_F(Settings, WithoutAFileAllIsDefaultAndTheFirstSaveMakesIt) {
    LoadIni();
    EXPECT_TRUE(directories.empty());
    EXPECT_TRUE(schemes.empty());
    EXPECT_EQ(columnWidths, (std::array<int, 6>{140, 35, 150, 60, 105, 105}));
    SaveIni(false);
    EXPECT_EQ(Value("paths", "numpaths"), "0");
    EXPECT_EQ(Value("schemes", "numschemes"), "0");
}

TEST_F(Settings, BinaryRubbishIsAnEmptyCatalogue) {
    std::string rubbish(5000, '\0');
    for (std::size_t i = 0; i < rubbish.size(); ++i)
        rubbish[i] = static_cast<char>(i * i * 31 + i / 7);
    Load(rubbish);
    EXPECT_TRUE(directories.empty());
    SaveIni(false);
    EXPECT_EQ(Value("paths", "numpaths"), "0");
}

TEST_F(Settings, DirectoriesComeInTheirOrderNumberedFromOneWithThePlaceholderOnly) {
    Load("[Paths]\nNumPaths=3\nPath2=/B\nPath1=/A\nPath3=/C\n[/a]\nDescription=First\nExplode=Yes\n");
    EXPECT_EQ(Paths(), (std::vector<std::wstring>{L"/A", L"/B", L"/C"}));
    EXPECT_EQ(CacheFiles(), (std::vector<std::wstring>{L"path1_35.cache", L"path2_35.cache", L"path3_35.cache"}));
    EXPECT_EQ(directories.front()->cacheFile, Wide(folder.path() / "path1_35.cache"));
    EXPECT_EQ(directories.front()->description, L"First");
    EXPECT_TRUE(directories.front()->explode);
    EXPECT_FALSE(directories.front()->loaded);
    EXPECT_EQ(directories.front()->smallImages->Count(), 1);
}

TEST_F(Settings, PathsBeyondTheirNumberAreIgnored) {
    Load("[Paths]\nNumPaths=1\nPath1=/a\nPath2=/b\n");
    EXPECT_EQ(Paths(), std::vector<std::wstring>{L"/a"});
}

TEST_F(Settings, APathIsReadUpToItsLimit) {
    Load("[Paths]\nNumPaths=1\nPath1=/" + std::string(9000, 'x') + "\n");
    EXPECT_EQ(directories.front()->path.size(), 8191u);
}

TEST_F(Settings, APathThatComesTwiceIsOneDirectoryUnlessItsCaseDiffers) {
    Load("[Paths]\nNumPaths=4\nPath1=/a\nPath2=/a\nPath3=/A\nPath4=/a\n[/a]\nDescription=Both\n");
    EXPECT_EQ(Paths(), (std::vector<std::wstring>{L"/a", L"/A"}));
    EXPECT_EQ(directories.back()->description, L"Both") << "section names ignore case";
}

TEST_F(Settings, AKnownDirectoryKeepsItsSettingsButTakesTheDescription) {
    Disk("[/a]\nDescription=New\nExplode=Yes\nView=1\nCurrentScheme=S\n");
    ReadIniFile(iniPath);
    Directory* const known = Add(L"/a", L"/c/path4_35.cache");
    known->description = L"Old";
    UpdateDirectories({L"/b", L"/a"});
    EXPECT_EQ(Paths(), (std::vector<std::wstring>{L"/a", L"/b"}))
        << "the order is that of the cache, new ones at the end";
    EXPECT_EQ(directories.front(), known);
    EXPECT_EQ(known->description, L"New");
    EXPECT_FALSE(known->explode);
    EXPECT_EQ(known->viewMode, 3);
    EXPECT_EQ(known->schemeName, L"<None>");
    EXPECT_EQ(CacheFiles(), (std::vector<std::wstring>{L"path4_35.cache", L"path1_35.cache"}));
}

TEST_F(Settings, AnUnlistedDirectoryGoesWithItsCacheFile) {
    const auto gone = folder.write("path1_35.cache", "1"), kept = folder.write("path2_35.cache", "2");
    Add(L"/gone", Wide(gone));
    Add(L"/Kept", Wide(kept));
    UpdateDirectories({L"/kept"});
    EXPECT_FALSE(std::filesystem::exists(gone));
    EXPECT_TRUE(std::filesystem::exists(kept));
    EXPECT_EQ(Paths(), (std::vector<std::wstring>{L"/Kept", L"/kept"}))
        << "kept without case, but not found with case: a second one beside it";
}

TEST_F(Settings, TheNumberOfACacheFileIsTheFirstThatNoDirectoryHas) {
    EXPECT_EQ(NextCacheNumber(), 1);
    Add(L"/a", L"/c/path2_35.cache");
    Add(L"/b", L"/c/Path1_35.cache");
    EXPECT_EQ(NextCacheNumber(), 3);
    Add(L"/c", L"/c/abcd4x.cache");
    EXPECT_EQ(NextCacheNumber(), 3) << "the first four characters are dropped unread";
    Add(L"/d", L"/c/pat.cache");
    Add(L"/e", L"/c/path3_35.cache");
    EXPECT_EQ(NextCacheNumber(), 5);
}

TEST_F(Settings, TheLookForANumberEndsAtADirectoryWithoutACacheFile) {
    Add(L"/a", L"/c/path1_35.cache");
    Add(L"/new");
    Add(L"/b", L"/c/path2_35.cache");
    EXPECT_EQ(NextCacheNumber(), 2);
    CacheNumbers numbers;
    EXPECT_EQ(numbers.Next(), 2);
    EXPECT_EQ(numbers.Next(), 2) << "what is added stands behind it";
}

TEST_F(Settings, DirectoriesThatAreAddedInOneGoGetTheFreeNumbersInTurn) {
    Add(L"/a", L"/c/path2_35.cache");
    Add(L"/b", L"/c/path4_35.cache");
    CacheNumbers numbers;
    EXPECT_EQ(numbers.Next(), 1);
    EXPECT_EQ(numbers.Next(), 3);
    EXPECT_EQ(numbers.Next(), 5);
    EXPECT_EQ(numbers.Next(), 6);
}

TEST_F(Settings, ACacheFileLiesBesideTheMainCache) {
    cachePath = L"/some/where/My.cache";
    EXPECT_EQ(CacheFileName(12), L"/some/where/path12_35.cache");
}

TEST_F(Settings, WithACatalogueTheDialogIsFilled) {
    Load("[Paths]\nNumPaths=2\nPath1=/a\nPath2=/b\n[/a]\nDescription=A's\n[/b]\nDescription=B's\n"
         "[Schemes]\nNumSchemes=2\nScheme1=Zeta\nScheme2=Alpha\n");
    directories.back()->blocks.push_back(new Block);
    Disk("[Paths]\nNumPaths=1\nPath1=/other\n");
    WindowRecorder window;
    theBlockDlg = &window;
    LoadIni();
    EXPECT_EQ(window.schemeNames, (std::vector<std::wstring>{L"<None>", L"Zeta", L"Alpha"}));
    ASSERT_EQ(window.rows.size(), 2u);
    EXPECT_EQ(window.rows[0].text, L"A's");
    EXPECT_EQ(window.rows[0].count, L"0");
    EXPECT_EQ(window.rows[0].directory, directories.front());
    EXPECT_EQ(window.rows[1].text, L"B's");
    EXPECT_EQ(window.rows[1].count, L"1");
    EXPECT_EQ(directories.back()->listIndex, 1);
    EXPECT_EQ(window.selected, 0);
    EXPECT_EQ(Paths(), (std::vector<std::wstring>{L"/a", L"/b"})) << "nothing is read";
}

TEST_F(Settings, TheCurrentDirectoryIsClearedAndItsRowSelected) {
    Add(L"/a");
    Directory* const current = Add(L"/b");
    currentDirectory = current;
    WindowRecorder window;
    theBlockDlg = &window;
    LoadIni();
    EXPECT_EQ(window.selected, 1);
    EXPECT_EQ(window.currentAtSelection, nullptr) << "so that the notification makes it current anew";
    EXPECT_EQ(currentDirectory, current);
}

TEST_F(Settings, ACurrentDirectoryThatIsNotAmongThemStaysAndTheFirstRowIsSelected) {
    Add(L"/a");
    Directory elsewhere;
    currentDirectory = &elsewhere;
    WindowRecorder window;
    theBlockDlg = &window;
    LoadIni();
    EXPECT_EQ(window.selected, 0);
    EXPECT_EQ(window.currentAtSelection, &elsewhere);
    currentDirectory = nullptr;
}

TEST_F(Settings, AnEmptyCatalogueLoadsAnewAtEachOpeningAndLeavesTheDialogEmpty) {
    Load("[Schemes]\nNumSchemes=1\nScheme1=S\n[S]\nType=Color\n");
    MapScheme* const first = *schemes.Lookup(L"S");
    EXPECT_EQ(first->schemeType, 2);
    (*schemes.Lookup(L"S"))->schemeType = 3;
    SetScheme(L"Mine", new MapScheme);
    WindowRecorder window;
    theBlockDlg = &window;
    LoadIni();
    EXPECT_EQ((*schemes.Lookup(L"S"))->schemeType, 2) << "replaced by what the file says";
    EXPECT_NE(schemes.Lookup(L"Mine"), nullptr) << "one that the file does not name stays";
    EXPECT_TRUE(window.schemeNames.empty());
    EXPECT_TRUE(window.rows.empty());
}

TEST_F(Settings, ASchemeThatIsListedTwiceIsOneScheme) {
    Load("[Schemes]\nNumSchemes=3\nScheme1=S\nScheme2=s\nScheme3=S\n");
    EXPECT_EQ(schemes.size(), 2u) << "names are exact, with case";
    SaveIni(false);
    EXPECT_EQ(Section("schemes"), (std::vector<std::string>{"numschemes=2", "scheme1=S", "scheme2=s"}));
}

TEST_F(Settings, ASaveHasItsSectionsInOrderAndDropsUnknownKeys) {
    Load("[Unknown]\nx=1\n[Tessaro Options]\nOld=1\n[Paths]\nNumPaths=2\nPath1=/B\nPath2=/a\n"
         "[Schemes]\nNumSchemes=1\nScheme1=S\n; comment\n");
    SaveIni(false);
    std::vector<std::string> sections;
    const std::string text = Disk();
    for (std::size_t at = text.find('['); at != std::string::npos; at = text.find('[', at + 1))
        sections.push_back(text.substr(at, text.find(']', at) + 1 - at));
    EXPECT_EQ(sections, (std::vector<std::string>{"[tessaro options]", "[paths]", "[/b]", "[/a]", "[schemes]", "[s]"}));
    EXPECT_EQ(text.find("unknown"), text.find("unknowntype"));
    EXPECT_EQ(text.find("old=1"), std::string::npos);
    EXPECT_EQ(Section("paths"), (std::vector<std::string>{"numpaths=2", "path1=/B", "path2=/a"}));
}

TEST_F(Settings, WhatIsSavedIsLoadedAgain) {
    Load("[Paths]\nNumPaths=1\nPath1=/Möbel/A=1;2\n[/Möbel/A=1;2]\nDescription=Stühle = "
         "\xE2\x82\xAC\nSortStyle=RevSize\n");
    SaveIni(false);
    const std::string first = Disk();
    delete directories.front();
    directories.clear();
    LoadIni();
    EXPECT_EQ(Paths(), std::vector<std::wstring>{L"/Möbel/A=1;2"});
    EXPECT_EQ(directories.front()->description, L"Stühle = €");
    EXPECT_EQ(directories.front()->sortStyle, 11);
    SaveIni(false);
    EXPECT_EQ(Disk(), first);
}

TEST_F(Settings, AReadOnlyFileIsNotWrittenAndNoBackupIsMade) {
    Load("[Tessaro Options]\nBackupIni=1\n[Paths]\nNumPaths=1\nPath1=/a\n");
    const std::string before = Disk();
    ASSERT_EQ(chmod((folder.path() / "tessaro35.ini").c_str(), 0444), 0);
    directories.front()->description = L"New";
    SaveIni(false);
    EXPECT_EQ(Disk(), before);
    SaveIni(true);
    EXPECT_EQ(Disk(), before);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "tessaro35.bk1"));
    EXPECT_EQ(GetIniInt(L"Paths", L"NumPaths", -1, iniPath), -1) << "the image is gone";
}

TEST_F(Settings, BackupsFollowTheirOption) {
    Load("[Tessaro Options]\nBackupIni=1\n");
    SaveIni(false);
    EXPECT_EQ(tests::readFile(folder.path() / "tessaro35.bk1"), "[Tessaro Options]\nBackupIni=1\n");
    backupIni = 0;
    SaveIni(false);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "tessaro35.bk2"));
}

TEST_F(Settings, OnlyAFinalSaveFreesTheSchemesBehindTheirWriting) {
    SetScheme(L"S", new MapScheme);
    SaveIni(false);
    EXPECT_EQ(schemes.size(), 1u);
    SaveIni(true);
    EXPECT_TRUE(schemes.empty());
    EXPECT_EQ(Value("schemes", "scheme1"), "S");
    EXPECT_EQ(Value("s", "type"), "Layer");
}

TEST_F(Settings, AnotherThreadSavesACopyThatItTakesOnTheMainThread) {
    Load("[Paths]\nNumPaths=1\nPath1=/a\n");
    std::atomic<bool> done{false};
    std::thread finisher([&] {
        SaveIni(false);
        done = true;
        platform::WakeMainThread();
    });
    platform::ServeMainThreadUntil([&] {
        // The record changes whenever the main thread is not serving the copy.
        directories.front()->description += L"x";
        return done.load();
    });
    finisher.join();
    const std::string saved = Value("/a", "description");
    EXPECT_FALSE(saved.empty());
    EXPECT_EQ(saved, std::string(saved.size(), 'x'));
}

TEST_F(Settings, LoadingLeavesItsTrailInTheLog) {
    // The log is off for good in a process that logged without its folder, so this one starts anew.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto session = [this] {
        std::filesystem::create_directory(folder.path() / "Log");
        moduleFolder = Wide(folder.path());
        const std::string ini = platform::ToNarrow(iniPath);
        SupportPath::found = iniPath;
        iniPath.clear();
        Load("[Tessaro Options]\nCacheFile=/x/y.cache\n[Paths]\nNumPaths=1\nPath1=/a\n");
        LoadIni();
        const std::string computer = platform::ToNarrow(platform::ComputerName());
        EXPECT_EQ(tests::readFile(folder.path() / "Log" / ("tessaro for " + computer + " 1.log")),
                  "LoadIni\r\nIni located at " + ini +
                      "\r\nLoad the Inifile\r\nCachefile location: /x/y.cache\r\nLoad the MapSchemes\r\n"
                      "Open the cachefile\r\nLoad Directories\r\nLoadIni return\r\nLoadIni\r\nLoadIni return\r\n");
        std::filesystem::remove_all(folder.path());
        std::_Exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(session(), testing::ExitedWithCode(0), "");
}
