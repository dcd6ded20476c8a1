#include "editor/dwg/image_section.h"
#include "editor/dwg/summary_info.h"
#include "editor/dwg/template_section.h"
#include "tests/dwg/container_builder.h"
#include "tests/dwg/model_support.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace {

using dwg::Bytes;
using dwg::DrawingFile;
using dwg::Release;
using dwg::SummaryInfo;

SummaryInfo sample() {
    SummaryInfo info;
    info.texts = {L"Stuhl", L"Möbel", L"anna", L"four legs", L"chair, seat", L"otto", L"3"};
    info.hyperlinkBase = L"http://example.org/";
    info.editingTime = {0, 90000};
    info.created = {2459000, 1000};
    info.updated = {2460000, 2000};
    info.properties = {{L"Material", L"oak"}, {L"Price", L""}};
    return info;
}

TEST(SummaryInfo, writtenAndReadAgainIsTheSameInEveryRelease) {
    for (const Release release : {Release::r2004, Release::r2007, Release::r2010, Release::r2013, Release::r2018}) {
        const SummaryInfo info = sample();
        const auto read = dwg::readSummaryInfo(dwg::writeSummaryInfo(info, release, 30), release, 30);
        ASSERT_TRUE(read) << read.error().reason;
        EXPECT_TRUE(*read == info) << dwg::magicOf(release);
    }
}

TEST(SummaryInfo, charactersBeyondTheFirstPlaneSurvive) {
    SummaryInfo info;
    info.texts.comments = L"\U0001F4D0 set square";
    for (const Release release : {Release::r2004, Release::r2010}) {
        const auto read = dwg::readSummaryInfo(dwg::writeSummaryInfo(info, release, 30), release, 30);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->texts.comments, info.texts.comments) << dwg::magicOf(release);
    }
}

// As a program of the release stored it: texts are counted with the zero that ends them.
TEST(SummaryInfo, narrowTextsOf2004) {
    Bytes bytes;
    for (const std::string_view text : {"a", "", "", "key", "comment", "me", "", ""}) {
        tests::append16(bytes, static_cast<std::uint32_t>(text.size() + 1));
        bytes.insert(bytes.end(), text.begin(), text.end());
        bytes.push_back(0);
    }
    for (const std::uint32_t number : {0u, 5u, 2454762u, 70510234u, 2458288u, 32972000u})
        tests::append32(bytes, number);
    tests::append16(bytes, 0);
    tests::append64(bytes, 0);
    const auto read = dwg::readSummaryInfo(bytes, Release::r2004, 30);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->texts.title, L"a");
    EXPECT_EQ(read->texts.keywords, L"key") << "keywords come before comments";
    EXPECT_EQ(read->texts.comments, L"comment");
    EXPECT_EQ(read->texts.lastSavedBy, L"me");
    EXPECT_EQ(read->editingTime, (dwg::DayAndTime{0, 5}));
    EXPECT_EQ(read->created, (dwg::DayAndTime{2454762, 70510234}));
    EXPECT_EQ(read->updated, (dwg::DayAndTime{2458288, 32972000}));
    EXPECT_EQ(dwg::writeSummaryInfo(*read, Release::r2004, 30), bytes);
}

TEST(SummaryInfo, aSectionCutAnywhereBeforeItsLastPropertyIsAnError) {
    for (const Release release : {Release::r2004, Release::r2018}) {
        const Bytes whole = dwg::writeSummaryInfo(sample(), release, 30);
        const std::size_t needed = whole.size() - 8; // two numbers behind are never read
        for (std::size_t length = 0; length < needed; ++length) {
            const auto read = dwg::readSummaryInfo(dwg::ByteView(whole).first(length), release, 30);
            ASSERT_FALSE(read) << length;
            EXPECT_EQ(read.error().kind, dwg::ErrorKind::truncated);
        }
    }
}

TEST(SummaryInfo, aFlatFileHasNone) {
    const auto file = DrawingFile::open(dwg::memorySource(tests::buildFlatFile(Release::r2000, {{0, {1}}})));
    ASSERT_TRUE(file);
    EXPECT_EQ(dwg::readSummaryInfo(*file).error().kind, dwg::ErrorKind::missing);
}

TEST(SummaryInfo, ofRealDrawingsIsWrittenAsItWas) {
    const auto folder = tests::sharedFolder("drawings");
    if (folder.empty())
        GTEST_SKIP() << "no shared drawings";
    std::size_t compared = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".dwg")
            continue;
        const auto file = DrawingFile::open(entry.path());
        if (!file || !file->has(dwg::section::summaryInfo))
            continue;
        SCOPED_TRACE(entry.path());
        const auto info = dwg::readSummaryInfo(*file);
        ASSERT_TRUE(info);
        EXPECT_EQ(tests::hex(dwg::writeSummaryInfo(*info, file->release(), file->codePage())),
                  tests::hex(*file->section(dwg::section::summaryInfo)));
        ++compared;
    }
    EXPECT_GT(compared, 90u);
}

TEST(TemplateSection, tellsTheUnitsBehindADescription) {
    const auto measurement = [](Release release, const Bytes& bytes) {
        const auto file = DrawingFile::open(
            dwg::memorySource(release <= Release::r2000 ? tests::buildFlatFile(release, {{4, bytes}})
                                                        : tests::buildPagedFile(release, {{"AcDb:Template", bytes}})));
        return dwg::readMeasurement(*file);
    };
    EXPECT_EQ(*measurement(Release::r2000, {0, 0, 1, 0}), 1);
    EXPECT_EQ(*measurement(Release::r2004, {3, 0, 'a', 'b', 0, 1, 0}), 1);
    EXPECT_EQ(*measurement(Release::r2010, {1, 0, 0, 0, 1, 0}), 1);
    EXPECT_EQ(*measurement(Release::r2010, {0, 0, 0, 0}), 0) << "a section of zeros, which no page stores";
    EXPECT_EQ(measurement(Release::r2000, {9, 0, 1, 0}).error().kind, dwg::ErrorKind::truncated);
}

Bytes withImageSection(const std::vector<std::pair<std::uint8_t, Bytes>>& entries) {
    Bytes out = tests::fileHead(Release::r2013, 0x80);
    out.resize(0x80 + 16 + 4);
    out.push_back(static_cast<std::uint8_t>(entries.size()));
    std::uint32_t start = static_cast<std::uint32_t>(out.size() + entries.size() * 9);
    for (const auto& [code, bytes] : entries) {
        out.push_back(code);
        tests::append32(out, start);
        tests::append32(out, static_cast<std::uint32_t>(bytes.size()));
        start += static_cast<std::uint32_t>(bytes.size());
    }
    for (const auto& [code, bytes] : entries)
        tests::append(out, bytes);
    return out;
}

Bytes bitmapHead(std::uint32_t width, std::uint32_t height, std::uint16_t bits, std::uint32_t coloursUsed) {
    Bytes out;
    for (const std::uint32_t number : {40u, width, height})
        tests::append32(out, number);
    tests::append16(out, 1);
    tests::append16(out, bits);
    out.resize(32);
    tests::append32(out, coloursUsed);
    out.resize(60);
    return out;
}

TEST(ImageSection, entriesComeInFileOrderWithTheMeasuresOfTheirPictures) {
    Bytes png = {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'};
    for (const std::uint8_t byte : {0, 0, 1, 4, 0, 0, 0, 5, 8, 2, 0, 0, 0})
        png.push_back(byte);
    const auto source =
        dwg::memorySource(withImageSection({{1, Bytes(80)}, {2, bitmapHead(184, 126, 8, 256)}, {3, {1, 2}}, {6, png}}));
    const auto section = dwg::readImageSection(*source);
    ASSERT_TRUE(section);
    ASSERT_TRUE(section->has_value());
    const auto& entries = (*section)->entries;
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ((*section)->address, 0x80u);
    EXPECT_EQ(entries[0].code, 1);
    EXPECT_FALSE(entries[0].measures);
    ASSERT_TRUE(entries[1].measures);
    EXPECT_EQ(entries[1].measures->width, 184);
    EXPECT_EQ(entries[1].measures->height, 126);
    EXPECT_EQ(entries[1].measures->bits, 8);
    EXPECT_EQ(entries[1].measures->coloursUsed, 256u);
    EXPECT_FALSE(entries[2].measures) << "a metafile isn't looked into";
    ASSERT_TRUE(entries[3].measures);
    EXPECT_EQ(entries[3].measures->width, 0x104);
    EXPECT_EQ(entries[3].measures->height, 5);
    EXPECT_FALSE(entries[3].measures->bits);
}

TEST(ImageSection, address0IsNoSection) {
    const auto section = dwg::readImageSection(*dwg::memorySource(tests::fileHead(Release::r2000, 0)));
    ASSERT_TRUE(section);
    EXPECT_FALSE(section->has_value());
}

TEST(ImageSection, anEntryOutsideTheFileIsKeptWithoutMeasures) {
    Bytes bytes = withImageSection({{2, bitmapHead(10, 10, 24, 0)}});
    bytes[0x80 + 21 + 4] = 0x7F;
    const auto section = dwg::readImageSection(*dwg::memorySource(bytes));
    ASSERT_TRUE(section);
    ASSERT_EQ((*section)->entries.size(), 1u);
    EXPECT_FALSE((*section)->entries[0].measures);
}

TEST(ImageSection, aSectionThatEndsBeforeItsEntriesIsTruncated) {
    const Bytes bytes = withImageSection({{2, {}}, {6, {}}});
    for (std::size_t length = 0x80; length < bytes.size(); ++length) {
        const auto section =
            dwg::readImageSection(*dwg::memorySource(Bytes(bytes.begin(), bytes.begin() + static_cast<long>(length))));
        ASSERT_FALSE(section) << length;
        EXPECT_EQ(section.error().kind, dwg::ErrorKind::truncated);
    }
}

} // namespace
