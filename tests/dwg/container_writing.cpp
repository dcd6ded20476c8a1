// Files as containers write them: read back by our own reader, and their checks compared with those of real files.

#include "editor/dwg/checks_2007.h"
#include "editor/dwg/container_writer.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/lz_2007.h"
#include "editor/dwg/paged_format.h"
#include "editor/dwg/reed_solomon.h"
#include "editor/dwg/rewrite_drawing.h"
#include "tests/dwg/real_drawings.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <random>

namespace dwg {
namespace {

constexpr Release paged[] = {Release::r2004, Release::r2007, Release::r2010, Release::r2013, Release::r2018};

Bytes noise(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random() % 50);
    return bytes;
}

FileContent sampleContent(Release release) {
    return {release,
            makeFileStart(release, 29),
            {{"AcDb:Header", noise(900, 1)},
             {"AcDb:AcDbObjects", noise(200000, 2)},
             {"AcDb:Handles", Bytes(0x7400, 3)},
             {"AcDb:Template", Bytes(4)},
             {"AcDb:SummaryInfo", noise(1000, 4)},
             {"AcDb:Preview", writeImageSection({{2, noise(5000, 5)}, {6, noise(30, 6)}}, 0)},
             {"AcDb:FileDepList", noise(300, 7)},
             {"AcDb:AppInfo", noise(0x300, 8)},
             {"AcDb:Unheard-of", noise(70000, 9)}}};
}

TEST(FileStart, bothMaintenanceNumbersSayThatLengthsAreWide) {
    for (const Release release : {Release::r2010, Release::r2013, Release::r2018}) {
        const Bytes start = makeFileStart(release, 30);
        EXPECT_GT(start[0x0B], 3) << "the file's";
        EXPECT_GT(start[0x12], 3) << "the program's, by which some readers go";
        EXPECT_EQ(start[0x17], release < Release::r2018 ? start[0x12] : 0);
    }
}

TEST(WriteContainer, everySectionReadsBackAndEveryCheckHolds) {
    for (const Release release : paged) {
        SCOPED_TRACE(magicOf(release));
        const FileContent content = sampleContent(release);
        const auto bytes = writeFile(content);
        ASSERT_TRUE(bytes) << bytes.error().reason;
        const auto file = DrawingFile::open(memorySource(*bytes));
        ASSERT_TRUE(file) << file.error().reason;
        EXPECT_TRUE(file->findings().empty());
        EXPECT_EQ(file->release(), release);
        EXPECT_EQ(file->codePage(), 29);
        for (const SectionBytes& section : content.sections) {
            Findings findings;
            const auto back = file->section(section.name, &findings);
            ASSERT_TRUE(back) << section.name << ": " << back.error().reason;
            EXPECT_TRUE(findings.empty()) << section.name << ": " << findings.front().reason;
            if (section.name != section::preview) {
                EXPECT_EQ(*back, section.bytes) << section.name;
            }
        }
        const auto pictures = readPictures(file->source());
        ASSERT_TRUE(pictures);
        EXPECT_EQ(*pictures, (std::vector<Picture>{{2, noise(5000, 5)}, {6, noise(30, 6)}}))
            << "by their places in the file, as programs that know no sections read them";
    }
}

TEST(WriteContainer, aFileWithoutSectionsOpens) {
    for (const Release release : paged) {
        const auto bytes = writeFile({release, makeFileStart(release, 30), {}});
        ASSERT_TRUE(bytes);
        const auto file = DrawingFile::open(memorySource(*bytes));
        ASSERT_TRUE(file) << file.error().reason;
        EXPECT_TRUE(file->sections().empty());
        EXPECT_EQ(file->imageAddress(), 0u);
    }
}

TEST(WriteContainer, sectionsOfEverySizeAroundAPageReadBack) {
    for (const Release release : {Release::r2004, Release::r2007}) {
        for (const std::size_t page : {std::size_t{0x7400}, std::size_t{0xF800}}) {
            for (const std::size_t size : {std::size_t{1}, page - 1, page, page + 1, 3 * page}) {
                const FileContent content{release, makeFileStart(release, 30), {{"AcDb:AcDbObjects", noise(size, 3)}}};
                const auto bytes = writeFile(content);
                ASSERT_TRUE(bytes);
                const auto file = DrawingFile::open(memorySource(*bytes));
                ASSERT_TRUE(file) << file.error().reason;
                const auto back = file->section(section::objects);
                ASSERT_TRUE(back) << size << ": " << back.error().reason;
                EXPECT_EQ(*back, content.sections[0].bytes) << size;
            }
        }
    }
}

TEST(WriteContainer, manyPagesOf2007StillListThemselves) {
    const FileContent content{
        Release::r2007, makeFileStart(Release::r2007, 30), {{"AcDb:AcDbObjects", noise(0xF800 * 70, 3)}}};
    const auto bytes = writeFile(content);
    ASSERT_TRUE(bytes);
    const auto file = DrawingFile::open(memorySource(*bytes));
    ASSERT_TRUE(file) << file.error().reason;
    EXPECT_EQ(*file->section(section::objects), content.sections[0].bytes);
}

TEST(CodeWords, parityOfRealFilesIsWhatWeCompute) {
    for (const auto& path : tests::realDrawings("AC1021")) {
        SCOPED_TRACE(path.string());
        const auto source = *openSource(path);
        const Bytes header = *source->bytes(0x80, 3 * codeWordLength);
        EXPECT_EQ(interleave(*deinterleave(header, 3, systemDataLength), 3, systemDataLength), header);
    }
}

/// The record within the file header of 2007, and what stands ahead of it.
struct Header2007 {
    Bytes data, packed, record;
};

Header2007 header2007(const Source& source) {
    Header2007 header;
    header.data = *deinterleave(*source.bytes(0x80, 3 * codeWordLength), 3, systemDataLength);
    const std::size_t length = header.data[0x18] | header.data[0x19] << 8;
    header.packed.assign(header.data.begin() + 0x20, header.data.begin() + 0x20 + static_cast<std::ptrdiff_t>(length));
    header.record = *unpack2007(header.packed, 0x110);
    return header;
}

std::uint64_t number(const Bytes& bytes, std::size_t at) {
    std::uint64_t value = 0;
    for (std::size_t i = 8; i > 0; --i)
        value = value << 8 | bytes[at + i - 1];
    return value;
}

void expectHeaderChecksHold(const Source& source) {
    const Header2007 header = header2007(source);
    EXPECT_EQ(keyCheck2007(number(header.data, 8)), number(header.data, 0));
    EXPECT_EQ(headerCheck2007(header.packed), number(header.data, 0x10));
    Bytes record = header.record;
    std::fill(record.end() - 8, record.end(), std::uint8_t{0});
    EXPECT_EQ(headerCheck2007(record), number(header.record, 0x108));
    const Bytes closing = *source.bytes(0x480 - checkDataLength2007, checkDataLength2007);
    EXPECT_EQ(checkData2007(number(closing, 16), number(closing, 24), number(closing, 32)), closing);
}

/// A map of the file by where the record keeps its numbers.
struct MapOf2007 {
    Bytes packed, plain;
};

MapOf2007 mapOf2007(const Source& source, std::uint64_t offset, std::uint64_t packedSize, std::uint64_t size,
                    std::uint64_t copies) {
    const std::uint64_t words = (roundedUp(packedSize, 8) * copies + systemDataLength - 1) / systemDataLength;
    MapOf2007 map;
    map.packed = *deinterleave(*source.bytes(offset, words * codeWordLength), words, systemDataLength);
    map.packed.resize(packedSize);
    map.plain = packedSize == size ? map.packed : *unpack2007(map.packed, size);
    return map;
}

void expectMapChecksHold(const Source& source) {
    const Bytes record = header2007(source).record;
    const MapOf2007 pages = mapOf2007(source, 0x480 + number(record, 0x38), number(record, 0x50), number(record, 0x58),
                                      number(record, 0x18));
    EXPECT_EQ(pageCheck2007(pages.packed), number(record, 0x10));
    EXPECT_EQ(pageCheck2007(pages.plain), number(record, 0x80));
    std::map<std::uint64_t, std::uint64_t> places;
    std::uint64_t place = 0x480;
    for (std::size_t at = 0; at + 16 <= pages.plain.size(); at += 16) {
        places[number(pages.plain, at + 8)] = place;
        place += number(pages.plain, at);
    }
    const MapOf2007 sections = mapOf2007(source, places.at(number(record, 0xC0)), number(record, 0xB0),
                                         number(record, 0xC8), number(record, 0xD8));
    EXPECT_EQ(pageCheck2007(sections.packed), number(record, 0xD0));
    EXPECT_EQ(pageCheck2007(sections.plain), number(record, 0xA8));

    // Every page of every section.
    std::size_t at = 0, checked = 0;
    while (at + 64 <= sections.plain.size()) {
        const bool interleaved = number(sections.plain, at + 0x30) == 4;
        const std::uint64_t nameLength = number(sections.plain, at + 0x20), count = number(sections.plain, at + 0x38);
        at += 64 + nameLength;
        for (std::uint64_t i = 0; i < count; ++i, at += 56) {
            const std::uint64_t from = places.at(number(sections.plain, at + 0x10));
            const std::uint64_t size = number(sections.plain, at + 0x18), stored = number(sections.plain, at + 0x20);
            const std::uint64_t words = (roundedUp(stored, 8) + pageDataLength - 1) / pageDataLength;
            Bytes data;
            if (interleaved) {
                const Bytes coded = *source.bytes(from, words * codeWordLength);
                data = *deinterleave(coded, words, pageDataLength);
                EXPECT_EQ(interleave(data, words, pageDataLength), coded);
                data.resize(stored);
            } else {
                const Bytes row = *source.bytes(from, roundedUp(stored, 8));
                // What the last word was filled up with isn't stored.
                const std::size_t whole = row.size() / pageDataLength;
                EXPECT_EQ(pageParity(ByteView(row).first(whole * pageDataLength)),
                          *source.bytes(from + row.size(), whole * 4));
                data = Bytes(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(stored));
            }
            EXPECT_EQ(pageCheck2007(data), number(sections.plain, at + 0x30));
            const Bytes plain = stored < size ? *unpack2007(data, size) : data;
            EXPECT_EQ(pageChecksum2007(plain), number(sections.plain, at + 0x28));
            ++checked;
        }
    }
    EXPECT_GE(checked, 5u);
}

TEST(Checks2007, thoseOfOurOwnFilesHold) {
    const auto bytes = writeFile(sampleContent(Release::r2007));
    ASSERT_TRUE(bytes);
    const SourcePtr source = memorySource(*bytes);
    expectHeaderChecksHold(*source);
    expectMapChecksHold(*source);
}

TEST(Checks2007, thoseOfRealFilesAreWhatWeCompute) {
    const auto files = tests::realDrawings("AC1021");
    if (files.empty())
        GTEST_SKIP() << "shared drawings are absent";
    for (const auto& path : files) {
        SCOPED_TRACE(path.string());
        const auto source = *openSource(path);
        expectHeaderChecksHold(*source);
        expectMapChecksHold(*source);
    }
}

TEST(PagedFileHeader, itsCheckInRealFilesIsWhatWeCompute) {
    std::size_t checked = 0;
    for (const char* magic : {"AC1018", "AC1024", "AC1027", "AC1032"}) {
        for (const auto& path : tests::realDrawings(magic)) {
            Bytes header = *(*openSource(path))->bytes(0x80, 0x6C);
            dwg::paged::MaskSequence mask;
            for (std::uint8_t& byte : header)
                byte = static_cast<std::uint8_t>(byte ^ mask.next());
            const auto stored = static_cast<std::uint32_t>(number(header, 0x64) >> 32);
            putU32(header, 0x68, 0);
            EXPECT_EQ(crc32(header), stored) << path;
            ++checked;
        }
    }
    if (checked == 0)
        GTEST_SKIP() << "shared drawings are absent";
}

} // namespace
} // namespace dwg
