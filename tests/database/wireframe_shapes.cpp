// What is drawn of splines, leaders, endless lines, wide polylines, meshes and formatted text.
#include "editor/database/curves.h"
#include "editor/database/picture.h"
#include "editor/database/text_lines.h"
#include "editor/database/wireframe.h"
#include "tests/database/database_support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

using namespace tests;
using namespace dwg::object_type;

namespace {

constexpr double near = 1e-9;

template <class Shape> editor::Wireframe drawn(std::uint16_t type, Shape shape) {
    AcDbDatabase database;
    appendToModel(database, new NewEntity(type, std::move(shape)));
    return editor::wireframeOfModelSpace(database);
}

TEST(Curves, ASplineBeginsAndEndsAtItsEndsAndFollowsItsWeights) {
    editor::BSpline quarter{2, {0, 0, 0, 1, 1, 1}, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {1, std::sqrt(0.5), 1}};
    const auto points = editor::pointsOfSpline(quarter);
    ASSERT_GT(points.size(), 8u);
    EXPECT_NEAR(points.front().x, 1, near);
    EXPECT_NEAR(points.back().y, 1, near);
    for (const AcGePoint3d& point : points)
        EXPECT_NEAR(std::hypot(point.x, point.y), 1, near) << "a quarter of a circle";
}

TEST(Curves, WhatDoesNotFitTogetherGivesTheControlPoints) {
    const std::vector<AcGePoint3d> control = {{0, 0, 0}, {1, 1, 0}, {2, 0, 0}};
    EXPECT_EQ(editor::pointsOfSpline({2, {0, 0, 1}, control}).size(), 3u) << "knots are missing";
    EXPECT_EQ(editor::pointsOfSpline({2, {0, 0, 5, 1, 1, 1}, control}).size(), 3u) << "knots go back";
    EXPECT_EQ(editor::pointsOfSpline({9, {0, 0, 0, 1, 1, 1}, control}).size(), 3u);
    EXPECT_EQ(editor::pointsOfSpline({2, {1, 1, 1, 1, 1, 1}, control}).size(), 3u) << "no span has a length";
    EXPECT_TRUE(editor::pointsOfSpline({}).empty());
}

TEST(Curves, ACurveThroughPointsMeetsEachOfThem) {
    const std::vector<AcGePoint3d> through = {{0, 0, 0}, {2, 3, 0}, {5, 1, 0}, {7, 4, 0}};
    for (const bool closed : {false, true}) {
        const auto points = editor::pointsThrough(through, closed);
        for (const AcGePoint3d& wanted : through) {
            double nearest = 1e9;
            for (const AcGePoint3d& point : points)
                nearest = std::min(nearest, (point - wanted).length());
            EXPECT_NEAR(nearest, 0, near);
        }
        EXPECT_NEAR((points.back() - (closed ? through.front() : through.back())).length(), 0, near);
    }
}

TEST(Shapes, ASplineIsDrawnByItsControlPointsOrThroughItsPoints) {
    dwg::Spline spline;
    spline.degree = 1;
    spline.knots = {0, 0, 1, 2, 2};
    spline.controlPoints = {{{0, 0, 0}}, {{1, 1, 0}}, {{2, 0, 0}}};
    const editor::Wireframe byControl = drawn(dwg::object_type::spline, spline);
    ASSERT_EQ(byControl.strokes.size(), 1u);
    EXPECT_EQ(byControl.strokes[0].points.size(), 3u);
    spline.controlPoints.clear();
    spline.fitPoints = {{0, 0, 0}, {1, 1, 0}, {2, 0, 0}};
    EXPECT_GT(drawn(dwg::object_type::spline, spline).strokes.at(0).points.size(), 10u);
}

TEST(Shapes, ALeaderHasItsArrowAtTheFirstPointWhereThereIsRoom) {
    dwg::Leader body;
    body.points = {{0, 0, 0}, {10, 0, 0}, {10, 5, 0}};
    const editor::Wireframe wireframe = drawn(leader, body);
    ASSERT_EQ(wireframe.strokes.size(), 2u);
    EXPECT_EQ(wireframe.strokes[0].points.size(), 3u);
    EXPECT_TRUE(wireframe.strokes[1].filled);
    EXPECT_NEAR(wireframe.strokes[1].points[0].x, 0, near);
    body.points[1] = {0.01, 0, 0};
    EXPECT_EQ(drawn(leader, body).strokes.size(), 1u) << "no room";
    body.arrow = false;
    body.points[1] = {10, 0, 0};
    EXPECT_EQ(drawn(leader, body).strokes.size(), 1u);
}

TEST(Shapes, AnEndlessLineGoesOnBeyondItsPointsAndTakesNoRoom) {
    dwg::Ray body;
    body.point = {1, 2, 0};
    body.direction = {1, 0, 0};
    const editor::Wireframe half = drawn(ray, body), whole = drawn(constructionLine, body);
    ASSERT_EQ(half.strokes.size(), 1u);
    EXPECT_TRUE(half.strokes[0].beyondEnd);
    EXPECT_FALSE(half.strokes[0].beyondStart);
    EXPECT_TRUE(whole.strokes.at(0).beyondEnd && whole.strokes.at(0).beyondStart);
    EXPECT_EQ(half.extents().highest.x, 1);
}

TEST(Shapes, APictureShowsAnEndlessLineFromSideToSide) {
    AcDbDatabase database;
    appendToModel(database, new AcDbLine({0, 0, 0}, {0, 50, 0}));
    dwg::Ray body;
    body.point = {50, 25, 0};
    body.direction = {1, 0, 0};
    auto* const line = new NewEntity(constructionLine, body);
    ASSERT_EQ(line->setColorIndex(1), eOk);
    appendToModel(database, line);
    const std::string picture = editor::pictureOfModelSpace(database);
    const auto red = std::count(picture.begin() + 1064, picture.end(), '\1');
    const auto width = static_cast<unsigned char>(picture[4]) + 256 * static_cast<unsigned char>(picture[5]);
    EXPECT_EQ(red, width);
}

TEST(Shapes, APolylineWithAWidthIsAFilledBand) {
    dwg::LightweightPolyline body;
    body.points = {{0, 0}, {10, 0}, {10, 5}};
    body.constantWidth = 2;
    const editor::Wireframe even = drawn(lightweightPolyline, body);
    ASSERT_EQ(even.strokes.size(), 3u);
    EXPECT_TRUE(even.strokes[0].filled);
    EXPECT_NEAR(even.strokes[0].points[0].y, 1, near);
    EXPECT_NEAR(even.strokes[0].points[2].y, -1, near);
    body.widths = {{0, 4}, {0, 0}, {0, 0}};
    const editor::Wireframe arrow = drawn(lightweightPolyline, body);
    ASSERT_EQ(arrow.strokes.size(), 2u) << "the second piece has no width";
    EXPECT_NEAR(arrow.strokes[0].points[1].y, 2, near);
}

TEST(Shapes, ADonutIsARing) {
    dwg::LightweightPolyline body;
    body.flags = dwg::LightweightPolyline::closed;
    body.points = {{-1, 0}, {1, 0}};
    body.bulges = {1, 1};
    body.constantWidth = 0.5;
    const editor::Wireframe ring = drawn(lightweightPolyline, body);
    ASSERT_EQ(ring.strokes.size(), 3u);
    for (const AcGePoint3d& point : ring.strokes[0].points) {
        const double radius = std::hypot(point.x, point.y);
        EXPECT_TRUE(std::abs(radius - 0.75) < 0.01 || std::abs(radius - 1.25) < 0.01) << radius;
    }
}

TEST(TextRuns, FormattingCodesSetWhatTheySayUntilTheirBraceEnds) {
    const auto lines = editor::formattedLines(L"a{\\C1;\\H2x;b\\Lc}d\\H3;e");
    ASSERT_EQ(lines.size(), 1u);
    const auto& runs = lines[0].runs;
    ASSERT_EQ(runs.size(), 5u);
    EXPECT_EQ(runs[0], (editor::TextRun{L"a", {}}));
    EXPECT_EQ(runs[1].look.colour, 1);
    EXPECT_EQ(runs[1].look.height, 2);
    EXPECT_EQ(runs[1].look.marks, 0);
    EXPECT_EQ(runs[2].look.marks, editor::TextRun::underlined);
    EXPECT_EQ(runs[3], (editor::TextRun{L"d", {}}));
    EXPECT_EQ(runs[4].look.fixedHeight, 3);
}

TEST(TextRuns, CodesForCharactersAreCarriedOut) {
    EXPECT_EQ(editor::linesOfParagraph(L"1%%d\\U+00B1\\~x\\\\\\{^I^J%%065"),
              (std::vector<std::wstring>{L"1\u00b0\u00b1 x\\{ ", L"A"}));
    EXPECT_EQ(editor::linesOfParagraph(L"\\pqc;x").size(), 1u);
    EXPECT_EQ(editor::formattedLines(L"\\pxqc;x")[0].side, editor::TextLine::Side::centre);
    EXPECT_EQ(editor::formattedLines(L"\\c255;x")[0].runs[0].look.colour, 1) << "red in the low byte";
    EXPECT_EQ(editor::linesOfParagraph(L"\\fArial|b0;x\\A1;\\T2;y"), (std::vector<std::wstring>{L"xy"}));
}

TEST(TextRuns, WhatEndsInTheMiddleOfACodeIsTakenAsItIs) {
    for (const wchar_t* const text : {L"\\", L"\\H", L"\\C", L"\\U+12", L"%%", L"^", L"{{{", L"}}}", L"\\S", L"\\p"})
        EXPECT_EQ(editor::linesOfParagraph(text).size(), 1u);
    EXPECT_EQ(editor::linesOfParagraph(L"a%%"), (std::vector<std::wstring>{L"a%%"}));
    EXPECT_EQ(editor::linesOfParagraph(L"\\"), (std::vector<std::wstring>{L"\\"}));
}

TEST(TextRuns, ALineOfTextTogglesItsMarks) {
    const auto runs = editor::runsOfText(L"a%%ub%%u\\c");
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[1].look.marks, editor::TextRun::underlined);
    EXPECT_EQ(runs[2].content, L"\\c") << "no code of a line";
}

TEST(TextItems, RunsOfALineStandBehindEachOther) {
    dwg::MultilineText paragraph;
    paragraph.height = 1;
    paragraph.value = L"ab{\\C3;cd}";
    const editor::Wireframe wireframe = drawn(multilineText, paragraph);
    ASSERT_EQ(wireframe.texts.size(), 2u);
    EXPECT_FALSE(wireframe.texts[0].continued);
    EXPECT_TRUE(wireframe.texts[1].continued);
    EXPECT_EQ(wireframe.texts[1].colour, 3);
    EXPECT_NEAR(wireframe.texts[1].position.x, 2 * wireframe.texts[0].along.x, near);
}

TEST(TextItems, JustifiedTextIsHeldAtItsAlignmentPoint) {
    dwg::Text body;
    body.text.value = L"abcd";
    body.text.height = 2;
    body.text.insertion = {3, 0};
    body.text.alignment = {10, 5};
    body.text.horizontal = 2; // right
    const editor::Wireframe right = drawn(dwg::object_type::text, body);
    ASSERT_EQ(right.texts.size(), 1u);
    EXPECT_EQ(right.texts[0].anchor, 1);
    EXPECT_NEAR((right.texts[0].position + right.texts[0].along * 4).x, 10, near);
    EXPECT_NEAR(right.texts[0].position.y, 5, near);
    body.text.horizontal = 4; // middle
    const editor::Wireframe middle = drawn(dwg::object_type::text, body);
    EXPECT_NEAR((middle.texts.at(0).position + middle.texts.at(0).along * 2).x, 10, near);
    EXPECT_NEAR(middle.texts.at(0).position.y, 4, near);
}

std::size_t strokesOf(const std::filesystem::path& file) {
    AcDbDatabase database(false, false);
    EXPECT_EQ(database.readDwgFile(file.wstring().c_str()), eOk) << file;
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    EXPECT_FALSE(wireframe.cut);
    return wireframe.strokes.size();
}

TEST(RealShapes, CurvesRaysAndHatchesOfRealDrawingsAreDrawn) {
    const std::filesystem::path folder = sharedFolder("drawings");
    if (folder.empty())
        GTEST_SKIP() << "no real drawings";
    EXPECT_EQ(strokesOf(folder / "2010/Spline.dwg"), 1u);
    EXPECT_EQ(strokesOf(folder / "2013/RAY.dwg"), 1u);
    EXPECT_EQ(strokesOf(folder / "2018/ConstructionLine.dwg"), 1u);
    EXPECT_GT(strokesOf(folder / "2004/HatchG.dwg"), 40u) << "two gradients in bands";
    EXPECT_GT(strokesOf(folder / "2013/gh109_1.dwg"), 100u) << "a hatch of lines";
}

} // namespace
