#include "editor/dwg/classes.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/object_map.h"
#include "editor/dwg/write_sections.h"

#include <gtest/gtest.h>

namespace {

using namespace dwg;

std::vector<ObjectClass> someClasses() {
    return {{500, 0, L"ObjectDBX Classes", L"AcDbDictionaryWithDefault", L"ACDBDICTIONARYWDFLT", false, 0x1F3},
            {501, 127, L"Ж", L"AcDbWipeout", L"WIPEOUT", true, 0x1F2}};
}

Bytes guarded(const Bytes& content) {
    return writeGuarded(content, classesBegin, classesEnd);
}

TEST(ObjectClasses, AreReadBackAsWritten) {
    Findings findings;
    const auto classes =
        readClasses(guarded(encodeClasses(someClasses(), CodePage())), Release::r2000, 0, CodePage(), findings);
    ASSERT_TRUE(classes.ok());
    EXPECT_EQ(*classes, someClasses());
    EXPECT_TRUE(findings.empty());
}

TEST(ObjectClasses, TheClosingNullOfATextIsDropped) {
    auto closed = someClasses();
    closed[0].dxfName.push_back(L'\0');
    Findings findings;
    const auto classes =
        readClasses(guarded(encodeClasses(closed, CodePage())), Release::r2000, 0, CodePage(), findings);
    ASSERT_TRUE(classes.ok());
    EXPECT_EQ(*classes, someClasses());
}

TEST(ObjectClasses, AWrongCheckIsAFinding) {
    Bytes section = guarded(encodeClasses(someClasses(), CodePage()));
    section[section.size() - 18] ^= 1;
    Findings findings;
    EXPECT_TRUE(readClasses(section, Release::r2000, 0, CodePage(), findings).ok());
    EXPECT_EQ(findings.size(), 1u);
}

TEST(ObjectClasses, ARecordThatCannotBeEndsTheList) {
    auto classes = someClasses();
    classes[1].number = 500;
    Findings findings;
    const auto read = readClasses(guarded(encodeClasses(classes, CodePage())), Release::r2000, 0, CodePage(), findings);
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read->size(), 1u);
    EXPECT_EQ(findings.size(), 1u);
}

TEST(ObjectClasses, CutAnywhereTheyAreAnErrorOrAShorterList) {
    const Bytes section = guarded(encodeClasses(someClasses(), CodePage()));
    for (std::size_t size = 0; size < section.size(); ++size) {
        Findings findings;
        const auto read = readClasses(Bytes(section.begin(), section.begin() + static_cast<std::ptrdiff_t>(size)),
                                      Release::r2000, 0, CodePage(), findings);
        EXPECT_TRUE(!read.ok() || read->size() <= 2) << size;
    }
    Bytes longer = section;
    longer[16] = longer[17] = longer[18] = longer[19] = 0xFF;
    Findings findings;
    EXPECT_FALSE(readClasses(longer, Release::r2000, 0, CodePage(), findings).ok());
}

std::vector<ObjectPlace> places(std::size_t count) {
    std::vector<ObjectPlace> list;
    for (std::size_t i = 0; i < count; ++i)
        list.emplace_back(Handle{i * i + 1}, static_cast<std::uint32_t>(100 + (i * 7919) % 100000));
    return list;
}

TEST(ObjectMaps, AreReadBackAsWrittenOverManyPages) {
    for (const std::size_t count : {0u, 1u, 10u, 5000u}) {
        const auto written = places(count);
        Findings findings;
        const auto read = readObjectMap(writeObjectMap(written), findings);
        EXPECT_TRUE(findings.empty()) << count;
        ASSERT_EQ(read.size(), written.size());
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(read[i].handle, written[i].first);
            EXPECT_EQ(read[i].offset, written[i].second);
        }
    }
}

TEST(ObjectMaps, NoPageIsLongerThanItsLimit) {
    const Bytes map = writeObjectMap(places(5000));
    std::size_t at = 0, pages = 0;
    while (at + 2 <= map.size()) {
        const std::size_t size = static_cast<std::size_t>(map[at]) << 8 | map[at + 1];
        ASSERT_LE(size, 2032u);
        ++pages;
        at += size + 2;
    }
    EXPECT_EQ(at, map.size());
    EXPECT_GT(pages, 5u);
}

TEST(ObjectMaps, APageWithAWrongCheckIsReadAndFound) {
    Bytes map = writeObjectMap(places(10));
    map[map.size() - 5] ^= 0xFF; // check of the first page, ahead of the four bytes of the empty one
    Findings findings;
    EXPECT_EQ(readObjectMap(map, findings).size(), 10u);
    EXPECT_EQ(findings.size(), 1u);
}

TEST(ObjectMaps, CutAnywhereWhatWasReadBeforeStays) {
    const Bytes map = writeObjectMap(places(1500));
    const auto whole = places(1500);
    for (std::size_t size = 0; size < map.size(); size += 13) {
        Findings findings;
        const auto read = readObjectMap(ByteView(map).first(size), findings);
        EXPECT_FALSE(findings.empty()) << size;
        EXPECT_LE(read.size(), whole.size());
    }
}

TEST(ObjectMaps, APageShorterThanItsOwnSizeEndsTheReading) {
    const Bytes map = {0, 1, 0, 0};
    Findings findings;
    EXPECT_TRUE(readObjectMap(map, findings).empty());
    EXPECT_EQ(findings.size(), 1u);
}

} // namespace
