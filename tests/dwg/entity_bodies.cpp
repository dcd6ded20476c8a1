#include "tests/dwg/model_support.h"

#include "editor/dwg/objects_codec.h"

#include <gtest/gtest.h>

namespace {

using namespace dwg;

/// The classes that the objects of these tests belong to.
Drawing drawingWithClasses() {
    Drawing drawing;
    drawing.classes = {{500, 0, L"", L"", L"ACDBDICTIONARYWDFLT", false, ObjectClass::objectItem},
                       {501, 0, L"", L"", L"WIPEOUT", false, ObjectClass::entityItem}};
    return drawing;
}

Object entityOf(std::uint16_t type, Body body) {
    Object object;
    object.handle = 0x30;
    object.type = type;
    object.entity.emplace();
    object.entity->space = Space::model;
    object.entity->layer.value = 0x10;
    object.body = std::move(body);
    return object;
}

Object objectOf(std::uint16_t type, Body body) {
    Object object;
    object.handle = 0x30;
    object.type = type;
    object.owner = {handle_code::softPointer, 0x1};
    object.body = std::move(body);
    return object;
}

TextFields someText() {
    TextFields text;
    text.elevation = 3;
    text.insertion = {1, 2};
    text.alignment = {5, 6};
    text.extrusion = {0, 1, 0};
    text.thickness = 0.5;
    text.oblique = 0.1;
    text.rotation = 0.2;
    text.height = 2.5;
    text.widthFactor = 0.8;
    text.value = L"Stück \u0416";
    text.generation = 2;
    text.horizontal = 1;
    text.vertical = 3;
    text.style.value = 0x11;
    return text;
}

OwnedChain chainOfEnds() {
    OwnedChain chain;
    chain.first.value = 0x40;
    chain.last.value = 0x42;
    chain.sequenceEnd.value = 0x43;
    return chain;
}

RecordHead someHead() {
    return {L"name", true, 3, true, {handle_code::hardPointer, 0x77}};
}

/// A path of each kind of edge and a polyline, filled with lines or solid.
Hatch someHatch(bool solid) {
    Hatch hatch;
    hatch.elevation = 2;
    hatch.extrusion = {0, 1, 0};
    hatch.name = solid ? L"SOLID" : L"ANSI31";
    hatch.solid = solid;
    hatch.associative = true;
    Hatch::Path edges;
    edges.flags = 1 | Hatch::Path::isDerived;
    edges.edges.resize(4);
    edges.edges[0].first = {1, 2};
    edges.edges[0].second = {3, 4};
    edges.edges[1].kind = Hatch::Edge::arc;
    edges.edges[1].first = {1, 2};
    edges.edges[1].radiusOrRatio = 3;
    edges.edges[1].endAngle = 1.5;
    edges.edges[1].counterclockwise = true;
    edges.edges[2].kind = Hatch::Edge::ellipse;
    edges.edges[2].second = {5, 0};
    edges.edges[2].radiusOrRatio = 0.5;
    edges.edges[3].kind = Hatch::Edge::spline;
    edges.edges[3].degree = 3;
    edges.edges[3].rational = true;
    edges.edges[3].knots = {0, 0, 1, 1};
    edges.edges[3].controlPoints = {{{1, 2}, 1}, {{3, 4}, 0.5}};
    edges.boundaries = {{handle_code::softPointer, 0x60}, {handle_code::softPointer, 0x61}};
    Hatch::Path polyline;
    polyline.flags = Hatch::Path::isPolyline;
    polyline.closed = polyline.hasBulges = true;
    polyline.vertices = {{{0, 0}, 0}, {{9, 0}, 0.5}, {{9, 9}, -1}};
    polyline.boundaries = {{handle_code::softPointer, 0x62}};
    hatch.paths = {edges, polyline};
    hatch.patternType = 1;
    hatch.pixelSize = 0.25;
    hatch.seeds = {{1, 1}, {2, 3}};
    if (!solid) {
        hatch.angle = 0.5;
        hatch.scale = 2;
        hatch.lines = {{0.25, {1, 2}, {3, 4}, {1, -0.5, 0}}, {1.25, {}, {0, 1}, {}}};
    }
    return hatch;
}

Spline someSpline() {
    Spline spline;
    spline.rational = spline.weighted = true;
    spline.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    spline.controlPoints = {{{1, 2, 3}, 1}, {{4, 5, 6}, 0.5}, {{7, 8, 9}, 2}, {{1, 1, 1}, 1}};
    return spline;
}

Spline someFittedSpline() {
    Spline spline;
    spline.scenario = Spline::byFitPoints;
    spline.flags = Spline::usualFitFlags;
    spline.parametrization = 0;
    spline.fitTolerance = 0.25;
    spline.startTangent = {1, 0, 0};
    spline.fitPoints = {{1, 2, 3}, {4, 5, 6}};
    return spline;
}

Leader someLeader() {
    Leader leader;
    leader.annotation = 3;
    leader.points = {{1, 2, 3}, {4, 5, 6}};
    leader.origin = {1, 1, 1};
    leader.hook = true;
    leader.annotationObject.value = 0x70;
    leader.style.value = 0x1D;
    return leader;
}

std::vector<Object> everyKindOfObject() {
    using namespace object_type;
    std::vector<Object> all;
    const auto entity = [&all](std::uint16_t type, Body body) { all.push_back(entityOf(type, std::move(body))); };
    const auto object = [&all](std::uint16_t type, Body body) { all.push_back(objectOf(type, std::move(body))); };

    entity(line, Line{{1, 2, 3}, {4, 2, 5}, 0.5, {0, 1, 0}});
    entity(line, Line{{1, 2, 0}, {4, 2, 0}, 0, {0, 0, 1}});
    entity(circle, Circle{{1, 2, 3}, 4, 5, {1, 0, 0}});
    entity(arc, Arc{{1, 2, 3}, 4, 5, {1, 0, 0}, 0.25, 3});
    entity(ellipse, Ellipse{{1, 2, 3}, {4, 5, 6}, {0, 1, 0}, 0.5, 0.25, 3});
    entity(point, PointEntity{{1, 2, 3}, 4, {0, 1, 0}, 0.5});
    entity(solid, Solid{1, 2, {{{1, 2}, {3, 4}, {5, 6}, {7, 8}}}, {0, 1, 0}});
    entity(trace, Solid{});
    entity(face3d, Face3d{{{{1, 2, 3}, {1, 5, 3}, {6, 5, 3}, {6, 5, 4}}}, 5});
    entity(face3d, Face3d{});
    entity(ray, Ray{{1, 2, 3}, {0, 1, 0}});
    entity(constructionLine, Ray{{1, 2, 3}, {0, 1, 0}});

    LightweightPolyline polyline;
    entity(lightweightPolyline, polyline);
    polyline.flags = LightweightPolyline::closed | LightweightPolyline::linetypeGeneration;
    polyline.constantWidth = 1.5;
    polyline.elevation = 2;
    polyline.thickness = 3;
    polyline.extrusion = {0, 1, 0};
    polyline.points = {{1, 2}, {1, 3}, {4, 3}};
    polyline.bulges = {0, 1, -0.5};
    polyline.widths = {{1, 2}, {0, 0}, {3, 4}};
    entity(lightweightPolyline, polyline);

    Attribute attributeBody{someText(), L"TAG", 7, 9};
    entity(text, Text{someText()});
    entity(text, Text{});
    entity(attribute, attributeBody);
    entity(attributeDefinition, AttributeDefinition{attributeBody, L"Prompt?"});
    entity(multilineText, MultilineText{{1, 2, 3},
                                        {0, 1, 0},
                                        {0, 0, 1},
                                        10,
                                        2.5,
                                        4,
                                        5,
                                        6,
                                        7,
                                        L"a\\Pb",
                                        2,
                                        1.5,
                                        true,
                                        {handle_code::hardPointer, 0x11}});

    for (const Point3 scale : {Point3{1, 1, 1}, Point3{2, 2, 2}, Point3{1, 2, 3}, Point3{2, 2, 3}, Point3{-1, 1, 1}}) {
        Insert insertBody;
        insertBody.position = {1, 2, 3};
        insertBody.scale = scale;
        insertBody.rotation = 0.5;
        insertBody.block.value = 0x1F;
        entity(insert, insertBody);
        insertBody.hasAttributes = true;
        insertBody.attributes = chainOfEnds();
        entity(insert, insertBody);
        insertBody.columns = 3;
        insertBody.rows = 4;
        insertBody.columnSpacing = 5;
        insertBody.rowSpacing = 6;
        entity(multipleInsert, insertBody);
    }
    entity(polyline2d, Polyline2d{1, 2, 3, 4, 5, 6, {0, 1, 0}, chainOfEnds()});
    entity(polyline3d, Polyline3d{4, 1, chainOfEnds()});
    entity(polyface, PolyfaceMesh{8, 6, chainOfEnds()});
    entity(polygonMesh, PolygonMesh{1, 5, 3, 4, 6, 7, chainOfEnds()});
    entity(vertex2d, Vertex2d{1, {1, 2, 3}, 4, 5, 0.5, 0.25});
    entity(vertex2d, Vertex2d{1, {1, 2, 3}, 4, 4, 0.5, 0.25});
    entity(vertex2d, Vertex2d{});
    entity(vertex3d, Vertex3d{32, {1, 2, 3}});
    entity(meshVertex, Vertex3d{64, {1, 2, 3}});
    entity(polyfaceVertex, Vertex3d{192, {1, 2, 3}});
    entity(polyfaceFace, PolyfaceFace{{1, -2, 300, 0}});
    entity(block, BlockBegin{L"*Model_Space"});
    entity(endBlock, BlockEnd{});
    entity(sequenceEnd, SequenceEnd{});

    BlockHeader header;
    header.head = someHead();
    header.anonymous = header.hasAttributes = header.loaded = true;
    header.basePoint = {1, 2, 3};
    header.path = L"C:\\a.dwg";
    header.description = L"A chair";
    header.preview = {1, 2, 3};
    header.begin.value = 0x20;
    header.end.value = 0x21;
    header.first.value = header.last.value = 0x50;
    header.insertions = {{4, 0x60}, {4, 0x61}};
    header.layout.value = 0x22;
    object(blockHeader, header);
    header.isExternalReference = true;
    header.first = header.last = HandleRef{handle_code::softPointer};
    object(blockHeader, header);

    for (std::uint16_t type = dimensionOrdinate; type <= dimensionDiameter; ++type) {
        Dimension dimension;
        dimension.text = L"<> mm";
        dimension.measurement = 12.5;
        dimension.points[1] = {1, 2, 3};
        dimension.style.value = 0x1D;
        dimension.block.value = 0x60;
        entity(type, dimension);
    }

    entity(hatch, someHatch(false));
    entity(hatch, someHatch(true));
    entity(hatch, Hatch{});
    entity(spline, someSpline());
    entity(spline, someFittedSpline());
    entity(leader, someLeader());

    object(blockControl, BlockControl{{{2, 0x50}}, {3, 0x1F}, {3, 0x1B}});
    object(layerControl, TableControl{{{2, 0x10}, {2, 0x51}}, {}});
    object(linetypeControl, TableControl{{{2, 0x16}}, {{3, 0x14}, {3, 0x15}}});
    object(layer, Layer{someHead(), 0x3F1, NamedColor{{-3}}, {5, 0xF}, {5, 0x16}});
    Linetype dashed{someHead(),
                    L"Dashed __ __",
                    0.75,
                    'A',
                    {{0.5, 0, {}, 1, 0, 0, {5, 0}}, {-0.25, 3, {1, 2}, 1, 0.5, 4, {5, 0x11}}},
                    {}};
    dashed.texts.assign(256, 0);
    dashed.texts[0] = 'x';
    object(linetype, dashed);
    object(style, TextStyle{someHead(), true, true, 1, 2, 0.5, 3, 4, L"arial.ttf", L"big.shx"});
    ViewportRecord viewport;
    viewport.head = someHead();
    viewport.height = 9;
    viewport.width = 18;
    viewport.viewMode = {true, false, true, false};
    viewport.snapPair = 2;
    viewport.namedUcs.value = 0x66;
    object(viewportRecord, viewport);
    object(application, ApplicationRecord{someHead(), 5});
    object(ucs, OtherRecord{someHead(), {{0xA0}, 3}, {{5, 1}, {5, 2}}});
    object(dictionary, Dictionary{1, 0, {{L"ACAD_GROUP", {2, 0xD}}, {L"DWGPROPS", {2, 0x70}}}, false, {5}});
    object(500, Dictionary{1, 1, {{L"Normal", {2, 0xF}}}, true, {5, 0xF}});
    object(record, DataRecord{{1, 0, 2, 0, 30, 'a', 'b'}, 1, {{4, 0x10}, {4, 0x11}}});
    object(placeholder, Placeholder{});
    Layout layoutBody;
    layoutBody.plot.printer = L"none_device";
    layoutBody.plot.windowMaximum = {2, 3};
    layoutBody.name = L"Layout1";
    layoutBody.tabOrder = 2;
    layoutBody.extentsMaximum = {1, 2, 3};
    layoutBody.blockRecord.value = 0x1B;
    object(layout, layoutBody);
    entity(501, Carried{{{0xDE, 0xAD, 0x80}, 17}, {{5, 0x20}, {4, 0x21}}});
    object(77 + 600, Carried{{{0xF0}, 4}, {}});
    return all;
}

std::string describe(const Drawing& drawing, const Object& object) {
    return typeName(drawing, object) + " with body " + std::to_string(object.body.index());
}

TEST(EntityBodies, EveryKindIsDecodedAsItWasEncoded) {
    const Drawing drawing = drawingWithClasses();
    const ObjectContext context(drawing);
    for (const Object& object : everyKindOfObject()) {
        SCOPED_TRACE(describe(drawing, object));
        const auto record = encodeObject(object, context);
        ASSERT_TRUE(record.ok());
        std::optional<Finding> finding;
        const auto decoded = decodeObject(record->bytes, context, &finding);
        ASSERT_TRUE(decoded.ok()) << decoded.error().reason;
        EXPECT_FALSE(finding.has_value());
        EXPECT_EQ(decoded->type, object.type);
        EXPECT_EQ(decoded->handle, object.handle);
        EXPECT_EQ(decoded->entity, object.entity);
        EXPECT_EQ(decoded->body.index(), object.body.index());
        EXPECT_TRUE(decoded->body == object.body);
        EXPECT_EQ(tests::hex(encodeObject(*decoded, context)->bytes), tests::hex(record->bytes));
    }
}

TEST(EntityBodies, CutAnywhereARecordIsAnErrorOrCarriedAndNeverMore) {
    const Drawing drawing = drawingWithClasses();
    const ObjectContext context(drawing);
    for (const Object& object : everyKindOfObject()) {
        const auto record = encodeObject(object, context)->bytes;
        for (std::size_t size = 0; size < record.size(); ++size) {
            const auto decoded = decodeObject(std::span(record).first(size), context);
            EXPECT_TRUE(!decoded.ok() || decoded->record.size() == size) << describe(drawing, object);
        }
    }
}

TEST(EntityBodies, AnyFlippedBitIsReadOrRefusedAndWhatIsReadIsWrittenAgain) {
    const Drawing drawing = drawingWithClasses();
    const ObjectContext context(drawing);
    for (const Object& object : everyKindOfObject()) {
        const auto record = encodeObject(object, context)->bytes;
        for (std::size_t bit = 0; bit < record.size() * 8; ++bit) {
            auto flipped = record;
            flipped[bit / 8] ^= static_cast<std::uint8_t>(0x80 >> bit % 8);
            const auto decoded = decodeObject(flipped, context);
            if (!decoded.ok())
                continue;
            const auto again = encodeObject(*decoded, context);
            ASSERT_TRUE(again.ok());
            EXPECT_TRUE(decodeObject(again->bytes, context).ok()) << describe(drawing, object) << " bit " << bit;
        }
    }
}

TEST(EntityBodies, ABodyThatDoesNotFitItsTypeIsCarriedWithAFinding) {
    const Drawing drawing = drawingWithClasses();
    const ObjectContext context(drawing);
    const Object odd = entityOf(object_type::circle, Carried{{{0xFF, 0xC0}, 10}, {{5, 0x33}}});
    const auto record = encodeObject(odd, context);
    std::optional<Finding> finding;
    const auto decoded = decodeObject(record->bytes, context, &finding);
    ASSERT_TRUE(decoded.ok());
    EXPECT_TRUE(decoded->body == odd.body);
    ASSERT_TRUE(finding.has_value());
    EXPECT_EQ(finding->place, "object 30");
}

constexpr Release allReleases[] = {Release::r13,   Release::r14,   Release::r2000, Release::r2004,
                                   Release::r2007, Release::r2010, Release::r2013, Release::r2018};

TEST(EntityBodies, EveryKindIsDecodedInEveryReleaseAndWrittenAgainAsItWas) {
    Drawing drawing = drawingWithClasses();
    for (const Release release : allReleases) {
        drawing.release = release;
        const ObjectContext context(drawing);
        for (const Object& object : everyKindOfObject()) {
            SCOPED_TRACE(std::string(magicOf(release)) + " " + describe(drawing, object));
            const auto record = encodeObject(object, context);
            ASSERT_TRUE(record.ok());
            std::optional<Finding> finding;
            const auto decoded = decodeObject(record->bytes, context, &finding);
            ASSERT_TRUE(decoded.ok()) << decoded.error().reason;
            EXPECT_FALSE(finding.has_value());
            EXPECT_EQ(decoded->type, object.type);
            EXPECT_EQ(decoded->handle, object.handle);
            EXPECT_EQ(decoded->body.index(), object.body.index());
            if (object.isEntity()) {
                EXPECT_EQ(decoded->entity->layer, object.entity->layer);
                EXPECT_EQ(decoded->entity->color, object.entity->color);
            }
            EXPECT_EQ(tests::hex(encodeObject(*decoded, context)->bytes), tests::hex(record->bytes));
        }
    }
}

TEST(EntityBodies, AnyFlippedBitOfAnyReleaseIsReadOrRefused) {
    Drawing drawing = drawingWithClasses();
    for (const Release release : allReleases) {
        drawing.release = release;
        const ObjectContext context(drawing);
        for (const Object& object : everyKindOfObject()) {
            auto record = encodeObject(object, context)->bytes;
            for (std::size_t bit = 0; bit < record.size() * 8; bit += 13) {
                const auto mask = static_cast<std::uint8_t>(0x80 >> bit % 8);
                record[bit / 8] ^= mask;
                const auto decoded = decodeObject(record, context);
                EXPECT_TRUE(!decoded.ok() || encodeObject(*decoded, context).ok())
                    << describe(drawing, object) << " bit " << bit;
                record[bit / 8] ^= mask;
            }
        }
    }
}

/// As 2018 stores it: with a gradient, and with the points that splines pass through.
Hatch newestHatch() {
    Hatch hatch = someHatch(true);
    hatch.gradient = 1;
    hatch.gradientAngle = 0.5;
    hatch.gradientShift = 0.25;
    hatch.singleColor = 1;
    hatch.gradientTint = 1;
    hatch.gradientColors.resize(2);
    hatch.gradientColors[1].shift = 1;
    for (Hatch::GradientColor& one : hatch.gradientColors)
        one.color.index = 0; // from 2004 on a true colour has none
    hatch.gradientColors[0].color.hasRgb = hatch.gradientColors[1].color.hasRgb = true;
    hatch.gradientColors[1].color.rgb = 0x123456;
    hatch.gradientName = L"LINEAR";
    Hatch::Edge& spline = hatch.paths[0].edges[3];
    spline.fitPoints = {{1, 2}, {3, 4}};
    spline.startTangent = {1, 0};
    spline.endTangent = {0, 1};
    return hatch;
}

TEST(EntityBodies, AGradientIsKeptFrom2004OnAndPointsOfSplinesInAHatchFrom2010On) {
    Drawing drawing = drawingWithClasses();
    for (const Release release : allReleases) {
        SCOPED_TRACE(magicOf(release));
        drawing.release = release;
        const ObjectContext context(drawing);
        const Object object = entityOf(object_type::hatch, newestHatch());
        const auto record = encodeObject(object, context);
        ASSERT_TRUE(record.ok());
        const auto decoded = decodeObject(record->bytes, context);
        ASSERT_TRUE(decoded.ok());
        Hatch expected = newestHatch();
        if (release < Release::r2004) {
            expected.gradient = expected.singleColor = 0;
            expected.gradientAngle = expected.gradientShift = expected.gradientTint = 0;
            expected.gradientColors.clear();
            expected.gradientName.clear();
        }
        if (release < Release::r2010) {
            Hatch::Edge& spline = expected.paths[0].edges[3];
            spline.fitPoints.clear();
            spline.startTangent = spline.endTangent = {};
        }
        EXPECT_TRUE(decoded->body == Body(expected));
        EXPECT_EQ(tests::hex(encodeObject(*decoded, context)->bytes), tests::hex(record->bytes));
    }
}

TEST(EntityBodies, ASplineTellsByItsFlagsFrom2013OnHowItWasMade) {
    Drawing drawing = drawingWithClasses();
    for (const Release release : {Release::r2010, Release::r2013}) {
        drawing.release = release;
        const ObjectContext context(drawing);
        for (const Spline& spline : {someSpline(), someFittedSpline()}) {
            const auto record = encodeObject(entityOf(object_type::spline, spline), context);
            const auto decoded = decodeObject(record->bytes, context);
            ASSERT_TRUE(decoded.ok());
            ASSERT_NE(decoded->as<Spline>(), nullptr);
            EXPECT_EQ(decoded->as<Spline>()->scenario, spline.scenario);
            EXPECT_EQ(decoded->as<Spline>()->fitPoints, spline.fitPoints);
            EXPECT_EQ(decoded->as<Spline>()->controlPoints, spline.controlPoints);
        }
    }
}

TEST(EntityBodies, ReferencesOfHatchesAndLeadersAreVisited) {
    Object hatch = entityOf(object_type::hatch, someHatch(false));
    mapReferences(hatch, [](Handle handle) { return handle == 0 ? 0 : handle + 0x100; });
    EXPECT_EQ(hatch.as<Hatch>()->paths[0].boundaries[1].value, 0x161u);
    EXPECT_EQ(hatch.as<Hatch>()->paths[1].boundaries[0].value, 0x162u);
    EXPECT_TRUE(hatch.as<Hatch>()->associative);
    mapReferences(hatch, [](Handle handle) { return handle == 0x161 ? 0 : handle; });
    EXPECT_EQ(hatch.as<Hatch>()->paths[0].boundaries.size(), 1u);
    EXPECT_FALSE(hatch.as<Hatch>()->associative) << "it follows all of its boundaries or none";
    Object leader = entityOf(object_type::leader, someLeader());
    mapReferences(leader, [](Handle handle) { return handle == 0 ? 0 : handle + 0x100; });
    EXPECT_EQ(leader.as<Leader>()->annotationObject.value, 0x170u);
    EXPECT_EQ(leader.as<Leader>()->style.value, 0x11Du);
}

} // namespace
