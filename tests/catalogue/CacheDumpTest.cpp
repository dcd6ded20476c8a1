// The program that prints cache files.
#include "tests/catalogue/ArchiveFixture.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/host/ModuleState.h"
#include "tests/support/Shell.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

using testing::HasSubstr;
using testing::Not;

namespace {

class CacheDump : public testing::Test {
protected:
    CacheDump() {
        iniPath = catalogue_tests::Wide(folder.write("tessaro35.ini", "[paths]\r\n"));
        cachePath = catalogue_tests::Wide(folder.path() / "tessaro35.cache");
        columnWidths = {11, 12, 13, 14, 15, 16};
        directories.push_back(new Directory);
        Directory& directory = *directories.back();
        directory.path = L"/doors";
        directory.description = L"\"Doors\"\n";
        directory.cacheFile = catalogue_tests::Wide(folder.path() / "path1_35.cache");
        directory.rotationAngle = 12.5;
        for (const wchar_t* name : {L"T\u00FCr", L"gate"}) {
            directory.blocks.push_back(new Block);
            directory.blocks.back()->name = name;
            directory.blocks.back()->created = 1700000000;
        }
    }

    /// What the program prints; its exit status goes to `status`.
    std::string Dump(const std::string& arguments) {
        const tests::ShellRun run = tests::runShell(TESSARO_BIN_DIR "/cache-dump " + arguments);
        status = run.status;
        return run.output;
    }
    std::string Name(const std::string& file) const { return (folder.path() / file).string(); }

    const catalogue_tests::CleanState clean;
    const tests::TemporaryFolder folder;
    catalogue_tests::Told told;
    int status = -1;
};

} // namespace

TEST_F(CacheDump, PrintsContainerAndRecords) {
    WriteMainCache();
    const std::string text = Dump(Name("tessaro35.cache"));
    EXPECT_EQ(status, 0);
    EXPECT_THAT(text, HasSubstr("container of kind 1, "));
    EXPECT_THAT(text, Not(HasSubstr("not theirs")));
    EXPECT_THAT(text, HasSubstr("main cache\nstamp "));
    EXPECT_THAT(text, HasSubstr("column widths  11  12  13  14  15  16\ndirectories 1\ndirectory 1 at byte 36\n"));
    EXPECT_THAT(text, HasSubstr(" path \"/doors\"  description \"\\\"Doors\\\"\\x0a\"\n"));
    EXPECT_THAT(text, HasSubstr("angle 12.5"));
    EXPECT_THAT(text, HasSubstr("  block 1  \"T\u00FCr\"  \"\"  mark 1  file created 0 (1970-01-01 00:00:00)"));
    EXPECT_THAT(text, HasSubstr("size none  shown as created 1700000000 (2023-11-14 22:13:20)"));
    EXPECT_THAT(text, HasSubstr("  block 2  \"gate\""));
}

TEST_F(CacheDump, TellsWhetherTheCacheSpeaksForTheSettings) {
    WriteMainCache();
    const auto with = [&] { return Dump(Name("tessaro35.cache") + " --ini " + Name("tessaro35.ini")); };
    EXPECT_THAT(with(), HasSubstr("the cache speaks for it"));
    std::filesystem::permissions(Name("tessaro35.ini"), std::filesystem::perms::owner_read);
    EXPECT_THAT(with(), HasSubstr("is read-only: its paths count"));
    const timespec times[] = {{5, 0}, {5, 0}};
    utimensat(AT_FDCWD, Name("tessaro35.ini").c_str(), times, 0);
    EXPECT_THAT(with(), HasSubstr("was written at 5 (1970-01-01 00:00:05): its paths count"));
    std::filesystem::remove(Name("tessaro35.ini"));
    EXPECT_THAT(with(), HasSubstr("the settings file is missing"));
    EXPECT_EQ(status, 0);
}

TEST_F(CacheDump, PrintsTheSlotsOfAPictureFile) {
    Directory& directory = *directories.front();
    directory.SmallForWrite().Add(Picture(kSmallWidth, kSmallHeight));
    directory.LargeForWrite().Add(Picture(kLargeWidth, kLargeHeight));
    SaveDirCache(directory);
    const std::string text = Dump(Name("path1_35.cache"));
    EXPECT_EQ(status, 0);
    EXPECT_THAT(text,
                HasSubstr("picture file\nat byte 0\npicture list of 130 by 96 pixels, 2 slots\n  slot 0  colours 2"));
    EXPECT_THAT(text, HasSubstr("picture list of 66 by 49 pixels, 2 slots\n"));
    EXPECT_THAT(text, HasSubstr("  slot 1  colours 1  checksum "));
}

TEST_F(CacheDump, PrintsADamagedFileUpToTheDamageAndSaysWhereThatIs) {
    useCompression = 0;
    WriteMainCache();
    const std::string bytes = tests::readFile(Name("tessaro35.cache"));
    folder.write("cut", bytes.substr(0, bytes.size() - 10));
    const std::string text = Dump(Name("cut"));
    EXPECT_EQ(status, 1);
    EXPECT_THAT(text, HasSubstr("no container: a plain stream"));
    EXPECT_THAT(text, HasSubstr("  block 1  \"T\u00FCr\""));
    EXPECT_THAT(text, HasSubstr("  block 2  \"gate\"  \"\"  mark 1"));
    EXPECT_THAT(text, HasSubstr("damaged: nothing of that kind can be read at byte " +
                                std::to_string(bytes.size() - 16) + " of the plain stream"));
}

TEST_F(CacheDump, TellsWhereAPackedStreamBreaksOff) {
    SaveDirCache(*directories.front());
    const std::string bytes = tests::readFile(Name("path1_35.cache"));
    folder.write("cut", bytes.substr(0, bytes.size() / 2));
    const std::string text = Dump(Name("cut"));
    EXPECT_EQ(status, 1);
    EXPECT_THAT(text, HasSubstr(", which is not theirs: "));
    EXPECT_THAT(text, HasSubstr("damaged: the packed stream breaks off behind "));
    EXPECT_THAT(text, HasSubstr("picture file"));
}

TEST_F(CacheDump, AFileThatIsMissingAndAnArgumentThatIsUnknownAreTold) {
    EXPECT_THAT(Dump(Name("none")), HasSubstr("was not found"));
    EXPECT_EQ(status, 1);
    EXPECT_THAT(Dump(""), HasSubstr("usage: cache-dump FILE [--ini FILE]"));
    EXPECT_EQ(status, 1);
    EXPECT_THAT(Dump("--what"), HasSubstr("unknown argument: --what"));
}

TEST_F(CacheDump, AskedForHelpItTellsItsUse) {
    for (const char* asked : {"--help", "-h"}) {
        EXPECT_EQ(Dump(asked), "usage: cache-dump FILE [--ini FILE]\n");
        EXPECT_EQ(status, 0);
    }
}
