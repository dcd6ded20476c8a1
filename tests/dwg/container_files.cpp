#include "editor/dwg/drawing_file.h"
#include "tests/dwg/container_builder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using dwg::Bytes;
using dwg::DrawingFile;
using dwg::ErrorKind;
using dwg::Release;
using testing::HasSubstr;
using testing::IsEmpty;

Bytes pattern(std::size_t size) {
    Bytes out(size);
    for (std::size_t i = 0; i < size; ++i)
        out[i] = static_cast<std::uint8_t>(i * 7 + i / 251);
    return out;
}

dwg::Result<DrawingFile> open(Bytes bytes) {
    return DrawingFile::open(dwg::memorySource(std::move(bytes)));
}

Bytes part(const Bytes& bytes, std::size_t from, std::size_t count) {
    const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return Bytes(at, at + static_cast<std::ptrdiff_t>(count));
}

struct Built {
    Release release;
    Bytes file;
};

const Bytes small = pattern(300);
const Bytes large = pattern(0x7400 * 2 + 5000);

std::vector<Built> builtFiles() {
    const std::vector<tests::NamedBytes> sections = {{"AcDb:Header", small}, {"AcDb:AcDbObjects", large}};
    std::vector<Built> files;
    for (const Release release : {Release::r2004, Release::r2010, Release::r2013, Release::r2018})
        files.push_back({release, tests::buildPagedFile(release, sections)});
    files.push_back({Release::r2007, tests::buildFile2007(sections)});
    return files;
}

TEST(DrawingFile, sectionsOfEachPagedReleaseComeOutWhole) {
    for (const Built& built : builtFiles()) {
        SCOPED_TRACE(dwg::magicOf(built.release));
        const auto file = open(built.file);
        ASSERT_TRUE(file) << file.error().reason;
        EXPECT_EQ(file->release(), built.release);
        EXPECT_EQ(file->codePage(), 30);
        EXPECT_THAT(file->sections(), testing::UnorderedElementsAre("AcDb:Header", "AcDb:AcDbObjects"));
        dwg::Findings findings;
        const auto header = file->section(dwg::section::header, &findings);
        const auto objects = file->section(dwg::section::objects, &findings);
        ASSERT_TRUE(header) << header.error().reason;
        ASSERT_TRUE(objects) << objects.error().reason;
        EXPECT_EQ(*header, small);
        EXPECT_TRUE(*objects == large);
        EXPECT_THAT(findings, IsEmpty());
    }
}

TEST(DrawingFile, aRangeAcrossPagesEqualsThatOfTheSection) {
    for (const Built& built : builtFiles()) {
        SCOPED_TRACE(dwg::magicOf(built.release));
        const auto file = open(built.file);
        ASSERT_TRUE(file);
        const auto range = file->sectionRange(dwg::section::objects, 0x7400 - 10, 30);
        ASSERT_TRUE(range);
        EXPECT_EQ(*range, part(large, 0x7400 - 10, 30));
        const auto beyond = file->sectionRange(dwg::section::objects, large.size() - 1, 2);
        ASSERT_FALSE(beyond);
        EXPECT_EQ(beyond.error().kind, ErrorKind::truncated);
    }
}

TEST(DrawingFile, recordsOfAFlatFileAnswerToTheNamesOfSections) {
    const Bytes bytes = tests::buildFlatFile(
        Release::r2000,
        {{0, small}, {1, pattern(20)}, {2, pattern(30)}, {3, pattern(53)}, {4, {0, 0, 1, 0}}, {5, {7}}});
    const auto file = open(bytes);
    ASSERT_TRUE(file);
    const auto check = [&](std::string_view name, const Bytes& expected) {
        const auto section = file->section(name);
        ASSERT_TRUE(section) << name;
        EXPECT_TRUE(*section == expected) << name;
    };
    check(dwg::section::header, small);
    check(dwg::section::classes, pattern(20));
    check(dwg::section::handles, pattern(30));
    check(dwg::section::objectFreeSpace, pattern(53));
    check(dwg::section::templateSection, {0, 0, 1, 0});
    check(dwg::section::auxHeader, {7});
    check(dwg::section::objects, bytes);
    EXPECT_FALSE(file->has(dwg::section::summaryInfo));
    EXPECT_EQ(file->section(dwg::section::summaryInfo).error().kind, ErrorKind::missing);
}

TEST(DrawingFile, aRecordOutsideTheFileIsAFindingAndLeftOut) {
    Bytes bytes = tests::buildFlatFile(Release::r14, {{0, small}, {1, pattern(20)}});
    bytes[0x15 + 4 + 8] = 0x7F; // the size of record 0
    const auto file = open(bytes);
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->has(dwg::section::header));
    EXPECT_TRUE(file->has(dwg::section::classes));
    ASSERT_EQ(file->findings().size(), 1u);
    EXPECT_THAT(file->findings()[0].reason, HasSubstr("outside the file"));
}

TEST(DrawingFile, tooManyRecordsAreDamage) {
    Bytes bytes = tests::buildFlatFile(Release::r13, {{0, small}});
    bytes[0x18] = 0x10;
    EXPECT_EQ(open(bytes).error().kind, ErrorKind::damaged);
}

TEST(DrawingFile, otherFilesAreToldApart) {
    EXPECT_EQ(open({}).error().kind, ErrorKind::truncated);
    EXPECT_EQ(open({'A', 'C', '1', '0'}).error().kind, ErrorKind::truncated);
    EXPECT_EQ(open({'P', 'K', 3, 4, 0, 0, 0, 0}).error().kind, ErrorKind::notADrawing);
    EXPECT_EQ(open({'A', 'C', '1', '0', '0', '9', 0, 0}).error().kind, ErrorKind::unsupported);
    EXPECT_EQ(open({'A', 'C', '1', '0', '1', '5'}).error().kind, ErrorKind::truncated);
}

TEST(DrawingFile, aFolderOrAMissingFileIsAnIoError) {
    const tests::TemporaryFolder folder;
    EXPECT_EQ(DrawingFile::open(folder.path()).error().kind, ErrorKind::io);
    EXPECT_EQ(DrawingFile::open(folder.path() / "absent.dwg").error().kind, ErrorKind::io);
}

TEST(DrawingFile, aFileIsReadThroughItsSource) {
    const tests::TemporaryFolder folder;
    const Bytes bytes = tests::buildFile2007({{"AcDb:Header", small}});
    const auto path = folder.write("a.dwg", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    const auto file = DrawingFile::open(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(*file->section(dwg::section::header), small);
}

TEST(PagedFile, aFlippedByteOfAPageIsAFindingOrAnError) {
    const Bytes bytes = tests::buildPagedFile(Release::r2004, {{"AcDb:Header", small}});
    // The first page begins at 0x100: head, packing, literals.
    Bytes flipped = bytes;
    flipped[0x100 + 32 + 40] ^= 0x10;
    const auto file = open(flipped);
    ASSERT_TRUE(file);
    dwg::Findings findings;
    ASSERT_TRUE(file->section(dwg::section::header, &findings));
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_THAT(findings[0].reason, HasSubstr("data doesn't match"));

    flipped = bytes;
    flipped[0x100] ^= 0x01;
    const auto unmarked = open(flipped)->section(dwg::section::header);
    ASSERT_FALSE(unmarked);
    EXPECT_THAT(unmarked.error().reason, HasSubstr("page mark"));
    EXPECT_EQ(unmarked.error().offset, 0x100u);
}

TEST(PagedFile, aDamagedInnerHeaderIsAnError) {
    Bytes bytes = tests::buildPagedFile(Release::r2010, {{"AcDb:Header", small}});
    bytes[0x81] ^= 1;
    const auto file = open(bytes);
    ASSERT_FALSE(file);
    EXPECT_THAT(file.error().reason, HasSubstr("mark"));
    EXPECT_EQ(file.error().offset, 0x80u);
}

TEST(PagedFile, aPageLeftOutIsZeros) {
    Bytes bytes = tests::buildPagedFile(Release::r2004, {{"AcDb:Template", Bytes(10)}, {"AcDb:Header", small}});
    const auto file = open(bytes);
    ASSERT_TRUE(file);
    const auto zeros = file->section(dwg::section::templateSection);
    ASSERT_TRUE(zeros);
    EXPECT_EQ(*zeros, Bytes(10));
}

// Every third byte of small files of each release, flipped in each bit's turn: nothing but values and errors.
TEST(PagedFile, noFlippedByteBreaksTheReader) {
    for (const Built& built : builtFiles()) {
        SCOPED_TRACE(dwg::magicOf(built.release));
        const std::size_t interesting = std::min<std::size_t>(built.file.size(), 0x700);
        const std::size_t tail = built.file.size() - 0x800;
        for (std::size_t i = 0; i < interesting + 0x800; i += 3) {
            const std::size_t at = i < interesting ? i : tail + (i - interesting);
            Bytes flipped = built.file;
            flipped[at] = static_cast<std::uint8_t>(flipped[at] ^ 1u << i % 8);
            const auto file = open(std::move(flipped));
            if (!file)
                continue;
            for (const std::string& name : file->sections()) {
                dwg::Findings findings;
                const auto section = file->section(name, &findings);
                if (section) {
                    EXPECT_LE(section->size(), dwg::largestSection);
                }
            }
        }
    }
}

TEST(PagedFile, noCutBreaksTheReader) {
    for (const Built& built : builtFiles()) {
        SCOPED_TRACE(dwg::magicOf(built.release));
        for (std::size_t length = 0; length < built.file.size(); length += 97) {
            const auto file = open(part(built.file, 0, length));
            if (file)
                for (const std::string& name : file->sections())
                    (void)file->section(name);
        }
    }
}

} // namespace
