#include "editor/dwg/write_sections.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/byte_cursor.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/object_map.h"
#include "editor/dwg/thumbnail.h"

#include <gtest/gtest.h>

#include <numeric>

namespace dwg {
namespace {

std::string text(ByteView bytes) {
    return {bytes.begin(), bytes.end()};
}

TEST(FileHeader, HoldsMagicMaintenanceImageAddressCodePageAndLocators) {
    FileFacts facts;
    facts.maintenance = 6;
    facts.imageAddress = 0x01020304;
    facts.codePage = 29;
    Locators locators;
    for (std::uint8_t i = 0; i < locatorCount; ++i)
        locators[i] = {i, 1000u + i, 10u + i};
    const Bytes header = writeFileHeader(facts, locators);
    ASSERT_EQ(header.size(), fileHeaderSize);
    EXPECT_EQ(text(ByteView(header).first(6)), "AC1015");
    ByteCursor in(header, 11);
    EXPECT_EQ(in.u8(), 6);
    EXPECT_EQ(in.u8(), 1);
    EXPECT_EQ(in.u32(), 0x01020304u);
    in.skip(2);
    EXPECT_EQ(in.u16(), 29);
    ASSERT_EQ(in.u32(), locatorCount);
    for (std::uint8_t i = 0; i < locatorCount; ++i) {
        EXPECT_EQ(in.u8(), i);
        EXPECT_EQ(in.u32(), 1000u + i);
        EXPECT_EQ(in.u32(), 10u + i);
    }
}

TEST(FileHeader, CheckOfSixLocatorsIsMasked) {
    const Bytes header = writeFileHeader({}, {});
    ByteCursor in(header, fileHeaderSize - 18);
    EXPECT_EQ(in.u16(), crc16(ByteView(header).first(fileHeaderSize - 18), 0) ^ 0x8461);
    EXPECT_EQ(in.u8(), 0x95);
}

// The first bytes of a file of this release as another program wrote them, up to the check.
TEST(FileHeader, CheckEqualsThatOfARealFile) {
    FileFacts facts;
    facts.imageAddress = 220;
    const Locators locators = {
        {{0, 17259, 522}, {1, 17781, 261}, {2, 21705, 175}, {3, 0, 0}, {4, 22023, 4}, {5, 97, 123}}};
    const Bytes header = writeFileHeader(facts, locators);
    ByteCursor in(header, fileHeaderSize - 18);
    EXPECT_EQ(in.u16(), 0xACE1);
}

TEST(AuxiliaryHeader, IsOfItsLengthAndHoldsBothDatesAndTheSeed) {
    FileFacts facts;
    facts.created = {2454593, 72939562};
    facts.updated = {2454594, 5};
    facts.handleSeed = 0x9E;
    const Bytes header = writeAuxHeader(facts);
    ASSERT_EQ(header.size(), auxHeaderSize);
    EXPECT_EQ(header[0], 0xFF);
    ByteCursor in(header, 63);
    EXPECT_EQ(in.u32(), 2454593u);
    EXPECT_EQ(in.u32(), 72939562u);
    EXPECT_EQ(in.u32(), 2454594u);
    EXPECT_EQ(in.u32(), 5u);
    EXPECT_EQ(in.u32(), 0x9Eu);
}

TEST(AuxiliaryHeader, SeedBeyondThirtyOneBitsIsMarked) {
    FileFacts facts;
    facts.handleSeed = 0x80000000;
    const Bytes header = writeAuxHeader(facts);
    ByteCursor in(header, 79);
    EXPECT_EQ(in.u32(), 0xFFFFFFFFu);
}

TEST(GuardedSection, LengthAndCheckCoverTheContent) {
    const Bytes content = {1, 2, 3, 4, 5};
    const Bytes section = writeGuarded(content, classesBegin, classesEnd);
    ASSERT_EQ(section.size(), 16u + 4 + 5 + 2 + 16);
    ByteCursor in(section, 16);
    EXPECT_EQ(in.u32(), 5u);
    in.skip(5);
    EXPECT_EQ(in.u16(), crc16(ByteView(section).subspan(16, 9)));
    EXPECT_TRUE(std::equal(classesBegin.begin(), classesBegin.end(), section.begin()));
    EXPECT_TRUE(std::equal(classesEnd.begin(), classesEnd.end(), section.end() - 16));
}

TEST(ObjectMap, PlacesComeBackInOrderOverManyPages) {
    std::vector<ObjectPlace> places;
    for (std::uint32_t i = 1; i < 5000; ++i)
        places.emplace_back(i * 3 + (i > 2500 ? 0x100000 : 0), (i * 7919) % 1000003);
    const Bytes map = writeObjectMap(places);
    Findings findings;
    const auto read = readObjectMap(map, findings);
    EXPECT_TRUE(findings.empty());
    ASSERT_EQ(read.size(), places.size());
    for (std::size_t i = 0; i < read.size(); ++i) {
        ASSERT_EQ(read[i].handle, places[i].first);
        ASSERT_EQ(read[i].offset, places[i].second);
    }
}

TEST(ObjectMap, PagesStayWithinTheirLimitAndAnEmptyOneCloses) {
    std::vector<ObjectPlace> places;
    for (std::uint32_t i = 1; i < 3000; ++i)
        places.emplace_back(i, i * 100);
    const Bytes map = writeObjectMap(places);
    std::size_t at = 0;
    std::size_t size = 0;
    int pages = 0;
    while (at + 4 <= map.size()) {
        size = map[at] * 256u + map[at + 1];
        EXPECT_LE(size, 2032u);
        EXPECT_EQ(map[at + size] * 256u + map[at + size + 1], crc16(ByteView(map).subspan(at, size)));
        at += size + 2;
        ++pages;
    }
    EXPECT_EQ(at, map.size());
    EXPECT_EQ(size, 2u);
    EXPECT_GT(pages, 2);
}

// The second header of a real file: all but its last eight bytes, which nobody knows the meaning of.
TEST(SecondHeader, EqualsThatOfARealFile) {
    FileFacts facts;
    const Locators locators = {{{0, 17259, 522}, {1, 17781, 261}, {2, 21705, 175}, {3, 0, 0}, {4, 0, 0}, {5, 97, 123}}};
    const Bytes made =
        writeSecondHeader(facts, locators, 0x5578, {0x9E, 1, 2, 3, 5, 6, 7, 8, 9, 0xA, 0x7E, 0xC, 0x17, 0xD});
    ASSERT_EQ(made.size(), 16u + 111 + 16);
    ByteCursor in(made, 16);
    EXPECT_EQ(in.u32(), 111u);
    ByteCursor check(made, 16 + 111 - 10);
    EXPECT_EQ(check.u16(), 0xA2C0);
}

TEST(ImageSection, PicturesAndHeaderDataAreFoundAgain) {
    const std::vector<Picture> pictures = {{image_code::bitmap, Bytes(100, 7)}, {image_code::metafile, {1, 2, 3}}};
    const std::uint32_t address = 220;
    Bytes file(address, 0);
    file[13] = static_cast<std::uint8_t>(address);
    std::copy_n("AC1015", 6, file.begin());
    const Bytes section = writeImageSection(pictures, address);
    file.insert(file.end(), section.begin(), section.end());
    const SourcePtr source = memorySource(file);
    const auto read = readImageSection(*source);
    ASSERT_TRUE(read && read->has_value());
    ASSERT_EQ(read->value().entries.size(), 3u);
    EXPECT_EQ(read->value().entries[0].code, image_code::header);
    EXPECT_EQ(read->value().entries[0].size, 80u);
    const auto again = readPictures(*source);
    ASSERT_TRUE(again);
    EXPECT_EQ(*again, pictures);
}

TEST(ImageSection, AlsoADrawingWithoutPictureHasOne) {
    const Bytes section = writeImageSection({}, 220);
    ByteCursor in(section, 16);
    EXPECT_EQ(in.u32(), 1u + 9 + 80);
    EXPECT_EQ(in.u8(), 1);
}

} // namespace
} // namespace dwg
