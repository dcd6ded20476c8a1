// A drawing rewritten with another summary or other pictures and nothing else.

#include "editor/dwg/rewrite_drawing.h"

#include "editor/dwg/container_writer.h"
#include "tests/dwg/container_builder.h"
#include "tests/dwg/real_drawings.h"

#include <gtest/gtest.h>

namespace dwg {
namespace {

constexpr Release paged[] = {Release::r2004, Release::r2007, Release::r2010, Release::r2013, Release::r2018};

DrawingFile sample(Release release, std::vector<SectionBytes> more = {}) {
    FileContent content{release, makeFileStart(release, 30), {{"AcDb:Header", Bytes(500, 1)}, {"Odd", Bytes(10, 9)}}};
    content.sections.insert(content.sections.end(), more.begin(), more.end());
    auto file = DrawingFile::open(memorySource(*writeFile(content)));
    EXPECT_TRUE(file);
    return *file;
}

DrawingFile rewritten(const DrawingFile& file, const Replacements& replacements) {
    const auto bytes = rewriteDrawing(file, replacements);
    EXPECT_TRUE(bytes) << bytes.error().reason;
    auto back = DrawingFile::open(memorySource(*bytes));
    EXPECT_TRUE(back) << back.error().reason;
    return *back;
}

TEST(RewriteDrawing, theSummaryIsTheNewOneAndAllElseIsKept) {
    for (const Release release : paged) {
        SCOPED_TRACE(magicOf(release));
        SummaryInfo old;
        old.texts.title = L"title";
        old.properties = {{L"a", L"b"}};
        const std::vector<Picture> pictures = {{2, Bytes(100, 3)}};
        const DrawingFile file = sample(release, {{"AcDb:SummaryInfo", writeSummaryInfo(old, release, 30)},
                                                  {"AcDb:Preview", writeImageSection(pictures, 0)}});
        SummaryInfo summary = old;
        summary.texts.comments = std::wstring(400, L'x') + L" and more";
        const DrawingFile back = rewritten(file, {.summary = summary});
        EXPECT_EQ(back.release(), release);
        EXPECT_EQ(*readSummaryInfo(back), summary);
        EXPECT_EQ(*back.section("AcDb:Header"), Bytes(500, 1));
        EXPECT_EQ(*back.section("Odd"), Bytes(10, 9)) << "a section that nobody here knows";
        EXPECT_EQ(*readPictures(back.source()), pictures);
    }
}

TEST(RewriteDrawing, aDrawingWithoutASummaryGetsOne) {
    SummaryInfo summary;
    summary.texts.comments = L"new";
    EXPECT_EQ(*readSummaryInfo(rewritten(sample(Release::r2010), {.summary = summary})), summary);
}

TEST(RewriteDrawing, picturesAreReplacedAllAtOnceOrTakenAway) {
    const std::vector<Picture> old = {{2, Bytes(100, 3)}}, fresh = {{6, Bytes(3000, 4)}};
    for (const Release release : paged) {
        const DrawingFile file = sample(release, {{"AcDb:Preview", writeImageSection(old, 0)}});
        EXPECT_EQ(*readPictures(rewritten(file, {.pictures = fresh}).source()), fresh);
        const DrawingFile bare = rewritten(file, {.pictures = std::vector<Picture>()});
        EXPECT_EQ(bare.imageAddress(), 0u);
        EXPECT_TRUE(readPictures(bare.source())->empty());
    }
}

TEST(RewriteDrawing, anImageSectionThatCannotBeTakenAsItIsIsPutTogetherAgain) {
    // The section's length is nonsense; its entries can be read all the same.
    const std::vector<Picture> pictures = {{2, Bytes(100, 3)}};
    Bytes section = writeImageSection(pictures, 0);
    putU32(section, 16, 0x7FFFFFFF);
    const DrawingFile file = sample(Release::r2018, {{"AcDb:Preview", section}});
    EXPECT_EQ(*readPictures(rewritten(file, {}).source()), pictures);
}

TEST(RewriteDrawing, olderReleasesAreRefused) {
    const auto file = DrawingFile::open(memorySource(tests::buildFlatFile(Release::r2000, {})));
    ASSERT_TRUE(file);
    const auto bytes = rewriteDrawing(*file, {});
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.error().kind, ErrorKind::unsupported);
}

TEST(RewriteDrawing, everyRealDrawingKeepsEverySectionButItsSummary) {
    std::size_t count = 0;
    for (const auto& path : tests::realDrawings()) {
        const auto file = DrawingFile::open(path);
        ASSERT_TRUE(file) << path;
        if (file->release() < Release::r2004)
            continue;
        SCOPED_TRACE(path.string());
        ++count;
        SummaryInfo summary;
        if (const auto old = readSummaryInfo(*file))
            summary = *old;
        summary.texts.comments = L"Beschreibung mit Umlaut \u00e4 und einem Zeilen-\nende";
        const auto bytes = rewriteDrawing(*file, {.summary = summary});
        ASSERT_TRUE(bytes) << bytes.error().reason;
        const auto back = DrawingFile::open(memorySource(*bytes));
        ASSERT_TRUE(back) << back.error().reason;
        EXPECT_EQ(*readSummaryInfo(*back), summary);
        for (const std::string& name : file->sections()) {
            if (name == section::summaryInfo || name == section::preview)
                continue;
            Findings findings;
            ASSERT_EQ(*back->section(name, &findings), *file->section(name)) << name;
            EXPECT_TRUE(findings.empty()) << name << ": " << findings.front().reason;
        }
        const auto pictures = readPictures(file->source());
        ASSERT_TRUE(pictures);
        EXPECT_EQ(*readPictures(back->source()), *pictures);
        EXPECT_EQ(back->maintenance(), file->maintenance());
        EXPECT_LT(bytes->size(), file->source().size() * 5 / 4 + 4096) << "packed about as well as it was";
    }
    if (count == 0)
        GTEST_SKIP() << "shared drawings are absent";
    EXPECT_GE(count, 101u);
}

} // namespace
} // namespace dwg
