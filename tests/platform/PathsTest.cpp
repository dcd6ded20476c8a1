#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace platform;

namespace {

std::wstring Wide(const std::filesystem::path& path) {
    return FromNarrow(path.native());
}

std::vector<std::wstring> Names(const std::vector<FoundFile>& files) {
    std::vector<std::wstring> names;
    for (const FoundFile& file : files)
        names.push_back(file.name);
    return names;
}

/// A variable of the environment for the life of the object; null takes it away.
class Variable {
public:
    Variable(const char* variable, const char* value) : name(variable) {
        if (const char* const present = std::getenv(name))
            old = present;
        Set(value);
    }
    ~Variable() { Set(old ? old->c_str() : nullptr); }

private:
    void Set(const char* value) {
        if (value != nullptr)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    const char* name;
    std::optional<std::string> old;
};

} // namespace

TEST(Paths, JoinWritesOneSeparator) {
    EXPECT_EQ(Join(L"/a", L"b"), L"/a/b");
    EXPECT_EQ(Join(L"/a/", L"b"), L"/a/b");
    EXPECT_EQ(Join(L"/a\\", L"/b"), L"/a\\b");
    EXPECT_EQ(Join(L"", L"b"), L"b");
    EXPECT_EQ(Join(L"/a", L""), L"/a/");
}

TEST(Paths, SplitTakesBothSlashes) {
    const PathParts parts = SplitPath(L"C:\\lib/a.b\\chair.v2.dwg");
    EXPECT_EQ(parts.drive, L"");
    EXPECT_EQ(parts.driveAndFolder(), L"C:\\lib/a.b\\");
    EXPECT_EQ(parts.name, L"chair.v2");
    EXPECT_EQ(parts.extension, L".dwg");
    EXPECT_EQ(parts.nameAndExtension(), L"chair.v2.dwg");
    EXPECT_EQ(SplitPath(L"a.b/c").extension, L"");
    EXPECT_EQ(SplitPath(L"a.b/c").name, L"c");
    EXPECT_EQ(SplitPath(L".ini").extension, L".ini");
    EXPECT_EQ(SplitPath(L"dir/").name, L"");
    EXPECT_EQ(SplitPath(L"").folder, L"");
}

TEST(Paths, AnExactSpellingWinsThenCaseIsIgnoredOnEveryComponent) {
    const tests::TemporaryFolder folder;
    folder.write("Lib/Chairs/Chair.dwg", "1");
    folder.write("Lib/Chairs/chair.DWG", "22");
    const std::wstring root = Wide(folder.path());
    EXPECT_EQ(GetFileStatus(root + L"/Lib/Chairs/chair.DWG")->size, 2u);
    EXPECT_EQ(GetFileStatus(root + L"/Lib/Chairs/Chair.dwg")->size, 1u);
    EXPECT_EQ(FindPath(root + L"/LIB/chairs/CHAIR.DWG"), root + L"/Lib/Chairs/Chair.dwg")
        << "of several the first in byte order";
    EXPECT_EQ(FindPath(root + L"\\lib\\CHAIRS\\chair.DWG"), root + L"/Lib/Chairs/chair.DWG");
    EXPECT_EQ(FindPath(root + L"/lib/../LIB/./chairs/"), root + L"/Lib/../Lib/Chairs");
    EXPECT_EQ(FindPath(root + L"/lib/none"), std::nullopt);
    EXPECT_EQ(FindPath(root + L"/none/chair.dwg"), std::nullopt);
    EXPECT_EQ(FindPath(root + L"/lib/chairs/chair.dwg/x"), std::nullopt);
    EXPECT_EQ(FindPath(L""), std::nullopt);
    EXPECT_EQ(FindPath(root + std::wstring(L"/Lib\0", 5)), std::nullopt);
}

TEST(Paths, AQuestionForTheSpellingGivenDoesNotLookAtOthers) {
    const tests::TemporaryFolder folder;
    folder.write("a.BMP", "1");
    EXPECT_TRUE(FileExistsAsSpelled(Wide(folder.path() / "a.BMP")));
    EXPECT_FALSE(FileExistsAsSpelled(Wide(folder.path() / "a.bmp")));
    EXPECT_TRUE(FileExists(Wide(folder.path() / "a.bmp")));
    EXPECT_FALSE(FileExistsAsSpelled(Wide(folder.path() / "a.BMP") + std::wstring(L"\0x", 2)));
}

TEST(Paths, ANameThatIsNoUtf8IsFoundByWhatIsShownOfIt) {
    const tests::TemporaryFolder folder;
    std::ofstream(folder.path() / "M\xF6"
                                  "bel.dwg")
        << "123";
    const auto files = ListFiles(Wide(folder.path()), L"dwg");
    ASSERT_EQ(Names(files), std::vector<std::wstring>{L"Möbel.dwg"});
    EXPECT_EQ(GetFileStatus(Join(Wide(folder.path()), files[0].name))->size, 3u);
}

TEST(Paths, RelativePathsStartAtTheCurrentFolder) {
    const tests::TemporaryFolder folder;
    folder.write("Sub/File.txt", "x");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    EXPECT_EQ(CurrentFolder(), Wide(std::filesystem::current_path()));
    EXPECT_EQ(FindPath(L"sub/FILE.TXT"), L"Sub/File.txt");
    EXPECT_TRUE(CreateFolder(L"new"));
    EXPECT_TRUE(FolderExists(L"NEW"));
    std::filesystem::current_path(before);
}

TEST(Paths, AStatusHasTimesSizeRightsAndKind) {
    const tests::TemporaryFolder folder;
    const auto file = folder.write("f", "12345");
    const timespec times[] = {{0, 0}, {1'000'000'000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    auto status = GetFileStatus(Wide(file));
    ASSERT_TRUE(status);
    EXPECT_EQ(status->size, 5u);
    EXPECT_EQ(status->modified, 1'000'000'000);
    EXPECT_FALSE(status->readOnly);
    EXPECT_FALSE(status->folder);
    struct statx raw;
    ASSERT_EQ(statx(AT_FDCWD, file.c_str(), 0, STATX_BTIME, &raw), 0);
    EXPECT_EQ(status->created, (raw.stx_mask & STATX_BTIME) != 0 ? raw.stx_btime.tv_sec : status->modified);
    ASSERT_EQ(chmod(file.c_str(), 0444), 0);
    EXPECT_TRUE(GetFileStatus(Wide(file))->readOnly);
    EXPECT_TRUE(GetFileStatus(Wide(folder.path()))->folder);
    EXPECT_TRUE(FileExists(Wide(folder.path()))) << "a folder exists too";
    EXPECT_TRUE(FolderExists(Wide(folder.path())));
    EXPECT_FALSE(FolderExists(Wide(file)));
    EXPECT_EQ(GetFileStatus(L"/proc/version")->created, GetFileStatus(L"/proc/version")->modified)
        << "no birth time there";
}

TEST(Paths, AFolderListsFilesOfAnExtensionInNameOrderIgnoringCase) {
    const tests::TemporaryFolder folder;
    for (const char* name : {"b.dwg", "A.DWG", "c.Dwg", "B2.dwg", "a.dwg", "x.dwgx", "dwg", "y.dxf", ".dwg"})
        folder.write(name, "x");
    std::filesystem::create_directory(folder.path() / "folder.dwg");
    std::filesystem::create_symlink(folder.path() / "y.dxf", folder.path() / "link.dwg");
    std::filesystem::create_symlink(folder.path() / "nowhere", folder.path() / "dangling.dwg");
    ASSERT_EQ(mkfifo((folder.path() / "pipe.dwg").c_str(), 0600), 0);
    EXPECT_EQ(Names(ListFiles(Wide(folder.path()), L"dwg")),
              (std::vector<std::wstring>{L".dwg", L"A.DWG", L"a.dwg", L"b.dwg", L"B2.dwg", L"c.Dwg", L"link.dwg"}));
    EXPECT_EQ(ListFiles(Wide(folder.path()), L"DWG").size(), 7u);
    EXPECT_EQ(ListFiles(Wide(folder.path()), L"dwg")[6].status.size, 1u) << "the status of what a link leads to";
}

TEST(Paths, AFileWhoseStatusIsRefusedIsListedWithoutOne) {
    const tests::TemporaryFolder folder;
    folder.write("closed/a.dwg", "x");
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const auto closed = folder.path() / "closed";
    ASSERT_EQ(chmod(closed.c_str(), 0444), 0);
    const int status = tests::inChild([&] {
        if (geteuid() == 0 && !tests::becomeNobody())
            return 99;
        const auto files = ListFiles(Wide(closed), L"dwg");
        return files.size() == 1 && files[0].name == L"a.dwg" && !files[0].statusKnown ? 0 : 1;
    });
    ASSERT_EQ(chmod(closed.c_str(), 0755), 0);
    if (status == 99)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(ListFiles(Wide(closed), L"dwg").at(0).statusKnown);
}

TEST(Paths, AFolderThatCannotBeReadListsNothing) {
    const tests::TemporaryFolder folder;
    EXPECT_TRUE(ListFiles(Wide(folder.path() / "none"), L"dwg").empty());
    EXPECT_TRUE(ListFiles(Wide(folder.write("f.dwg", "")), L"dwg").empty());
    EXPECT_TRUE(ListFiles(L"", L"dwg").empty());
}

TEST(Paths, AFolderIsMadeWithThoseOnTheWay) {
    const tests::TemporaryFolder folder;
    const std::wstring root = Wide(folder.path());
    EXPECT_TRUE(CreateFolder(root + L"/a/b/c/"));
    EXPECT_TRUE(FolderExists(root + L"/a/b/c"));
    EXPECT_FALSE(CreateFolder(root + L"/A/B"));
    EXPECT_TRUE(CreateFolder(root + L"/A/d"));
    EXPECT_TRUE(FileExistsAsSpelled(root + L"/a/d")) << "in the folder that is there";
    folder.write("file", "");
    EXPECT_FALSE(CreateFolder(root + L"/file"));
    EXPECT_FALSE(CreateFolder(root + L"/file/x"));
    EXPECT_FALSE(CreateFolder(L""));
}

TEST(Paths, TheDocumentsFolderFollowsTheUsersSettings) {
    const tests::TemporaryFolder home;
    const Variable homeVariable("HOME", home.path().c_str());
    const Variable noConfig("XDG_CONFIG_HOME", nullptr);
    const Variable noDocuments("XDG_DOCUMENTS_DIR", nullptr);
    EXPECT_EQ(DocumentsFolder(), Wide(home.path() / "Documents"));
    home.write(".config/user-dirs.dirs", "# XDG_DOCUMENTS_DIR=\"/no\"\n"
                                         "XDG_DOWNLOAD_DIR=\"$HOME/Down\"\n"
                                         "  XDG_DOCUMENTS_DIR=\"$HOME/Meine \\\"Dokumente\\\"\"\n");
    EXPECT_EQ(DocumentsFolder(), Wide(home.path() / "Meine \"Dokumente\""));
    home.write("other/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/srv/docs\"\n");
    {
        const Variable config("XDG_CONFIG_HOME", (home.path() / "other").c_str());
        EXPECT_EQ(DocumentsFolder(), L"/srv/docs");
    }
    const Variable documents("XDG_DOCUMENTS_DIR", "/elsewhere");
    EXPECT_EQ(DocumentsFolder(), L"/elsewhere");
}

TEST(Paths, ADocumentsFolderThatIsNoFullPathIsPassedOver) {
    const tests::TemporaryFolder home;
    const Variable homeVariable("HOME", home.path().c_str());
    const Variable noConfig("XDG_CONFIG_HOME", nullptr);
    const Variable documents("XDG_DOCUMENTS_DIR", "relative");
    home.write(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"docs\"\n");
    EXPECT_EQ(DocumentsFolder(), Wide(home.path() / "Documents"));
}

TEST(Paths, TheDataFolderFollowsTheUsersSettings) {
    const Variable home("HOME", "/home/somebody");
    {
        const Variable noData("XDG_DATA_HOME", nullptr);
        EXPECT_EQ(ApplicationDataFolder(), L"/home/somebody/.local/share");
    }
    const Variable data("XDG_DATA_HOME", "/data");
    EXPECT_EQ(ApplicationDataFolder(), L"/data");
}

TEST(Paths, ComputerUserAndExecutableHaveNames) {
    char host[256] = {};
    ASSERT_EQ(gethostname(host, sizeof host - 1), 0);
    EXPECT_EQ(ToNarrow(ComputerName()), host);
    EXPECT_FALSE(UserName().empty());
    EXPECT_EQ(SplitPath(ExecutablePath()).name, L"test_platform");
}
