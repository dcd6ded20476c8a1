// What hatches fill, and the lines of their patterns.
#include "editor/database/hatch_lines.h"
#include "editor/database/wireframe.h"
#include "tests/database/database_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace tests;
using dwg::Hatch;

namespace {

Hatch::Path square(double low, double high, std::uint32_t flags = 1 | Hatch::Path::isPolyline) {
    Hatch::Path path;
    path.flags = flags;
    path.closed = true;
    path.vertices = {{{low, low}}, {{high, low}}, {{high, high}}, {{low, high}}};
    return path;
}

Hatch::PatternLine lines(double angle, double distance, std::vector<double> dashes = {}) {
    Hatch::PatternLine line;
    line.angle = angle;
    line.offset = {-std::sin(angle) * distance, std::cos(angle) * distance};
    line.dashes = std::move(dashes);
    return line;
}

std::vector<editor::Piece> piecesOf(const Hatch& hatch, const editor::HatchLimits& limits = {}) {
    std::size_t work = 0;
    return editor::patternPieces(hatch, editor::contoursOf(hatch), limits, work);
}

double lengthOf(const std::vector<editor::Piece>& pieces) {
    double length = 0;
    for (const auto& [from, to] : pieces)
        length += std::hypot(to.x - from.x, to.y - from.y);
    return length;
}

/// Area of a run, by the rule of the surveyor.
double areaOf(const editor::Contour& run) {
    double twice = 0;
    for (std::size_t i = 0; i < run.size(); ++i) {
        const dwg::Point2 &a = run[i], &b = run[(i + 1) % run.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return std::abs(twice) / 2;
}

TEST(HatchLines, LieInsideOfTheContourAtTheirDistance) {
    Hatch hatch;
    hatch.paths = {square(0.5, 10.5)};
    hatch.lines = {lines(0, 1)};
    const auto pieces = piecesOf(hatch);
    ASSERT_EQ(pieces.size(), 10u);
    EXPECT_NEAR(lengthOf(pieces), 100, 1e-9);
    for (const auto& [from, to] : pieces) {
        EXPECT_NEAR(from.y, std::round(from.y), 1e-9);
        EXPECT_NEAR(from.x, 0.5, 1e-9);
        EXPECT_NEAR(to.x, 10.5, 1e-9);
    }
}

TEST(HatchLines, AnInnerContourIsLeftOutByTheEvenOddRule) {
    Hatch hatch;
    hatch.paths = {square(0, 10), square(3, 7, Hatch::Path::isPolyline)};
    hatch.lines = {lines(std::numbers::pi / 4, 0.01)};
    EXPECT_NEAR(lengthOf(piecesOf(hatch)) * 0.01, 100 - 16, 0.5);
    hatch.style = 2; // all that lies in the outer contour
    EXPECT_NEAR(lengthOf(piecesOf(hatch)) * 0.01, 100, 0.5);
}

TEST(HatchLines, DashesBeginAtTheFamilysBaseAndAreCutAtTheContour) {
    Hatch hatch;
    hatch.paths = {square(0, 10)};
    Hatch::PatternLine family = lines(0, 20, {2, -1});
    family.base = {1, 5};
    hatch.lines = {family};
    const auto pieces = piecesOf(hatch);
    ASSERT_EQ(pieces.size(), 4u);
    EXPECT_NEAR(pieces[0].first.x, 0, 1e-9);
    EXPECT_NEAR(pieces[0].second.x, 0, 1e-9) << "the end of the dash from -2 to 0";
    EXPECT_NEAR(pieces[1].first.x, 1, 1e-9);
    EXPECT_NEAR(pieces[1].second.x, 3, 1e-9);
    EXPECT_NEAR(pieces[3].second.x, 9, 1e-9);
}

TEST(HatchLines, ADotIsAPieceWithoutALength) {
    Hatch hatch;
    hatch.paths = {square(0.5, 3.5)};
    hatch.lines = {lines(0, 10, {0, -1})};
    hatch.lines[0].base = {0, 2};
    const auto pieces = piecesOf(hatch);
    ASSERT_EQ(pieces.size(), 3u);
    for (const auto& [from, to] : pieces)
        EXPECT_TRUE(from == to);
}

TEST(HatchLines, OfFamiliesThatAreTooCloseLinesAreLeftOut) {
    Hatch hatch;
    hatch.paths = {square(0, 10)};
    hatch.lines = {lines(0, 1e-9), lines(1, 1e-12, {1e-9, -1e-9})};
    const auto pieces = piecesOf(hatch, {.lines = 100, .pieces = 1000});
    EXPECT_GT(pieces.size(), 100u);
    EXPECT_LE(pieces.size(), 1000u);
}

TEST(HatchLines, FarFromTheOriginTheyAreTheSame) {
    Hatch hatch;
    hatch.paths = {square(1e6 + 0.5, 1e6 + 10.5)};
    hatch.lines = {lines(0, -1)};
    EXPECT_EQ(piecesOf(hatch).size(), 10u);
    hatch.paths = {square(1e14, 1e14 + 1000)};
    hatch.lines = {lines(0, 100, {1e-4, -1})};
    EXPECT_LT(piecesOf(hatch).size(), 20'000u);
}

TEST(HatchLines, PatternsOfGapsAndOfManyFamiliesComeToAnEnd) {
    Hatch hatch;
    hatch.paths = {square(0, 10)};
    hatch.lines.assign(5'000, lines(0.1, 0.001, {-0.0005, -0.0005}));
    EXPECT_TRUE(piecesOf(hatch).empty());
}

TEST(HatchLines, FamiliesWithoutADistanceOrPlaceDrawNothing) {
    Hatch hatch;
    hatch.paths = {square(0, 10)};
    hatch.lines = {lines(0, 0), lines(std::nan(""), 1), lines(0, 1e-300), lines(0, INFINITY)};
    EXPECT_TRUE(piecesOf(hatch).empty());
}

TEST(HatchContours, EdgesOfEveryKindAreFollowed) {
    Hatch hatch;
    Hatch::Path path;
    Hatch::Edge line;
    line.first = {0, 0};
    line.second = {4, 0};
    Hatch::Edge arc; // over the top from (4, 0) to (0, 0)
    arc.kind = Hatch::Edge::arc;
    arc.first = {2, 0};
    arc.radiusOrRatio = 2;
    arc.endAngle = std::numbers::pi;
    arc.counterclockwise = true;
    path.edges = {line, arc};
    hatch.paths = {path};
    ASSERT_EQ(editor::contoursOf(hatch).size(), 1u);
    EXPECT_NEAR(areaOf(editor::contoursOf(hatch)[0]), 2 * std::numbers::pi, 0.02);

    Hatch::Edge ellipse;
    ellipse.kind = Hatch::Edge::ellipse;
    ellipse.second = {3, 0};
    ellipse.radiusOrRatio = 0.5;
    ellipse.endAngle = 2 * std::numbers::pi;
    hatch.paths[0].edges = {ellipse};
    EXPECT_NEAR(areaOf(editor::contoursOf(hatch)[0]), 4.5 * std::numbers::pi, 0.05);

    Hatch::Edge spline;
    spline.kind = Hatch::Edge::spline;
    spline.degree = 2;
    spline.knots = {0, 0, 0, 1, 1, 1};
    spline.controlPoints = {{{0, 0}}, {{1, 2}}, {{2, 0}}};
    hatch.paths[0].edges = {spline};
    EXPECT_NEAR(areaOf(editor::contoursOf(hatch)[0]), 4.0 / 3, 0.02) << "a parabola";
}

TEST(HatchContours, AnArcThatRunsClockwiseIsMeasuredClockwise) {
    Hatch hatch;
    Hatch::Edge arc;
    arc.kind = Hatch::Edge::arc;
    arc.radiusOrRatio = 1;
    arc.endAngle = std::numbers::pi / 2;
    hatch.paths.resize(1);
    hatch.paths[0].edges = {arc};
    const editor::Contour contour = editor::contoursOf(hatch)[0];
    EXPECT_NEAR(contour.back().x, 0, 1e-9);
    EXPECT_NEAR(contour.back().y, -1, 1e-9);
}

TEST(HatchContours, BulgesAreArcs) {
    Hatch hatch;
    hatch.paths = {square(0, 2)};
    hatch.paths[0].hasBulges = true;
    for (Hatch::Vertex& vertex : hatch.paths[0].vertices)
        vertex.bulge = std::tan(std::numbers::pi / 8); // a quarter of a circle each
    EXPECT_NEAR(areaOf(editor::contoursOf(hatch)[0]), 2 * std::numbers::pi, 0.02);
}

TEST(HatchContours, WhatIsNoAreaOrNoNumberIsLeftOut) {
    Hatch hatch;
    hatch.paths.resize(3);
    hatch.paths[1].vertices = {{{0, 0}}, {{1, 1}}};
    hatch.paths[2] = square(0, std::nan(""));
    EXPECT_TRUE(editor::contoursOf(hatch).empty());
}

TEST(HatchContours, AreCutBetweenTwoLines) {
    Hatch hatch;
    hatch.paths = {square(0, 10)};
    const editor::Contour run = editor::joined(editor::contoursOf(hatch));
    EXPECT_NEAR(areaOf(editor::between(run, {1, 0}, 2, 5)), 30, 1e-9);
    EXPECT_TRUE(editor::between(run, {1, 0}, 20, 30).empty());
}

AcDbObjectId addHatch(AcDbDatabase& database, Hatch hatch) {
    return appendToModel(database, new NewEntity(dwg::object_type::hatch, std::move(hatch)));
}

TEST(HatchWireframe, ASolidOneIsOneFillWithoutEdges) {
    AcDbDatabase database;
    Hatch hatch;
    hatch.solid = true;
    hatch.elevation = 3;
    hatch.paths = {square(0, 10), square(3, 7)};
    const AcDbObjectId id = addHatch(database, hatch);
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    ASSERT_EQ(wireframe.strokes.size(), 1u);
    const editor::Stroke& fill = wireframe.strokes[0];
    EXPECT_TRUE(fill.filled && fill.edgeless);
    EXPECT_EQ(fill.entity, id);
    EXPECT_EQ(fill.points.size(), 4u + 1 + 4 + 1 + 1);
    EXPECT_EQ(fill.points[0].z, 3);
}

TEST(HatchWireframe, PatternLinesAreDrawnInTheHatchsColour) {
    AcDbDatabase database;
    Hatch hatch;
    hatch.paths = {square(0.5, 10.5)};
    hatch.lines = {lines(0, 1)};
    addHatch(database, hatch);
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    EXPECT_EQ(wireframe.strokes.size(), 10u);
    for (const editor::Stroke& stroke : wireframe.strokes)
        EXPECT_FALSE(stroke.filled);
}

TEST(HatchWireframe, AGradientRunsFromItsFirstColourToItsLast) {
    AcDbDatabase database;
    Hatch hatch;
    hatch.solid = true;
    hatch.gradient = 1;
    hatch.gradientName = L"LINEAR";
    hatch.gradientColors.resize(2);
    hatch.gradientColors[0].color.index = 5;
    hatch.gradientColors[1].color.index = 2;
    hatch.paths = {square(0, 10)};
    addHatch(database, hatch);
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    ASSERT_GT(wireframe.strokes.size(), 8u);
    EXPECT_EQ(wireframe.strokes.front().colour, 5);
    EXPECT_EQ(wireframe.strokes.back().colour, 2);
    EXPECT_LT(wireframe.strokes.front().points[0].x, wireframe.strokes.back().points[0].x);
}

} // namespace
