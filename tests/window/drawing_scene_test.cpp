// What is painted of a wireframe, and what a point of the picture hits.
#include "editor/window/drawing_scene.h"

#include "editor/database/text_lines.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

using namespace editor;

AcDbObjectId id(std::uint64_t handle) {
    return {nullptr, handle};
}

Stroke line(AcGePoint3d from, AcGePoint3d to, std::uint16_t colour = 1, std::uint64_t handle = 1) {
    Stroke stroke;
    stroke.points = {from, to};
    stroke.colour = colour;
    stroke.entity = id(handle);
    return stroke;
}

/// 100 by 80 pixels, the drawing's origin in the middle, a pixel a unit.
const Projection kPlain{1, {0, 0}, {100, 80}};

QImage painted(const DrawingScene& scene, const Projection& projection = kPlain,
               const std::vector<AcDbObjectId>& only = {}, QColor background = Qt::black) {
    QImage image(projection.size.toSize(), QImage::Format_RGB32);
    image.fill(background);
    QPainter painter(&image);
    DrawingScene::Style style{background, false, {}};
    if (only.empty())
        scene.paint(painter, projection, style);
    else
        scene.paint(painter, projection, style, only);
    return image;
}

int count(const QImage& image, QColor colour) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found += image.pixelColor(x, y) == colour ? 1 : 0;
    return found;
}

TEST(Projection, GoesBothWaysAndTurnsTheYAxis) {
    const Projection projection{4, {10, 20}, {200, 100}};
    EXPECT_EQ(projection.toSurface(10, 20), QPointF(100, 50));
    EXPECT_EQ(projection.toSurface(11, 21), QPointF(104, 46));
    EXPECT_EQ(projection.toDrawing(QPointF(104, 46)), QPointF(11, 21));
    EXPECT_EQ(projection.visible(), QRectF(-15, 7.5, 50, 25));
}

TEST(DrawingScene, StrokesHaveTheirColourAndSevenTheContrastOfTheBackground) {
    Wireframe wireframe;
    wireframe.strokes = {line({-20, 10, 0}, {20, 10, 0}, 1), line({-20, -10, 0}, {20, -10, 0}, 7)};
    const DrawingScene scene(wireframe);
    const QImage dark = painted(scene);
    EXPECT_GE(count(dark, QColor(255, 0, 0)), 40);
    EXPECT_GE(count(dark, Qt::white), 40);
    const QImage light = painted(scene, kPlain, {}, Qt::white);
    EXPECT_GE(count(light, Qt::black), 40);
}

TEST(DrawingScene, OnlyTheObjectsAskedForArePainted) {
    Wireframe wireframe;
    wireframe.strokes = {line({-20, 10, 0}, {20, 10, 0}, 1, 1), line({-20, -10, 0}, {20, -10, 0}, 3, 2)};
    const QImage image = painted(DrawingScene(wireframe), kPlain, {id(2)});
    EXPECT_EQ(count(image, QColor(255, 0, 0)), 0);
    EXPECT_GE(count(image, QColor(0, 255, 0)), 40);
}

TEST(DrawingScene, AReferenceIsFaded) {
    Wireframe wireframe;
    wireframe.strokes = {line({-20, 0, 0}, {20, 0, 0}, 1)};
    wireframe.strokes[0].foreign = true;
    const QImage image = painted(DrawingScene(wireframe));
    EXPECT_EQ(count(image, QColor(255, 0, 0)), 0);
    EXPECT_GE(count(image, QColor(128, 0, 0)), 40);
}

TEST(DrawingScene, AFilledStrokeIsFilled) {
    Wireframe wireframe;
    Stroke solid = line({-10, -10, 0}, {10, -10, 0});
    solid.points.push_back({10, 10, 0});
    solid.points.push_back({-10, 10, 0});
    solid.filled = true;
    wireframe.strokes = {solid};
    EXPECT_NEAR(count(painted(DrawingScene(wireframe)), QColor(255, 0, 0)), 400, 50);
}

TEST(DrawingScene, ADashedLinetypeLeavesGapsWhileTheyAreLargeEnoughToSee) {
    Wireframe wireframe;
    wireframe.patterns.push_back({5, 5});
    wireframe.strokes = {line({-40, 0, 0}, {40, 0, 0})};
    wireframe.strokes[0].pattern = 1;
    const DrawingScene scene(wireframe);
    EXPECT_NEAR(count(painted(scene), QColor(255, 0, 0)), 40, 8);
    const Projection small{0.2, {0, 0}, {100, 80}};
    EXPECT_NEAR(count(painted(scene, small), QColor(255, 0, 0)), 16, 2) << "a pattern of two pixels is drawn through";
}

TEST(DrawingScene, TextIsPaintedAtItsPlaceAndAsALineWhereItIsTooSmall) {
    Wireframe wireframe;
    TextItem text;
    text.content = L"HHHH";
    text.position = {-20, -5, 0};
    text.along = {8, 0, 0};
    text.up = {0, 10, 0};
    text.colour = 2;
    wireframe.texts = {text};
    const DrawingScene scene(wireframe);
    EXPECT_GT(count(painted(scene), QColor(255, 255, 0)), 60);
    const Projection small{0.2, {0, 0}, {100, 80}};
    EXPECT_NEAR(count(painted(scene, small), QColor(255, 255, 0)), 7, 3);
}

TEST(DrawingScene, PlacesOutsideOfAnyMeasureArePaintedWithoutHarm) {
    Wireframe wireframe;
    wireframe.strokes = {line({-1e300, 0, 0}, {1e300, 0, 0}), line({1e18, 1e18, 0}, {1e19, 1e19, 0})};
    const QImage image = painted(DrawingScene(wireframe));
    EXPECT_GE(count(image, QColor(255, 0, 0)), 90);
}

TEST(DrawingScene, ALineThatIsFarLongerThanTheSurfaceKeepsItsDirection) {
    Wireframe wireframe;
    // Through the origin, two to the right and one up.
    wireframe.strokes = {line({-2e7, -1e7, 0}, {6e7, 3e7, 0})};
    const QImage image = painted(DrawingScene(wireframe));
    for (const int x : {-40, -20, 20, 40}) {
        const QPointF place = kPlain.toSurface(x, x / 2.0);
        int hits = 0;
        for (int y = -2; y <= 2; ++y)
            hits += image.pixelColor(static_cast<int>(place.x()), static_cast<int>(place.y()) + y) == Qt::red ? 1 : 0;
        EXPECT_GT(hits, 0) << x;
    }
}

TEST(DrawingScene, AnEndlessLineReachesTheEdgeAndCanBeHitThere) {
    Wireframe wireframe;
    wireframe.strokes = {line({0, 10, 0}, {1, 10, 0}, 1, 7)};
    wireframe.strokes[0].beyondEnd = true;
    const DrawingScene half(wireframe);
    EXPECT_NEAR(count(painted(half), Qt::red), 50, 3);
    EXPECT_EQ(half.objectAt(kPlain.toSurface(45, 10), kPlain, 3).handle, 7u);
    EXPECT_EQ(half.objectAt(kPlain.toSurface(-45, 10), kPlain, 3).handle, 0u);
    wireframe.strokes[0].beyondStart = true;
    EXPECT_NEAR(count(painted(DrawingScene(wireframe)), Qt::red), 100, 3);
}

TEST(DrawingScene, AFillWithAHoleIsLeftOutThereAndHasNoEdges) {
    Wireframe wireframe;
    Stroke area;
    area.points = {{-20, -20, 0}, {20, -20, 0}, {20, 20, 0},  {-20, 20, 0},  {-20, -20, 0}, {-10, -10, 0},
                   {10, -10, 0},  {10, 10, 0},  {-10, 10, 0}, {-10, -10, 0}, {-20, -20, 0}};
    area.colour = 1;
    area.filled = area.edgeless = true;
    wireframe.strokes = {area};
    const QImage image = painted(DrawingScene(wireframe));
    EXPECT_NEAR(count(image, Qt::red), 1200, 60);
    EXPECT_EQ(image.pixelColor(50, 40), QColor(Qt::black)) << "in the hole";
    const QImage inside = painted(DrawingScene(wireframe), {1e5, {15, 0}, {100, 80}});
    EXPECT_EQ(count(inside, Qt::red), 100 * 80) << "its corners are far away";
}

TextItem letters(const wchar_t* content, double x) {
    TextItem text;
    text.content = content;
    text.position = {x, 0, 0};
    text.along = {8, 0, 0};
    text.up = {0, 10, 0};
    text.colour = 1;
    return text;
}

/// The first and last column of that colour.
std::pair<int, int> columns(const QImage& image, QColor colour) {
    std::pair<int, int> found{image.width(), -1};
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == colour)
                found = {std::min(found.first, x), std::max(found.second, x)};
    return found;
}

TEST(DrawingScene, AlignedTextIsHeldAtItsPointWhateverItsLettersWidths) {
    for (const wchar_t* const content : {L"iiii", L"WWWW"}) {
        Wireframe wireframe;
        wireframe.texts = {letters(content, -32)};
        wireframe.texts[0].anchor = 1;
        EXPECT_NEAR(columns(painted(DrawingScene(wireframe)), Qt::red).second, 50, 3) << static_cast<int>(content[0]);
        wireframe.texts[0].position = {-16, 0, 0};
        wireframe.texts[0].anchor = 0.5;
        const auto [left, right] = columns(painted(DrawingScene(wireframe)), Qt::red);
        EXPECT_NEAR((left + right) / 2.0, 50, 2) << static_cast<int>(content[0]);
    }
}

TEST(DrawingScene, WhatContinuesALineStandsBehindIt) {
    Wireframe wireframe;
    wireframe.texts = {letters(L"ii", -40), letters(L"W", -24)};
    wireframe.texts[1].continued = true;
    wireframe.texts[1].colour = 3;
    const QImage image = painted(DrawingScene(wireframe));
    EXPECT_LE(columns(image, Qt::red).second, columns(image, Qt::green).first);
    EXPECT_LT(columns(image, Qt::green).first, 24) << "not where average letters would have ended";
}

TEST(DrawingScene, MarksAreLinesAlongTheLetters) {
    Wireframe wireframe;
    wireframe.texts = {letters(L"HH", -20)};
    const int plain = count(painted(DrawingScene(wireframe)), Qt::red);
    wireframe.texts[0].marks = TextRun::underlined | TextRun::overlined;
    EXPECT_GT(count(painted(DrawingScene(wireframe)), Qt::red), plain + 20);
}

TEST(DrawingScene, ThePointHitsTheNearestObjectWithinReachAndOfEqualOnesTheUpper) {
    Wireframe wireframe;
    wireframe.strokes = {line({-20, 0, 0}, {20, 0, 0}, 1, 1), line({-20, 4, 0}, {20, 4, 0}, 1, 2),
                         line({0, -20, 0}, {0, 20, 0}, 1, 3)};
    const DrawingScene scene(wireframe);
    const auto at = [&](double x, double y) { return scene.objectAt(kPlain.toSurface(x, y), kPlain, 6).handle; };
    EXPECT_EQ(at(15, 1), 1u);
    EXPECT_EQ(at(15, 3), 2u);
    EXPECT_EQ(at(0, 0), 3u) << "drawn last";
    EXPECT_EQ(at(15, 30), 0u);
}

TEST(DrawingScene, AnEmptyWireframeHasNoExtentsAndHitsNothing) {
    const DrawingScene scene{Wireframe()};
    EXPECT_TRUE(scene.extents().empty);
    EXPECT_EQ(scene.objectAt({50, 40}, kPlain, 6).handle, 0u);
    EXPECT_EQ(count(painted(scene), Qt::black), 100 * 80);
}

} // namespace
