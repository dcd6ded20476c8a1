// Hatches, splines and leaders of a definition that is exploded.

#include "editor/database/exploding.h"
#include "tests/database/database_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tests;
using namespace dwg::object_type;
using testing::ElementsAre;

namespace {

constexpr double pi = 3.14159265358979323846;

class ExplodeCurves : public testing::Test {
protected:
    std::vector<int> explode(dwg::Point3 scale, double rotation = 0) {
        dwg::Insert reference;
        reference.position = {10, 20, 0};
        reference.scale = scale;
        reference.rotation = rotation;
        reference.block.value = block.handle;
        editor::explodeReference(appendToModel(database, new NewEntity(insert, reference)), made);
        std::vector<int> types;
        for (const AcDbObjectId id : made)
            types.push_back(objectOf(id).type);
        return types;
    }

    template <class Body> const Body& piece() { return *objectOf(made.at(0)).as<Body>(); }

    AcDbDatabase database;
    AcDbObjectId block = addBlock(database, L"BLOCK");
    std::vector<AcDbObjectId> made;
};

void expectPoint(dwg::Point2 found, dwg::Point2 expected) {
    EXPECT_NEAR(found.x, expected.x, 1e-12);
    EXPECT_NEAR(found.y, expected.y, 1e-12);
}

void expectPoint(dwg::Point3 found, dwg::Point3 expected) {
    EXPECT_NEAR(found.x, expected.x, 1e-12);
    EXPECT_NEAR(found.y, expected.y, 1e-12);
    EXPECT_NEAR(found.z, expected.z, 1e-12);
}

dwg::Hatch someHatch() {
    dwg::Hatch hatch;
    hatch.associative = true;
    dwg::Hatch::Path polyline, edges;
    polyline.flags = dwg::Hatch::Path::isPolyline;
    polyline.vertices = {{{1, 0}, 0.5}};
    polyline.boundaries = {{dwg::handle_code::softPointer, 0x999}};
    edges.edges.resize(3);
    edges.edges[0].second = {1, 0};
    edges.edges[1].kind = dwg::Hatch::Edge::arc;
    edges.edges[1].first = {1, 0};
    edges.edges[1].radiusOrRatio = 3;
    edges.edges[1].endAngle = 1;
    edges.edges[2].kind = dwg::Hatch::Edge::ellipse;
    edges.edges[2].second = {2, 0};
    hatch.paths = {polyline, edges};
    hatch.lines = {{0, {1, 0}, {0, 1}, {1, -0.5}}};
    hatch.seeds = {{1, 0}};
    return hatch;
}

TEST_F(ExplodeCurves, AHatchIsTurnedAndScaledWithItsBoundariesAndItsPattern) {
    append(block, new NewEntity(hatch, someHatch()));
    EXPECT_THAT(explode({2, 2, 2}, pi / 2), ElementsAre(hatch));
    const auto& body = piece<dwg::Hatch>();
    EXPECT_FALSE(body.associative);
    EXPECT_TRUE(body.paths[0].boundaries.empty()) << "the boundary stays in the definition";
    expectPoint(body.paths[0].vertices[0].point, {10, 22});
    EXPECT_EQ(body.paths[0].vertices[0].bulge, 0.5);
    const auto& edges = body.paths[1].edges;
    expectPoint(edges[0].first, {10, 20});
    expectPoint(edges[0].second, {10, 22});
    EXPECT_NEAR(edges[1].radiusOrRatio, 6, 1e-12);
    EXPECT_NEAR(edges[1].startAngle, -pi / 2, 1e-12) << "it runs clockwise, so its angles do";
    expectPoint(edges[2].second, {0, 4});
    expectPoint(body.lines[0].base, {10, 22});
    expectPoint(body.lines[0].offset, {-2, 0});
    EXPECT_THAT(body.lines[0].dashes, ElementsAre(testing::DoubleNear(2, 1e-12), testing::DoubleNear(-1, 1e-12)));
    expectPoint(body.seeds[0], {10, 22});
    EXPECT_NEAR(body.scale, 2, 1e-12);
}

TEST_F(ExplodeCurves, AHatchThatIsStretchedStaysInAReference) {
    append(block, new NewEntity(hatch, someHatch()));
    append(block, new AcDbLine({}, {1, 0, 0}));
    EXPECT_THAT(explode({2, 1, 1}), ElementsAre(line, insert));
}

TEST_F(ExplodeCurves, ASplineGoesAlongWithEveryMap) {
    dwg::Spline body;
    body.knots = {0, 0, 1, 1};
    body.degree = 1;
    body.controlPoints = {{{1, 0, 0}, 1}, {{0, 1, 2}, 0.5}};
    append(block, new NewEntity(spline, body));
    EXPECT_THAT(explode({2, 3, 4}), ElementsAre(spline));
    expectPoint(piece<dwg::Spline>().controlPoints[0].point, {12, 20, 0});
    expectPoint(piece<dwg::Spline>().controlPoints[1].point, {10, 23, 8});
    EXPECT_EQ(piece<dwg::Spline>().controlPoints[1].weight, 0.5);
    EXPECT_EQ(piece<dwg::Spline>().knots, body.knots);
}

TEST_F(ExplodeCurves, ALeaderLeavesItsAnnotationBehind) {
    dwg::Leader body;
    body.points = {{1, 0, 0}, {0, 1, 0}};
    body.annotationObject.value = 0x999;
    body.boxWidth = 1;
    append(block, new NewEntity(leader, body));
    EXPECT_THAT(explode({-2, 2, 2}), ElementsAre(leader));
    expectPoint(piece<dwg::Leader>().points[0], {8, 20, 0});
    expectPoint(piece<dwg::Leader>().extrusion, {0, 0, -1});
    EXPECT_EQ(piece<dwg::Leader>().annotation, 3);
    EXPECT_TRUE(piece<dwg::Leader>().annotationObject.isNull());
    EXPECT_NEAR(piece<dwg::Leader>().boxWidth, 2, 1e-12);
}

} // namespace
