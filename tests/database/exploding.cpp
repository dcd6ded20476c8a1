#include "editor/database/exploding.h"
#include "editor/database/attributes.h"
#include "editor/database/external_references.h"
#include "editor/database/wireframe.h"
#include "tests/database/database_support.h"
#include "tests/support/TemporaryFolder.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

using namespace tests;
using namespace dwg::object_type;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double pi = 3.14159265358979323846;

class Explode : public testing::Test {
protected:
    AcDbObjectId place(const dwg::Insert& how, AcDbObjectId definition) {
        dwg::Insert reference = how;
        reference.block.value = definition.handle;
        return appendToModel(database, new NewEntity(insert, reference));
    }

    /// Explodes and gives the bodies' types, in order.
    std::vector<int> explode(AcDbObjectId reference) {
        made.clear();
        result = editor::explodeReference(reference, made);
        std::vector<int> types;
        for (const AcDbObjectId id : made)
            types.push_back(objectOf(id).type);
        return types;
    }

    template <class Body> const Body& piece(std::size_t index) { return *objectOf(made.at(index)).as<Body>(); }

    AcDbDatabase database;
    AcDbObjectId block = addBlock(database, L"BLOCK");
    std::vector<AcDbObjectId> made;
    editor::Explosion result{};
};

dwg::Insert at(double x, double y, double factor = 1, double rotation = 0) {
    dwg::Insert reference;
    reference.position = {x, y, 0};
    reference.scale = {factor, factor, factor};
    reference.rotation = rotation;
    return reference;
}

TEST_F(Explode, PutsTheEntitiesWhereTheReferenceShowedThemAtTheEndOfTheDrawing) {
    addLayer(database, L"Walls");
    append(block, new AcDbLine({1, 0, 0}, {2, 0, 0}), L"Walls");
    append(block, new AcDbCircle({0, 1, 0}, AcGeVector3d::kZAxis, 1));
    const AcDbObjectId reference = place(at(10, 20, 2, pi / 2), block);
    const AcDbObjectId other = appendToModel(database, new AcDbLine({}, {1, 1, 0}));
    EXPECT_THAT(explode(reference), ElementsAre(line, circle));
    EXPECT_EQ(result, editor::Explosion::Done);
    EXPECT_NEAR(piece<dwg::Line>(0).start.x, 10, 1e-12);
    EXPECT_NEAR(piece<dwg::Line>(0).start.y, 22, 1e-12);
    EXPECT_NEAR(piece<dwg::Line>(0).end.y, 24, 1e-12);
    EXPECT_NEAR(piece<dwg::Circle>(1).center.x, 8, 1e-12);
    EXPECT_NEAR(piece<dwg::Circle>(1).radius, 2, 1e-12);
    EXPECT_EQ(objectOf(made[0]).entity->layer.value, layerNamed(database, L"Walls").handle);
    EXPECT_THAT(entitiesOf(blockNamed(database, ACDB_MODEL_SPACE)), ElementsAre(other, made[0], made[1]));
    EXPECT_EQ(entitiesOf(block).size(), 2u) << "the definition keeps its own";
    AcDbEntity* opened = nullptr;
    EXPECT_EQ(acdbOpenObject(opened, reference, AcDb::kForRead), Acad::eWasErased);
}

TEST_F(Explode, TheDefinitionsBasePointComesToThePoint) {
    database.impl()->drawing.body<dwg::BlockHeader>({0, block.handle})->basePoint = {5, 6, 7};
    append(block, new AcDbLine({5, 6, 7}, {6, 6, 7}));
    explode(place(at(1, 2), block));
    EXPECT_EQ(piece<dwg::Line>(0).start, (dwg::Point3{1, 2, 0}));
}

TEST_F(Explode, AStretchedCircleBecomesAnEllipseAndAnArcAPieceOfOne) {
    append(block, new NewEntity(circle, dwg::Circle{.center = {1, 0, 0}, .radius = 2}));
    append(block, new NewEntity(arc, dwg::Arc{.center = {}, .radius = 1, .startAngle = 0, .endAngle = pi / 2}));
    dwg::Insert stretched = at(0, 0);
    stretched.scale = {1, 3, 1};
    EXPECT_THAT(explode(place(stretched, block)), ElementsAre(ellipse, ellipse));
    EXPECT_NEAR(piece<dwg::Ellipse>(0).majorAxis.y, 6, 1e-12);
    EXPECT_NEAR(piece<dwg::Ellipse>(0).axisRatio, 1.0 / 3, 1e-12);
    EXPECT_EQ(piece<dwg::Ellipse>(0).center, (dwg::Point3{1, 0, 0}));
    const auto& part = piece<dwg::Ellipse>(1);
    EXPECT_NEAR(part.startAngle, 3 * pi / 2, 1e-12) << "from the end of the minor axis";
    EXPECT_NEAR(part.endAngle - part.startAngle, pi / 2, 1e-12);
}

TEST_F(Explode, AMirroredArcTurnsItsExtrusionAndShowsTheSame) {
    append(block, new NewEntity(arc, dwg::Arc{.center = {1, 0, 0}, .radius = 1, .startAngle = 0, .endAngle = pi / 2}));
    dwg::Insert mirrored = at(0, 0);
    mirrored.scale = {-1, 1, 1};
    const AcDbObjectId reference = place(mirrored, block);
    const auto before = editor::wireframeOfModelSpace(database).extents();
    EXPECT_THAT(explode(reference), ElementsAre(arc));
    EXPECT_EQ(piece<dwg::Arc>(0).extrusion.z, -1);
    const auto after = editor::wireframeOfModelSpace(database).extents();
    EXPECT_NEAR(after.lowest.x, before.lowest.x, 1e-12);
    EXPECT_NEAR(after.highest.y, before.highest.y, 1e-12);
}

TEST_F(Explode, NestedReferencesStayReferences) {
    const AcDbObjectId inner = addBlock(database, L"INNER");
    append(inner, new AcDbLine({}, {1, 0, 0}));
    append(block, new NewEntity(insert, [&] {
               dwg::Insert nested = at(1, 0, 2, pi / 2);
               nested.block.value = inner.handle;
               return nested;
           }()));
    EXPECT_THAT(explode(place(at(10, 0, 3, pi / 2), block)), ElementsAre(insert));
    const auto& nested = piece<dwg::Insert>(0);
    EXPECT_EQ(nested.block.value, inner.handle);
    EXPECT_NEAR(nested.position.x, 10, 1e-12);
    EXPECT_NEAR(nested.position.y, 3, 1e-12);
    EXPECT_NEAR(nested.scale.x, 6, 1e-12);
    EXPECT_NEAR(nested.rotation, pi, 1e-12);
}

TEST_F(Explode, AMirroredNestedReferenceKeepsItsPlaneAndTurnsAFactor) {
    const AcDbObjectId inner = addBlock(database, L"INNER");
    append(block, new AcDbBlockReference({1, 2, 0}, inner));
    dwg::Insert mirrored = at(0, 0);
    mirrored.scale = {-1, 1, 1};
    explode(place(mirrored, block));
    const auto& nested = piece<dwg::Insert>(0);
    EXPECT_EQ(nested.extrusion, dwg::zAxis);
    EXPECT_EQ(nested.scale, (dwg::Point3{-1, 1, 1}));
    EXPECT_EQ(nested.rotation, 0);
    EXPECT_EQ(nested.position, (dwg::Point3{-1, 2, 0}));
}

TEST_F(Explode, AttributesBecomeTextsOfTheirValues) {
    dwg::AttributeDefinition definition;
    definition.attribute.text.value = L"default";
    definition.attribute.text.height = 2;
    definition.attribute.text.insertion = {3, 0};
    definition.attribute.tag = L"NUMBER";
    append(block, new NewEntity(attributeDefinition, definition));
    dwg::AttributeDefinition constant = definition;
    constant.attribute.flags = 2;
    constant.attribute.text.value = L"always";
    append(block, new NewEntity(attributeDefinition, constant));
    const AcDbObjectId reference = place(at(10, 0, 2), block);
    ASSERT_EQ(editor::addAttributes(reference, {L"17"}), eOk);
    EXPECT_THAT(explode(reference), ElementsAre(text, text));
    EXPECT_EQ(piece<dwg::Text>(0).text.value, L"always");
    EXPECT_EQ(piece<dwg::Text>(1).text.value, L"17");
    EXPECT_NEAR(piece<dwg::Text>(1).text.insertion.x, 16, 1e-12);
    EXPECT_NEAR(piece<dwg::Text>(1).text.height, 4, 1e-12);
}

TEST_F(Explode, InvisibleAttributesAreLeftOut) {
    dwg::AttributeDefinition definition;
    definition.attribute.text.height = 2;
    definition.attribute.flags = 1;
    definition.attribute.tag = L"SECRET";
    append(block, new NewEntity(attributeDefinition, definition));
    append(block, new AcDbLine({}, {1, 0, 0}));
    const AcDbObjectId reference = place(at(0, 0), block);
    ASSERT_EQ(editor::addAttributes(reference, {L"hidden"}), eOk);
    EXPECT_THAT(explode(reference), ElementsAre(line));
}

TEST_F(Explode, WhatCanNotBeCarriedOverStaysTogetherInAnAnonymousBlock) {
    append(block, new AcDbLine({}, {1, 0, 0}));
    append(block, new NewEntity(38, dwg::Carried{})); // a solid body, of which only bits are known
    const AcDbObjectId reference = place(at(10, 0, 2), block);
    EXPECT_THAT(explode(reference), ElementsAre(line, insert));
    const auto& rest = piece<dwg::Insert>(1);
    EXPECT_EQ(rest.position, (dwg::Point3{10, 0, 0}));
    EXPECT_EQ(rest.scale.x, 2);
    const auto& definition = *database.impl()->drawing.body<dwg::BlockHeader>(rest.block);
    EXPECT_TRUE(definition.anonymous);
    EXPECT_EQ(definition.head.name, L"*U1");
    EXPECT_EQ(definition.entities.size(), 1u);
    EXPECT_THAT(explode(made[1]), IsEmpty()) << "nothing more comes of it";
    EXPECT_EQ(result, editor::Explosion::Indivisible);
}

TEST_F(Explode, AShearedNestedReferenceIsKeptInSuchABlock) {
    const AcDbObjectId inner = addBlock(database, L"INNER");
    append(inner, new AcDbLine({}, {1, 0, 0}));
    append(block, new NewEntity(insert, [&] {
               dwg::Insert nested = at(1, 0, 1, pi / 4);
               nested.block.value = inner.handle;
               return nested;
           }()));
    append(block, new AcDbLine({}, {1, 0, 0}));
    dwg::Insert stretched = at(0, 0);
    stretched.scale = {1, 5, 1};
    EXPECT_THAT(explode(place(stretched, block)), ElementsAre(line, insert));
    EXPECT_EQ(piece<dwg::Insert>(1).scale.y, 5);
}

TEST_F(Explode, RefusesWhatIsNoSimpleReference) {
    EXPECT_THAT(explode(appendToModel(database, new AcDbLine({}, {1, 0, 0}))), IsEmpty());
    EXPECT_EQ(result, editor::Explosion::NotAReference);
    append(block, new AcDbLine({}, {1, 0, 0}));
    dwg::Insert array = at(0, 0);
    array.columns = 2;
    array.block.value = block.handle;
    explode(appendToModel(database, new NewEntity(multipleInsert, array)));
    EXPECT_EQ(result, editor::Explosion::Array);
    AcDbObjectId external;
    ASSERT_EQ(editor::attachReference(database, L"X", L"/none/x.dwg", false, external), eOk);
    explode(appendToModel(database, new AcDbBlockReference({}, external)));
    EXPECT_EQ(result, editor::Explosion::ExternalReference);
    explode({});
    EXPECT_EQ(result, editor::Explosion::NotAReference);
}

TEST_F(Explode, AReferenceThatIsOpenElsewhereIsLeftAlone) {
    append(block, new AcDbLine({}, {1, 0, 0}));
    const AcDbObjectId reference = place(at(0, 0), block);
    AcDbEntity* reader = nullptr;
    ASSERT_EQ(acdbOpenObject(reader, reference, AcDb::kForRead), eOk);
    explode(reference);
    EXPECT_EQ(result, editor::Explosion::Refused);
    reader->close();
    EXPECT_THAT(explode(reference), ElementsAre(line));
}

TEST_F(Explode, AnEmptyDefinitionLeavesNothing) {
    EXPECT_THAT(explode(place(at(0, 0), block)), IsEmpty());
    EXPECT_EQ(result, editor::Explosion::Done);
    EXPECT_THAT(entitiesOf(blockNamed(database, ACDB_MODEL_SPACE)), IsEmpty());
}

/// All that a drawing shows, by lengths and extents.
struct Shown {
    double length = 0;
    editor::Extents box;
    std::size_t texts = 0;
};

Shown shownBy(const AcDbDatabase& database) {
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    Shown shown;
    shown.box = wireframe.extents();
    shown.texts = wireframe.texts.size();
    for (const editor::Stroke& stroke : wireframe.strokes) {
        for (std::size_t point = 1; point < stroke.points.size(); ++point)
            shown.length += (stroke.points[point] - stroke.points[point - 1]).length();
    }
    return shown;
}

void expectSame(const Shown& before, const Shown& after) {
    // Curves are broken into pieces in other places.
    const double size =
        1 + std::abs(before.box.highest.x - before.box.lowest.x) + std::abs(before.box.highest.y - before.box.lowest.y);
    EXPECT_NEAR(after.length, before.length, 5e-3 * (1 + before.length));
    EXPECT_NEAR(after.box.lowest.x, before.box.lowest.x, 5e-3 * size);
    EXPECT_NEAR(after.box.lowest.y, before.box.lowest.y, 5e-3 * size);
    EXPECT_NEAR(after.box.highest.x, before.box.highest.x, 5e-3 * size);
    EXPECT_NEAR(after.box.highest.y, before.box.highest.y, 5e-3 * size);
    EXPECT_EQ(after.texts, before.texts);
}

TEST_F(Explode, WhateverTheReferencesPlaceTheDrawingLooksTheSame) {
    append(block, new AcDbLine({1, 2, 3}, {4, -1, 0}));
    append(block, new NewEntity(arc, dwg::Arc{.center = {1, 1, 0}, .radius = 2, .startAngle = 0.3, .endAngle = 4}));
    append(block, new NewEntity(circle, dwg::Circle{.center = {-2, 0, 1}, .radius = 1.5, .extrusion = {0, 0, -1}}));
    append(block, new NewEntity(ellipse, dwg::Ellipse{.center = {0, 3, 0},
                                                      .majorAxis = {2, 1, 0},
                                                      .axisRatio = 0.4,
                                                      .startAngle = 0.5,
                                                      .endAngle = 5}));
    append(block, new NewEntity(solid, dwg::Solid{.corners = {{{0, 0}, {1, 0}, {0, 1}, {1, 1}}}}));
    append(block, new NewEntity(lightweightPolyline, dwg::LightweightPolyline{.points = {{0, 0}, {3, 0}, {3, 2}},
                                                                              .bulges = {0.5, 0, 0},
                                                                              .widths = {}}));
    dwg::TextFields words;
    words.value = L"Words";
    words.height = 1;
    words.insertion = {2, 2};
    words.rotation = 0.4;
    append(block, new NewEntity(text, dwg::Text{words}));
    std::mt19937 random(20001);
    const auto number = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int round = 0; round < 60; ++round) {
        dwg::Insert how = at(number(-9, 9), number(-9, 9), number(0.2, 3), number(0, 2 * pi));
        if (round % 3 == 1)
            how.scale = {number(0.3, 3), number(0.3, 3), number(0.3, 3)};
        if (round % 3 == 2)
            how.scale.x *= -1;
        if (round % 4 == 3)
            how.extrusion = {0.6, 0, 0.8};
        const AcDbObjectId reference = place(how, block);
        const Shown before = shownBy(database);
        ASSERT_GE(explode(reference).size(), 6u) << round;
        expectSame(before, shownBy(database));
        for (const AcDbObjectId id : made)
            ASSERT_EQ(tests::erase(id), eOk);
        if (HasFailure())
            FAIL() << "in round " << round;
    }
}

TEST(ExplodeReal, ReferencesOfRealDrawingsComeApartAndTheDrawingLooksTheSame) {
    const auto drawings = tests::sharedFolder("drawings");
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    int exploded = 0;
    for (const auto& entry : std::filesystem::directory_iterator(drawings / "2000")) {
        AcDbDatabase database(false);
        if (entry.path().extension() != ".dwg" || database.readDwgFile(wide(entry.path().string()).c_str()) != eOk)
            continue;
        const Shown before = shownBy(database);
        int here = 0;
        for (const AcDbObjectId id : entitiesOf(blockNamed(database, ACDB_MODEL_SPACE))) {
            std::vector<AcDbObjectId> made;
            here += editor::explodeReference(id, made) == editor::Explosion::Done ? 1 : 0;
        }
        exploded += here;
        if (here > 0)
            expectSame(before, shownBy(database));
        if (testing::Test::HasFailure())
            FAIL() << "in " << entry.path();
    }
    EXPECT_GE(exploded, 5);
}

} // namespace
