// Facts that are read without reading a drawing's objects, against those of the whole drawing.

#include "editor/dwg/quick_facts.h"

#include "tests/dwg/model_support.h"

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/object_map.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/summary_record.h"
#include "editor/dwg/write_drawing.h"
#include "editor/dwg/write_sections.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

namespace {

using namespace dwg;

/// Counts what is read through it.
class CountingSource : public Source {
public:
    explicit CountingSource(SourcePtr counted) : inner(std::move(counted)) {}

    std::uint64_t size() const override { return inner->size(); }
    Result<void> read(std::uint64_t offset, std::span<std::uint8_t> out) const override {
        ++reads;
        bytes += out.size();
        return inner->read(offset, out);
    }

    mutable std::atomic<std::size_t> reads = 0, bytes = 0;

private:
    SourcePtr inner;
};

void expectSameView(const std::optional<ViewFacts>& found, const std::optional<ViewFacts>& expected) {
    ASSERT_EQ(found.has_value(), expected.has_value());
    if (!found)
        return;
    EXPECT_EQ(found->center, expected->center);
    EXPECT_EQ(found->height, expected->height);
    EXPECT_EQ(found->width, expected->width);
    EXPECT_EQ(found->direction, expected->direction);
    EXPECT_EQ(found->target, expected->target);
    EXPECT_EQ(found->twist, expected->twist);
}

/// A new drawing with a summary, as a file.
Bytes fileWithComments(const wchar_t* comments) {
    Drawing drawing = makeDefaultDrawing();
    SummaryTexts texts;
    texts.comments = comments;
    EXPECT_TRUE(writeSummaryRecord(drawing, texts).ok());
    HeaderVariables header = makeDefaultHeader({2460000, 0});
    header.HANDSEED = drawing.handleSeed();
    auto file = writeDrawing(drawing, header, {}, 0);
    return file.ok() ? *file : Bytes{};
}

TEST(QuickFacts, ofRealDrawingsAreThoseOfTheWholeDrawing) {
    const auto files = tests::realDrawings();
    if (files.empty())
        GTEST_SKIP() << "no folder of real drawings";
    for (const auto& path : files) {
        SCOPED_TRACE(path.string());
        // One large drawing shows nothing that the others don't.
        if (path.filename() == "Dynblocks.dwg")
            continue;
        const auto file = DrawingFile::open(path);
        ASSERT_TRUE(file.ok());
        const auto header = readHeaderVariables(*file);
        ASSERT_TRUE(header.ok());
        const auto drawing = readDrawing(*file);
        ASSERT_TRUE(drawing.ok());
        const auto objects = ObjectFinder::open(*file);
        ASSERT_TRUE(objects.ok());
        expectSameView(findActiveView(*objects, *header), activeView(*drawing));
        if (file->release() <= Release::r2000) {
            EXPECT_EQ(findSummaryTexts(*objects, *header).value_or(SummaryTexts{}), readSummaryRecord(*drawing));
        }
    }
}

TEST(QuickFacts, everyObjectOfAFixedTypeIsFoundByItself) {
    const auto files = tests::realDrawings();
    if (files.empty())
        GTEST_SKIP() << "no folder of real drawings";
    for (const auto& path : files) {
        const bool isR14 = path.parent_path().filename() == "r14";
        if (isR14 || (path.filename() != "circle.dwg" && path.filename() != "Leader.dwg"))
            continue;
        SCOPED_TRACE(path.string());
        const auto file = DrawingFile::open(path);
        const auto drawing = readDrawing(*file);
        const auto objects = ObjectFinder::open(*file);
        ASSERT_TRUE(drawing.ok() && objects.ok());
        for (std::size_t i = 0; i < drawing->objects().size(); i += 3) {
            const Object& object = *drawing->objects()[i];
            const auto found = objects->find(object.handle);
            if (object.type >= object_type::firstClass) {
                EXPECT_EQ(found.error().kind, ErrorKind::unsupported);
                continue;
            }
            ASSERT_TRUE(found.ok()) << found.error().reason;
            EXPECT_EQ(found->record, object.record);
        }
        EXPECT_EQ(objects->find(0).error().kind, ErrorKind::missing);
        EXPECT_EQ(objects->find(0xFFFFFF).error().kind, ErrorKind::missing);
    }
}

TEST(QuickFacts, ofALargeDrawingTakeAFewReads) {
    const auto files = tests::realDrawings();
    const auto large = std::ranges::find(files, "Dynblocks.dwg", [](const auto& path) { return path.filename(); });
    if (large == files.end())
        GTEST_SKIP() << "no folder of real drawings";
    const auto source = openSource(*large);
    ASSERT_TRUE(source.ok());
    const auto counting = std::make_shared<CountingSource>(*source);
    const auto file = DrawingFile::open(counting);
    const auto header = readHeaderVariables(*file);
    const auto objects = ObjectFinder::open(*file);
    ASSERT_TRUE(header.ok() && objects.ok());
    EXPECT_TRUE(findActiveView(*objects, *header).has_value());
    EXPECT_LT(counting->reads, 40u);
    EXPECT_LT(counting->bytes, counting->size() / 8);
}

TEST(QuickFacts, theSummaryOfADrawingOf2000IsItsRecord) {
    const auto file = DrawingFile::open(memorySource(fileWithComments(L"A chair \u0416")));
    ASSERT_TRUE(file.ok());
    const auto header = readHeaderVariables(*file);
    const auto objects = ObjectFinder::open(*file);
    ASSERT_TRUE(header.ok() && objects.ok());
    const auto texts = findSummaryTexts(*objects, *header);
    ASSERT_TRUE(texts.has_value());
    EXPECT_EQ(texts->comments, L"A chair \u0416");
    EXPECT_TRUE(findActiveView(*objects, *header).has_value());
}

TEST(QuickFacts, headersThatLeadAstrayGiveNothing) {
    const auto file = DrawingFile::open(memorySource(fileWithComments(L"A chair")));
    ASSERT_TRUE(file.ok());
    auto header = *readHeaderVariables(*file);
    const auto objects = ObjectFinder::open(*file);
    ASSERT_TRUE(objects.ok());
    std::swap(header.viewportControl, header.namedObjectsDictionary);
    EXPECT_FALSE(findActiveView(*objects, header).has_value());
    EXPECT_FALSE(findSummaryTexts(*objects, header).has_value());
    header.viewportControl.value = header.namedObjectsDictionary.value = 0;
    EXPECT_FALSE(findActiveView(*objects, header).has_value());
    EXPECT_FALSE(findSummaryTexts(*objects, header).has_value());
}

TEST(QuickFacts, cutAnywhereTheFileGivesFactsOrNothing) {
    const Bytes whole = fileWithComments(L"A chair");
    for (std::size_t size = 0; size < whole.size(); size += 17) {
        const auto file =
            DrawingFile::open(memorySource(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))));
        if (!file)
            continue;
        const auto header = readHeaderVariables(*file);
        const auto objects = ObjectFinder::open(*file);
        if (!header || !objects)
            continue;
        const auto texts = findSummaryTexts(*objects, *header);
        EXPECT_TRUE(!texts || texts->comments == L"A chair") << size;
        findActiveView(*objects, *header);
    }
}

TEST(ObjectMaps, aHandleIsFoundInThePageThatHoldsIt) {
    std::vector<ObjectPlace> places;
    for (std::uint32_t i = 0; i < 5000; ++i)
        places.emplace_back(Handle{3 * i + 1}, 100 + i);
    const Bytes map = writeObjectMap(places);
    for (std::size_t i = 0; i < places.size(); i += 7) {
        const auto& [handle, offset] = places[i];
        EXPECT_EQ(findInObjectMap(map, handle), std::optional<std::uint64_t>(offset));
        EXPECT_EQ(findInObjectMap(map, handle + 1), std::nullopt);
    }
    EXPECT_EQ(findInObjectMap(map, 0), std::nullopt);
    EXPECT_EQ(findInObjectMap({}, 1), std::nullopt);
    for (std::size_t size = 0; size < map.size(); size += 7)
        findInObjectMap(ByteView(map).first(size), 14999);
}

} // namespace
