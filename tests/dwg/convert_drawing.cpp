// What becomes of a drawing in the form of another release.

#include "editor/dwg/convert_drawing.h"

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/facts.h"
#include "editor/dwg/png_picture.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/recoding.h"
#include "editor/dwg/small_sections.h"
#include "editor/dwg/summary_record.h"
#include "editor/dwg/typed_values.h"
#include "editor/dwg/write_drawing.h"
#include "tests/dwg/real_drawings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace dwg {
namespace {

constexpr Release written[] = {Release::r2000, Release::r2004, Release::r2007,
                               Release::r2010, Release::r2013, Release::r2018};

std::int16_t always7(std::uint32_t) {
    return 7;
}

Bytes bytes(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

TEST(TypedValues, textsOfExtendedDataBecomeWideAndNarrowAgain) {
    // Code 0, length 3, code page, "abc"; code 70 and a number; code 10 and a point.
    Bytes narrow = {0, 3, 0, 30};
    const Bytes text = bytes("abc");
    narrow.insert(narrow.end(), text.begin(), text.end());
    narrow.insert(narrow.end(), {70, 0x34, 0x12, 10});
    narrow.resize(narrow.size() + 24, 5);
    const CodePage page;
    const auto wide = convertExtendedData(narrow, Release::r2004, Release::r2007, page, 30);
    ASSERT_TRUE(wide);
    EXPECT_EQ(Bytes(wide->begin(), wide->begin() + 9), (Bytes{0, 3, 0, 'a', 0, 'b', 0, 'c', 0}));
    const auto back = convertExtendedData(*wide, Release::r2018, Release::r2000, page, 30);
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, narrow);
}

TEST(TypedValues, textsOfRecordsBecomeWideAndNarrowAgain) {
    Bytes narrow = {1, 0, 2, 0, 30, 'h', 'i', 40, 0};
    narrow.resize(narrow.size() + 8, 1);
    narrow.insert(narrow.end(), {0x36, 1, 3, 9, 9, 9}); // 310, three bytes
    const CodePage page;
    const auto wide = convertRecordValues(narrow, Release::r2000, Release::r2010, page, 30);
    ASSERT_TRUE(wide);
    EXPECT_EQ(Bytes(wide->begin(), wide->begin() + 8), (Bytes{1, 0, 2, 0, 'h', 0, 'i', 0}));
    EXPECT_EQ(*convertRecordValues(*wide, Release::r2010, Release::r2000, page, 30), narrow);
}

TEST(TypedValues, valuesThatContradictThemselvesAreNotConverted) {
    const CodePage page;
    for (const Bytes& damaged : {Bytes{1, 0, 200, 0, 30, 'h'}, Bytes{0xE7, 0x7F, 1}, Bytes{40, 0, 1}, Bytes{1}})
        EXPECT_FALSE(convertRecordValues(damaged, Release::r2000, Release::r2010, page, 30));
    for (const Bytes& damaged : {Bytes{0, 9, 0, 30, 'a'}, Bytes{99, 1}, Bytes{10, 1}})
        EXPECT_FALSE(convertExtendedData(damaged, Release::r2000, Release::r2010, page, 30));
    EXPECT_EQ(*convertRecordValues(Bytes{1}, Release::r2000, Release::r2004, page, 30), Bytes{1})
        << "between releases with the same texts nothing is looked at";
}

/// The body of an object without what a release doesn't tell: whether a record is referred to, and how many zeros stand
/// for the texts of a linetype that has none.
Body bodyOf(Object object) {
    if (RecordHead* const head = recordHead(object))
        head->referenced = true;
    if (auto* const linetype = object.as<Linetype>();
        linetype != nullptr && std::ranges::all_of(linetype->texts, [](std::uint8_t byte) { return byte == 0; }))
        linetype->texts.clear();
    return object.body;
}

TEST(ConvertDrawing, theDefaultDrawingLosesNothingInAnyRelease) {
    const Drawing drawing = makeDefaultDrawing();
    const HeaderVariables header = makeDefaultHeader({2460000, 5});
    for (const Release release : written) {
        SCOPED_TRACE(magicOf(release));
        ConvertedDrawing converted = convertDrawing(drawing, header, release, always7);
        EXPECT_TRUE(converted.leftOut.empty());
        DrawingParts parts;
        parts.header = converted.header;
        const auto file = writeDrawing(converted.drawing, parts);
        ASSERT_TRUE(file) << file.error().reason;
        const auto opened = DrawingFile::open(memorySource(*file));
        ASSERT_TRUE(opened) << opened.error().reason;
        auto back = readDrawing(*opened);
        ASSERT_TRUE(back) << back.error().reason;
        for (const Finding& finding : back->findings)
            ADD_FAILURE() << finding.place << ": " << finding.reason;
        for (const auto& object : converted.drawing.objects()) {
            const Object* const same = back->find(object->handle);
            ASSERT_NE(same, nullptr) << objectPlace(object->handle);
            EXPECT_EQ(same->type, object->type);
            EXPECT_EQ(bodyOf(*same), bodyOf(*object))
                << typeName(drawing, *object) << " " << objectPlace(object->handle);
        }
        Findings findings;
        const auto variables = readHeaderVariables(*opened, &findings);
        ASSERT_TRUE(variables) << variables.error().reason;
        EXPECT_TRUE(findings.empty());
        EXPECT_EQ(variables->TDCREATE, header.TDCREATE);
        EXPECT_EQ(variables->CLAYER, converted.header.CLAYER);
        EXPECT_EQ(variables->CECOLOR, header.CECOLOR) << "by layer";
        EXPECT_EQ(variables->DIMCLRD, header.DIMCLRD) << "by block";
    }
}

TEST(ConvertDrawing, aDrawingThatWentThroughAllReleasesIsStillTheSame) {
    Drawing drawing = makeDefaultDrawing();
    const HeaderVariables header = makeDefaultHeader({});
    ConvertedDrawing there = convertDrawing(drawing, header, Release::r2018, always7);
    for (const Release release : {Release::r2013, Release::r2010, Release::r2007, Release::r2004, Release::r2000})
        there = convertDrawing(there.drawing, there.header, release, always7);
    EXPECT_TRUE(there.leftOut.empty());
    for (const auto& object : drawing.objects()) {
        if (object->type == object_type::viewportEntityControl)
            continue; // no release from 2004 on has it; it is made anew
        const Object* const same = there.drawing.find(object->handle);
        ASSERT_NE(same, nullptr);
        EXPECT_EQ(bodyOf(*same), bodyOf(*object)) << typeName(drawing, *object);
    }
    EXPECT_NE(there.drawing.firstOfType(object_type::viewportEntityControl), nullptr);
    EXPECT_EQ(there.drawing.find(there.header.viewportEntityControl),
              there.drawing.firstOfType(object_type::viewportEntityControl));
}

TEST(ConvertDrawing, aTrueColourBecomesTheNearestIndexForReleasesWithoutThem) {
    Drawing drawing = convertDrawing(makeDefaultDrawing(), makeDefaultHeader({}), Release::r2010, always7).drawing;
    auto* const layer = drawing.body<Layer>({0, default_handle::layerZero});
    layer->color.hasRgb = true;
    layer->color.rgb = 0x123456;
    const auto nearest = [](std::uint32_t rgb) { return static_cast<std::int16_t>(rgb == 0x123456 ? 42 : 1); };
    const auto old = convertDrawing(drawing, {}, Release::r2000, nearest);
    EXPECT_EQ(old.drawing.body<Layer>({0, default_handle::layerZero})->color.index, 42);
    EXPECT_FALSE(old.drawing.body<Layer>({0, default_handle::layerZero})->color.hasRgb);
    const auto kept = convertDrawing(drawing, {}, Release::r2004, nearest);
    EXPECT_EQ(kept.drawing.body<Layer>({0, default_handle::layerZero})->color.rgb, 0x123456u);
}

TEST(ConvertDrawing, whatHangsOnALeftOutObjectGoesWithItAndNothingNamesEither) {
    Drawing drawing = makeDefaultDrawing();
    const auto add = [&drawing](std::uint16_t type, Handle owner, Body body) {
        Object object;
        object.handle = drawing.newHandle();
        object.type = type;
        object.owner = {handle_code::softPointer, owner};
        object.body = std::move(body);
        return drawing.add(std::move(object))->handle;
    };
    const Handle names = default_handle::namedObjects;
    const std::uint16_t strange = drawing.classNumber({0, 0, L"A", L"B", L"STRANGE", false, ObjectClass::objectItem});
    const Handle left = add(strange, names, Carried{});
    const Handle record = add(object_type::record, left, DataRecord{});
    drawing.body<Dictionary>({0, names})->items.push_back({L"X", {handle_code::softOwner, left}});
    drawing.find(default_handle::layerZero)->reactors.push_back({handle_code::softPointer, left});
    const auto converted = convertDrawing(drawing, makeDefaultHeader({}), Release::r2013, always7);
    EXPECT_EQ(converted.leftOut, (std::vector<LeftOut>{{"STRANGE", {left}}}));
    EXPECT_EQ(converted.drawing.find(left), nullptr);
    EXPECT_EQ(converted.drawing.find(record), nullptr);
    for (const auto& item : converted.drawing.body<Dictionary>({0, names})->items)
        EXPECT_NE(item.name, L"X");
    EXPECT_TRUE(converted.drawing.find(default_handle::layerZero)->reactors.empty());
}

TEST(ConvertDrawing, aDrawingOfR14GetsLayoutsFrom2000On) {
    // As R14 has it: without layouts, plot settings and plot styles.
    Drawing drawing = makeDefaultDrawing();
    drawing.release = Release::r14;
    auto* const names = drawing.namedObjects()->as<Dictionary>();
    std::erase_if(names->items, [](const Dictionary::Item& item) {
        return item.name == L"ACAD_LAYOUT" || item.name.find(L"ACAD_PLOT") == 0;
    });
    for (const Handle handle :
         {default_handle::layouts, default_handle::plotSettings, default_handle::plotStyles,
          default_handle::normalPlotStyle, default_handle::paperLayout, default_handle::modelLayout})
        drawing.remove(handle);
    for (const Handle space : {drawing.modelSpace(), drawing.paperSpace()})
        drawing.body<BlockHeader>({0, space})->layout.value = 0;
    drawing.body<Layer>({0, default_handle::layerZero})->plotStyle.value = 0;
    for (const Handle carried : {default_handle::standardDimensionStyle, default_handle::standardMultilineStyle,
                                 default_handle::dimensionStyleTable})
        drawing.remove(carried); // their bits are those of 2000
    const auto converted = convertDrawing(drawing, {}, Release::r2010, always7);
    EXPECT_TRUE(converted.leftOut.empty());
    const Drawing& out = converted.drawing;
    for (const Handle space : {out.modelSpace(), out.paperSpace()}) {
        const auto* const block = out.body<BlockHeader>({0, space});
        const auto* const layout = out.body<Layout>(block->layout);
        ASSERT_NE(layout, nullptr);
        EXPECT_EQ(layout->blockRecord.value, space);
        EXPECT_EQ(out.find(block->layout)->owner.value, converted.header.layoutDictionary.value);
    }
    EXPECT_EQ(out.body<Dictionary>(converted.header.layoutDictionary)->items.size(), 2u);
    EXPECT_NE(out.body<Placeholder>(out.body<Layer>({0, default_handle::layerZero})->plotStyle), nullptr);
    EXPECT_EQ(converted.header.HANDSEED, out.handleSeed());
}

TEST(Recoding, bodiesThatAreNotAsTheirTypeShouldBeAreNotRecoded) {
    const Drawing drawing = makeDefaultDrawing();
    const RecodingContext context{Release::r2000, Release::r2018, drawing, always7};
    for (const std::uint16_t type : {34, 46, 68, 72, 73}) {
        Object object;
        object.handle = 0x99;
        object.type = type;
        object.body = Carried{{{0x12, 0x34, 0x56, 0x78, 0x9A}, 37}, {{5, 1}}};
        const Body before = object.body;
        EXPECT_FALSE(recodeCarried(object, context)) << type;
        EXPECT_EQ(object.body, before) << type;
    }
}

TEST(Recoding, everyKindInRealDrawingsComesBackFromEveryReleaseAsItWas) {
    const auto files = tests::realDrawings();
    if (files.empty())
        GTEST_SKIP() << "shared drawings are absent";
    // The usual ones that are carried; all drawings are a matter of tools/drawing_matrix.
    std::map<std::string, int> counts;
    for (const auto& path : files) {
        const std::string stem = path.stem().string();
        if (stem.find("example_2") != 0 && stem != "Leader")
            continue;
        SCOPED_TRACE(path.string());
        const auto drawing = readDrawing(*DrawingFile::open(path));
        ASSERT_TRUE(drawing);
        for (const auto& original : drawing->objects()) {
            const bool isCarried = original->as<Carried>() != nullptr || original->as<OtherRecord>() != nullptr;
            if (!isCarried || original->type >= object_type::firstClass || drawing->release < Release::r2000)
                continue;
            for (const Release release : {Release::r2013, Release::r2018}) {
                Object object = *original;
                if (!recodeCarried(object, {drawing->release, release, *drawing, always7}))
                    continue;
                ASSERT_TRUE(recodeCarried(object, {release, drawing->release, *drawing, always7}));
                const std::string type = typeName(*drawing, *original);
                // Narrow texts may be closed with a null or spell characters out, and 2000 has references of its own.
                if (drawing->release >= Release::r2007) {
                    EXPECT_EQ(object.body, original->body) << type << " " << objectPlace(original->handle);
                }
                Object again = object;
                ASSERT_TRUE(recodeCarried(again, {drawing->release, release, *drawing, always7}));
                ASSERT_TRUE(recodeCarried(again, {release, drawing->release, *drawing, always7}));
                EXPECT_EQ(again.body, object.body) << type << " " << objectPlace(original->handle);
                ++counts[type];
            }
        }
    }
    for (const char* const type : {"TOLERANCE", "VIEWPORT", "DIMSTYLE", "DIMSTYLE_CONTROL", "MLINESTYLE", "GROUP"})
        EXPECT_GT(counts[type], 0) << type;
}

TEST(SmallSections, areThoseOfRealFiles) {
    EXPECT_EQ(writeTemplate(Release::r2004, 1), (Bytes{0, 0, 1, 0}));
    EXPECT_EQ(writeTemplate(Release::r2007, 1), (Bytes{1, 0, 0, 0, 1, 0}));
    EXPECT_EQ(writeObjectFreeSpace(Release::r2007, 5, {}).size(), 53u);
    EXPECT_EQ(writeObjectFreeSpace(Release::r2010, 5, {}).size(), 89u);
    EXPECT_EQ(writeRevisionHistory(), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(SummaryRecord, isTakenOutWithItsEntry) {
    Drawing drawing = makeDefaultDrawing();
    SummaryTexts texts;
    texts.comments = L"x";
    ASSERT_TRUE(writeSummaryRecord(drawing, texts));
    const Handle record = findSummaryRecord(drawing);
    ASSERT_NE(record, 0u);
    removeSummaryRecord(drawing);
    EXPECT_EQ(drawing.find(record), nullptr);
    EXPECT_EQ(findSummaryRecord(drawing), 0u);
    EXPECT_EQ(readSummaryRecord(drawing), SummaryTexts());
    removeSummaryRecord(drawing);
}

TEST(PngPicture, onlyBitmapsOfOneByteAPixelBecomeOne) {
    Bytes bitmap(40 + 2 * 4);
    putU32(bitmap, 0, 40);
    putU32(bitmap, 4, 3);
    putU32(bitmap, 8, 2);
    bitmap[12] = 1;
    bitmap[14] = 8;
    putU32(bitmap, 32, 2);
    const Bytes rows = {1, 0, 1, 0, 0, 0, 1, 0};
    bitmap.insert(bitmap.end(), rows.begin(), rows.end());
    const auto png = pngOfBitmap(bitmap);
    ASSERT_TRUE(png);
    EXPECT_EQ(Bytes(png->begin(), png->begin() + 8), (Bytes{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'}));
    EXPECT_EQ(Bytes(png->begin() + 16, png->begin() + 24), (Bytes{0, 0, 0, 3, 0, 0, 0, 2}));
    for (std::size_t cut = 0; cut < bitmap.size(); ++cut)
        EXPECT_FALSE(pngOfBitmap(ByteView(bitmap).first(cut)));
    bitmap[14] = 24;
    EXPECT_FALSE(pngOfBitmap(bitmap));
}

} // namespace
} // namespace dwg
