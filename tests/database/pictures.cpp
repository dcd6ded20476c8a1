#include "editor/database/canvas.h"
#include "editor/database/colours.h"
#include "editor/database/picture.h"
#include "editor/database/stroke_font.h"
#include "editor/database/text_lines.h"
#include "tests/database/database_support.h"

#include <gtest/gtest.h>

#include <numbers>

using namespace tests;
using namespace dwg::object_type;

namespace {

constexpr double near = 1e-9;

int number(const std::string& bytes, std::size_t at) {
    int value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= static_cast<unsigned char>(bytes[at + i]) << 8 * i;
    return value;
}

TEST(Colours, FixedEntriesOfTheTable) {
    const std::pair<int, editor::Rgb> rows[] = {
        {1, {255, 0, 0}},    {2, {255, 255, 0}},    {3, {0, 255, 0}},     {4, {0, 255, 255}}, {5, {0, 0, 255}},
        {6, {255, 0, 255}},  {7, {255, 255, 255}},  {8, {128, 128, 128}}, {10, {255, 0, 0}},  {11, {255, 127, 127}},
        {20, {255, 63, 0}},  {23, {165, 103, 82}},  {30, {255, 127, 0}},  {90, {0, 255, 0}},  {170, {0, 0, 255}},
        {250, {51, 51, 51}}, {255, {255, 255, 255}}};
    for (const auto& [index, colour] : rows) {
        const editor::Rgb made = editor::colourOfIndex(static_cast<std::uint16_t>(index));
        EXPECT_TRUE(made == colour) << index << ": " << int(made.red) << " " << int(made.green) << " "
                                    << int(made.blue);
    }
    EXPECT_EQ(editor::nearestIndex({255, 0, 0}), 1) << "of equal ones the lowest";
}

TEST(Wireframe, CurvesAreBrokenIntoPiecesOnTheCurve) {
    AcDbDatabase database;
    appendToModel(database, new AcDbCircle({10, 20, 0}, AcGeVector3d::kZAxis, 5));
    dwg::LightweightPolyline half;
    half.points = {{0, 0}, {2, 0}};
    half.bulges = {1, 0};
    appendToModel(database, new NewEntity(lightweightPolyline, half));
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    ASSERT_EQ(wireframe.strokes.size(), 2u);
    EXPECT_GT(wireframe.strokes[0].points.size(), 32u);
    for (const AcGePoint3d& point : wireframe.strokes[0].points)
        EXPECT_NEAR((point - AcGePoint3d{10, 20, 0}).length(), 5, near);
    // A bulge of 1 is half a circle to the right of the way from start to end, which turns counter-clockwise.
    double lowest = 0;
    for (const AcGePoint3d& point : wireframe.strokes[1].points) {
        EXPECT_NEAR((point - AcGePoint3d{1, 0, 0}).length(), 1, near);
        lowest = std::min(lowest, point.y);
    }
    EXPECT_NEAR(lowest, -1, 1e-2);
    EXPECT_NEAR(wireframe.strokes[1].points.back().x, 2, near);
}

TEST(Wireframe, InsertsMoveTurnAndScaleAboutTheBasePoint) {
    AcDbDatabase database;
    const AcDbObjectId block = addBlock(database, L"B");
    append(block, new AcDbLine({1, 1, 0}, {2, 1, 0}));
    AcDbBlockTableRecord* record = nullptr;
    ASSERT_EQ(acdbOpenObject(record, block, AcDb::kForWrite), eOk);
    ASSERT_EQ(record->setOrigin({1, 1, 0}), eOk);
    record->close();
    auto* const insert = new AcDbBlockReference({10, 20, 0}, block);
    ASSERT_EQ(insert->setRotation(std::numbers::pi / 2), eOk);
    ASSERT_EQ(insert->setScaleFactors({3, 1, 1}), eOk);
    const AcDbObjectId id = appendToModel(database, insert);
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    ASSERT_EQ(wireframe.strokes.size(), 1u);
    const editor::Stroke& stroke = wireframe.strokes[0];
    EXPECT_EQ(stroke.entity, id);
    EXPECT_NEAR(stroke.points[0].x, 10, near);
    EXPECT_NEAR(stroke.points[0].y, 20, near);
    EXPECT_NEAR(stroke.points[1].x, 10, near);
    EXPECT_NEAR(stroke.points[1].y, 23, near);
}

TEST(Wireframe, ColoursAndLayersAreResolvedThroughInserts) {
    AcDbDatabase database;
    addLayer(database, L"Red", 1);
    addLayer(database, L"Green", 3);
    const AcDbObjectId block = addBlock(database, L"B");
    append(block, new AcDbLine({}, {1, 0, 0}), L"0");
    auto* const byBlock = new AcDbLine({}, {2, 0, 0});
    ASSERT_EQ(byBlock->setColorIndex(0), eOk);
    append(block, byBlock, L"0");
    append(block, new AcDbLine({}, {3, 0, 0}), L"Green");
    auto* const insert = new AcDbBlockReference({}, block);
    ASSERT_EQ(insert->setColorIndex(5), eOk);
    appendToModel(database, insert, L"Red");
    const auto colours = [&] {
        std::vector<int> list;
        for (const editor::Stroke& stroke : editor::wireframeOfModelSpace(database).strokes)
            list.push_back(stroke.colour);
        return list;
    };
    EXPECT_EQ(colours(), (std::vector<int>{1, 5, 3}));
    auto& red = *database.impl()->drawing.body<dwg::Layer>({0, layerNamed(database, L"Red").handle});
    red.color.index = -1;
    EXPECT_EQ(colours(), (std::vector<int>{3})) << "an insert that is off hides what takes its layer";
    red.flags |= dwg::Layer::frozen;
    EXPECT_TRUE(colours().empty()) << "a frozen one hides all";
}

TEST(Wireframe, DepthAndPointsAreLimited) {
    AcDbDatabase database;
    AcDbObjectId block = addBlock(database, L"B0");
    append(block, new AcDbLine({}, {1, 0, 0}));
    for (const wchar_t* const name : {L"B1", L"B2", L"B3"}) {
        const AcDbObjectId outer = addBlock(database, name);
        append(outer, new AcDbBlockReference({}, block));
        append(outer, new AcDbBlockReference({}, block));
        block = outer;
    }
    EXPECT_EQ(editor::wireframeOf(block).strokes.size(), 8u);
    EXPECT_TRUE(editor::wireframeOf(block, {.depth = 2}).strokes.empty());
    const editor::Wireframe cut = editor::wireframeOf(block, {.points = 6});
    EXPECT_TRUE(cut.cut);
    EXPECT_EQ(cut.strokes.size(), 3u);
}

TEST(Wireframe, TextHasPositionHeightAndAngle) {
    AcDbDatabase database;
    dwg::Text text;
    text.text.insertion = {5, 6};
    text.text.height = 2.5;
    text.text.rotation = 0.5;
    text.text.value = L"90%%d";
    appendToModel(database, new NewEntity(dwg::object_type::text, text));
    dwg::MultilineText paragraph;
    paragraph.insertion = {0, 10, 0};
    paragraph.height = 1;
    paragraph.value = L"{\\fArial|b0;first}\\Psecond";
    appendToModel(database, new NewEntity(multilineText, paragraph));
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    ASSERT_EQ(wireframe.texts.size(), 3u);
    EXPECT_EQ(wireframe.texts[0].content, L"90\u00b0");
    EXPECT_NEAR(wireframe.texts[0].height(), 2.5, near);
    EXPECT_NEAR(wireframe.texts[0].angle(), 0.5, near);
    EXPECT_EQ(wireframe.texts[1].content, L"first");
    EXPECT_NEAR(wireframe.texts[1].position.y, 9, near);
    EXPECT_EQ(wireframe.texts[2].content, L"second");
    EXPECT_NEAR(wireframe.texts[2].position.y, 9 - 5.0 / 3, near);
}

TEST(Paragraph, LongLinesAreBrokenAtBlanks) {
    EXPECT_EQ(editor::linesOfParagraph(L"one two three", 7), (std::vector<std::wstring>{L"one two", L"three"}));
    EXPECT_EQ(editor::linesOfParagraph(L"a\\S1/2;b"), (std::vector<std::wstring>{L"a1/2b"}));
}

TEST(StrokeFont, EveryPrintableCharacterButTheBlankHasStrokes) {
    for (wchar_t character = L'!'; character < 0x7F; ++character)
        EXPECT_FALSE(editor::strokesOfText(std::wstring(1, character)).empty()) << int(character);
    EXPECT_TRUE(editor::strokesOfText(L" ").empty());
    for (const auto& stroke : editor::strokesOfText(L"ABCXYZ019@#")) {
        for (const AcGePoint2d& point : stroke)
            EXPECT_TRUE(point.y >= 0 && point.y <= 1);
    }
}

TEST(Picture, IsABitmapOf256ColoursThatShowsTheDrawing) {
    AcDbDatabase database;
    auto* const line = new AcDbLine({0, 0, 0}, {100, 0, 0});
    ASSERT_EQ(line->setColorIndex(1), eOk);
    appendToModel(database, line);
    appendToModel(database, new AcDbLine({0, 0, 0}, {0, 50, 0}));
    const std::string picture = editor::pictureOfModelSpace(database);
    ASSERT_GT(picture.size(), 1064u);
    EXPECT_EQ(number(picture, 0), 40);
    const int width = number(picture, 4), height = number(picture, 8);
    EXPECT_EQ(width, 256);
    EXPECT_GT(height, 100);
    EXPECT_LT(height, 140);
    EXPECT_EQ(number(picture, 12), 8 << 16 | 1);
    EXPECT_EQ(number(picture, 32), 256);
    EXPECT_EQ(picture.size(), 1064u + static_cast<std::size_t>((width + 3) / 4 * 4 * height));
    EXPECT_EQ(number(picture, 40) & 0xFFFFFF, 0xFFFFFF) << "the background is white";
    EXPECT_EQ(number(picture, 40 + 4 * 7) & 0xFFFFFF, 0) << "the foreground is black";
    const std::string pixels = picture.substr(1064);
    EXPECT_GT(std::count(pixels.begin(), pixels.end(), '\1'), 200);
    EXPECT_GT(std::count(pixels.begin(), pixels.end(), '\7'), 80);
}

TEST(Picture, DrawingThatShowsNothingHasNone) {
    AcDbDatabase database;
    EXPECT_TRUE(editor::pictureOfModelSpace(database).empty());
}

TEST(Canvas, LinesAreClippedAndPolygonsFilled) {
    editor::Canvas canvas(10, 10);
    canvas.line({-1e9, 5}, {1e9, 5}, 3);
    EXPECT_EQ(canvas.pixel(0, 5), 3);
    EXPECT_EQ(canvas.pixel(9, 5), 3);
    EXPECT_EQ(canvas.pixel(5, 6), 0);
    canvas.fill({{1, 1}, {4, 1}, {4, 4}, {1, 4}}, 2);
    EXPECT_EQ(canvas.pixel(2, 2), 2);
    EXPECT_EQ(canvas.pixel(6, 2), 0);
}

} // namespace
