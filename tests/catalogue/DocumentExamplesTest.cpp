// The examples in docs/formats are what the code reads and writes.
#include "tests/catalogue/ArchiveFixture.h"
#include "tests/catalogue/SettingsFixture.h"

#include "tessaro/catalogue/ImageList.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sstream>
#include <sys/stat.h>

using catalogue_tests::Container;
using catalogue_tests::Digits;
using catalogue_tests::Hex;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

/// A page's section "Example".
std::string ExampleOf(const std::string& page) {
    const std::string text = tests::readFile(std::filesystem::path(TESSARO_SOURCE_DIR) / "docs/formats" / page);
    const std::string heading = "\n## Example\n";
    const std::size_t begin = text.find(heading);
    if (begin == std::string::npos)
        return {};
    const std::size_t body = begin + heading.size();
    return text.substr(body, text.find("\n## ", body) - body);
}

/// The lines between the marks of the first block of a section.
std::vector<std::string> BlockOf(const std::string& section) {
    std::istringstream in(section);
    std::vector<std::string> lines;
    bool inside = false;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("```")) {
            if (inside)
                break;
            inside = true;
        } else if (inside) {
            lines.push_back(line);
        }
    }
    return lines;
}

/// The bytes of one line of a dump and where they stand: offset, bytes, what they mean.
struct DumpLine {
    std::size_t offset = 0;
    std::string bytes;
};
DumpLine Dumped(const std::string& line) {
    const std::string digits = line.substr(6, line.find("   ", 6) - 6);
    return {std::stoul(line.substr(0, 4), nullptr, 16), Hex(digits.substr(0, digits.find("...")))};
}

/// The bytes of a dump without gaps.
std::string WholeDump(const std::string& page) {
    std::string bytes;
    for (const std::string& line : BlockOf(ExampleOf(page))) {
        const DumpLine dumped = Dumped(line);
        EXPECT_EQ(dumped.offset, bytes.size()) << line;
        bytes += dumped.bytes;
    }
    return bytes;
}

/// What stands between grave accents outside of the block.
std::vector<std::string> Quoted(const std::string& section) {
    std::vector<std::string> quoted;
    std::size_t at = section.rfind("```") + 3;
    for (;;) {
        const std::size_t begin = section.find('`', at);
        const std::size_t end = begin == std::string::npos ? begin : section.find('`', begin + 1);
        if (end == std::string::npos)
            return quoted;
        quoted.push_back(section.substr(begin + 1, end - begin - 1));
        at = end + 1;
    }
}

class ArchiveExample : public catalogue_tests::ArchiveTest {
protected:
    std::wstring ReadText(const std::string& bytes) const {
        std::wstring text;
        Load(bytes, [&](CArchiveExt& archive) { archive >> text; });
        return text;
    }
};

class SettingsExample : public catalogue_tests::SettingsTest {};

} // namespace

TEST_F(ArchiveExample, TheContainersPageShowsWhatIsWritten) {
    const std::string example = WholeDump("cache-container.md");
    const auto work = [](CArchiveExt& archive) { archive.PlainBytes() = "\1\2\3\4"; };
    EXPECT_EQ(Digits(Stored(work, true)), Digits(example));
}

TEST_F(ArchiveExample, TheContainersPageShowsStringsAsTheyAreReadAndWritten) {
    const auto strings = Quoted(ExampleOf("cache-container.md"));
    ASSERT_THAT(strings, SizeIs(4));
    const std::wstring door = L"T\u00fcr", face = L"\U0001F600";
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(ReadText(Hex(strings[i])), door) << strings[i];
    EXPECT_EQ(ReadText(Hex(strings[3])), face);
    EXPECT_EQ(Digits(Stored([&](CArchiveExt& archive) { archive << door; })), Digits(Hex(strings[0])));
    EXPECT_EQ(Digits(Stored([&](CArchiveExt& archive) { archive << face; })), Digits(Hex(strings[3])));
}

TEST_F(SettingsExample, TheMainCachesPageShowsWhatIsReadAndWritten) {
    const std::string plain = WholeDump("main-cache.md");
    EXPECT_EQ(plain.size(), 256u);
    folder.write("tessaro35.cache", Container(plain));
    Disk("");
    const timespec stamp[] = {{1700000000, 0}, {1700000000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, (folder.path() / "tessaro35.ini").c_str(), stamp, 0), 0);
    LoadIni();
    EXPECT_EQ(columnWidths, (std::array<int, 6>{140, 35, 150, 60, 105, 105}));
    ASSERT_THAT(directories, SizeIs(1));
    const Directory& doors = *directories.front();
    EXPECT_EQ(doors.path, L"/doors");
    EXPECT_EQ(doors.description, L"Doors");
    EXPECT_EQ(doors.sortStyle, 1);
    EXPECT_TRUE(doors.useCache && doors.showInsPts && doors.useLargeImages);
    EXPECT_FALSE(doors.explode || doors.multipleInsert || doors.repeat);
    EXPECT_EQ(doors.topIndex, 0);
    EXPECT_EQ(doors.selectedIndex, -1);
    EXPECT_EQ(doors.viewMode, 3);
    EXPECT_EQ(doors.schemeName, L"<None>");
    EXPECT_EQ(doors.cacheFile, L"/path1_35.cache");
    ASSERT_THAT(doors.blocks, SizeIs(1));
    const Block& door = *doors.blocks.front();
    EXPECT_EQ(door.name, L"door");
    EXPECT_EQ(door.description, L"A door");
    EXPECT_TRUE(door.cached);
    EXPECT_EQ(door.cachedStatus, (BlockStatus{3, 1, 2}));
    EXPECT_THAT((std::array<std::int64_t, 4>{door.created, door.modified, door.imageIndex, door.fileType}),
                ElementsAre(4, 5, 1, 16));
    SaveIni(true);
    EXPECT_EQ(Digits(catalogue_tests::Unpacked(tests::readFile(folder.path() / "tessaro35.cache"))), Digits(plain));
}

TEST_F(SettingsExample, ThePictureFilesPageShowsTheHeadsThatAreWritten) {
    ImageList list(kSmallWidth, kSmallHeight, 1, 25);
    list.Add(PlaceholderPicture(kSmallWidth, kSmallHeight));
    std::string written;
    list.Write(written);
    std::size_t compared = 0;
    for (const std::string& line : BlockOf(ExampleOf("picture-file.md"))) {
        const DumpLine dumped = Dumped(line);
        ASSERT_LE(dumped.offset + dumped.bytes.size(), written.size()) << line;
        EXPECT_EQ(Digits(written.substr(dumped.offset, dumped.bytes.size())), Digits(dumped.bytes)) << line;
        compared += dumped.bytes.size();
    }
    EXPECT_EQ(compared, 28u + 14 + 40 + 8);
    EXPECT_EQ(written.size(), 0x92u + 49 * 132);
}

TEST_F(SettingsExample, TheSettingsPageShowsAFileAsItIsWritten) {
    std::string read, written;
    for (const std::string& line : BlockOf(ExampleOf("ini-file.md"))) {
        read += line + "\n";
        written += line + "\r\n";
    }
    Load(read);
    EXPECT_EQ(columnWidths[0], 140);
    ASSERT_THAT(Paths(), ElementsAre(L"/srv/Library/Furniture"));
    EXPECT_EQ(directories.front()->description, L"Furniture");
    EXPECT_EQ(directories.front()->sortStyle, 12);
    backupIni = 1;
    SaveIni(false);
    EXPECT_EQ(Disk(), written);
}
