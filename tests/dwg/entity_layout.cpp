#include "tests/dwg/model_support.h"

#include "editor/dwg/objects_codec.h"

#include <gtest/gtest.h>

// Where each field of a record lies, told by the bit codes one after the other.
namespace {

using namespace dwg;

struct Record {
    BitWriter data, references;
};

/// Type, size, own handle 0x30 and no extended data, ahead of what `fill` writes.
template <class Fill> Bits recordOf(std::uint16_t type, Fill fill) {
    Record record;
    record.data.h({0, 0x30});
    record.data.bs(0);
    fill(record);
    BitWriter whole;
    whole.bs(type);
    whole.rl(static_cast<std::uint32_t>(whole.position() + 32 + record.data.position()));
    whole.append(record.data.bits());
    whole.append(record.references.bits());
    return whole.bits();
}

/// The data of an entity of model space on layer 0x10 that has nothing special.
void plainEntity(Record& record) {
    record.data.b(false); // no picture
    record.data.bb(2);    // model space
    record.data.bl(0);    // reactors
    record.data.b(true);  // no links
    record.data.bs(256);  // colour by layer
    record.data.bd(1);    // linetype scale
    record.data.bb(0);    // linetype by layer
    record.data.bb(0);    // plot style by layer
    record.data.bs(0);    // visible
    record.data.rc(29);   // lineweight by layer
    record.references.h({3, 0});
    record.references.h({5, 0x10});
}

Object plainObject(std::uint16_t type, Body body) {
    Object object;
    object.handle = 0x30;
    object.type = type;
    object.entity.emplace();
    object.entity->space = Space::model;
    object.entity->layer.value = 0x10;
    object.body = std::move(body);
    return object;
}

void expectRecord(const Object& object, const Bits& expected) {
    const Drawing drawing;
    const auto encoded = encodeObject(object, ObjectContext(drawing));
    ASSERT_TRUE(encoded.ok());
    EXPECT_EQ(encoded->count, expected.count);
    EXPECT_EQ(tests::hex(encoded->bytes), tests::hex(expected.bytes));
}

TEST(EntityLayout, AFlatLineStoresNoHeights) {
    expectRecord(plainObject(object_type::line, Line{{1, 2, 0}, {3, 2, 0}}), recordOf(19, [](Record& r) {
                     plainEntity(r);
                     r.data.b(true);
                     r.data.rd(1);
                     r.data.dd(3, 1);
                     r.data.rd(2);
                     r.data.dd(2, 2);
                     r.data.bt(0);
                     r.data.be({0, 0, 1});
                 }));
}

TEST(EntityLayout, TextLeavesOutWhatHasItsUsualValue) {
    Text text;
    text.text.insertion = {1, 2};
    text.text.height = 2.5;
    text.text.value = L"A";
    text.text.style.value = 0x11;
    expectRecord(plainObject(object_type::text, text), recordOf(1, [](Record& r) {
                     plainEntity(r);
                     r.data.rc(0xFF);
                     r.data.rd2({1, 2});
                     r.data.be({0, 0, 1});
                     r.data.bt(0);
                     r.data.rd(2.5);
                     r.data.t("A");
                     r.references.h({5, 0x11});
                 }));
}

TEST(EntityLayout, APolylineStoresThePointsAsDifferencesToTheOneBefore) {
    LightweightPolyline polyline;
    polyline.flags = LightweightPolyline::closed;
    polyline.points = {{1, 2}, {1, 3}};
    polyline.bulges = {0, 1};
    expectRecord(plainObject(object_type::lightweightPolyline, polyline), recordOf(77, [](Record& r) {
                     plainEntity(r);
                     r.data.bs(0x200 | 0x10);
                     r.data.bl(2);
                     r.data.bl(2);
                     r.data.rd2({1, 2});
                     r.data.dd2({1, 3}, {1, 2});
                     r.data.bd(0);
                     r.data.bd(1);
                 }));
}

TEST(EntityLayout, AnInsertionWithAttributesNamesBlockEndsAndSequenceEnd) {
    Insert insert;
    insert.position = {1, 2, 0};
    insert.scale = {2, 2, 2};
    insert.block.value = 0x50;
    insert.hasAttributes = true;
    insert.attributes.first.value = 0x31;
    insert.attributes.last.value = 0x32;
    insert.attributes.sequenceEnd.value = 0x33;
    expectRecord(plainObject(object_type::insert, insert), recordOf(7, [](Record& r) {
                     plainEntity(r);
                     r.data.bd3({1, 2, 0});
                     r.data.bb(2);
                     r.data.rd(2);
                     r.data.bd(0);
                     r.data.bd3({0, 0, 1});
                     r.data.b(true);
                     r.references.h({5, 0x50});
                     r.references.h({4, 0x31});
                     r.references.h({4, 0x32});
                     r.references.h({3, 0x33});
                 }));
}

TEST(EntityLayout, EqualWidthsOfAVertexAreOneNegativeNumber) {
    expectRecord(plainObject(object_type::vertex2d, Vertex2d{1, {1, 2, 3}, 4, 4, 0, 0}), recordOf(10, [](Record& r) {
                     plainEntity(r);
                     r.data.rc(1);
                     r.data.bd3({1, 2, 3});
                     r.data.bd(-4);
                     r.data.bd(0);
                     r.data.bd(0);
                 }));
}

TEST(EntityLayout, CommonDataHasOwnerReactorsLinksLinetypeAndPlotStyleWhereFlagged) {
    Object object = plainObject(object_type::endBlock, BlockEnd{});
    object.owner = {4, 0x1F};
    object.reactors = {{4, 0x70}, {4, 0x71}};
    object.extensionDictionary.value = 0x72;
    object.extendedData = {{{5, 0x12}, {70, 1, 0}}};
    EntityData& entity = *object.entity;
    entity.space = Space::owner;
    entity.graphics = std::vector<std::uint8_t>{9, 8};
    entity.noLinks = false;
    entity.previous.value = 0x2E;
    entity.next = {6, 0x31};
    entity.color.index = 3;
    entity.linetypeScale = 2;
    entity.linetypeFrom = entity.plotStyleFrom = ByWhat::handle;
    entity.linetype.value = 0x16;
    entity.plotStyle.value = 0xF;
    entity.invisibility = 1;
    entity.lineweight = 5;

    Record r;
    r.data.h({0, 0x30});
    r.data.bs(3);
    r.data.h({5, 0x12});
    r.data.append(std::vector<std::uint8_t>{70, 1, 0});
    r.data.bs(0);
    r.data.b(true);
    r.data.rl(2);
    r.data.append(std::vector<std::uint8_t>{9, 8});
    r.data.bb(0);
    r.data.bl(2);
    r.data.b(false);
    r.data.bs(3);
    r.data.bd(2);
    r.data.bb(3);
    r.data.bb(3);
    r.data.bs(1);
    r.data.rc(5);
    for (const HandleRef reference :
         {HandleRef{4, 0x1F}, {4, 0x70}, {4, 0x71}, {3, 0x72}, {4, 0x2E}, {6, 0}, {5, 0x10}, {5, 0x16}, {5, 0xF}})
        r.references.h(reference);
    BitWriter whole;
    whole.bs(5);
    whole.rl(static_cast<std::uint32_t>(whole.position() + 32 + r.data.position()));
    whole.append(r.data.bits());
    whole.append(r.references.bits());
    expectRecord(object, whole.bits());

    const Drawing drawing;
    const auto decoded = decodeObject(whole.bytes(), ObjectContext(drawing));
    ASSERT_TRUE(decoded.ok());
    EXPECT_EQ(decoded->entity, object.entity);
    EXPECT_EQ(decoded->owner, object.owner);
    EXPECT_EQ(decoded->reactors, object.reactors);
    EXPECT_EQ(decoded->extensionDictionary, object.extensionDictionary);
    EXPECT_EQ(decoded->extendedData, object.extendedData);
}

TEST(EntityLayout, TextsWithClosingNullsAreReadWithoutAndWrittenWithThem) {
    Object object = plainObject(object_type::block, BlockBegin{L"A"});
    object.closedTexts = true;
    const Bits record = recordOf(4, [](Record& r) {
        plainEntity(r);
        r.data.t(std::string("A\0", 2));
    });
    expectRecord(object, record);
    const Drawing drawing;
    const auto decoded = decodeObject(record.bytes, ObjectContext(drawing));
    ASSERT_TRUE(decoded.ok());
    EXPECT_TRUE(decoded->closedTexts);
    EXPECT_EQ(decoded->as<BlockBegin>()->name, L"A");
}

TEST(EntityLayout, ACarriedEntityTakesLayerColourAndLinetypeAndKeepsItsBits) {
    const Carried body{{{0xDE, 0xAD, 0x80}, 17}, {{5, 0x20}, {12, 0x2F}}};
    Drawing drawing;
    drawing.classes = {{500, 0, L"", L"", L"WIPEOUT", false, ObjectClass::entityItem}};
    const ObjectContext context(drawing);
    auto object = decodeObject(encodeObject(plainObject(500, body), context)->bytes, context);
    ASSERT_TRUE(object.ok());
    EXPECT_EQ(typeName(drawing, *object), "WIPEOUT");
    object->entity->layer = {5, 0x80};
    object->entity->color.index = 1;
    object->entity->linetypeFrom = ByWhat::handle;
    object->entity->linetype = {5, 0x81};
    object->changed();
    const auto again = decodeObject(*objectRecord(*object, context), context);
    ASSERT_TRUE(again.ok());
    EXPECT_EQ(again->entity, object->entity);
    EXPECT_TRUE(again->body == Body(body));
}

TEST(EntityLayout, AnUnchangedObjectIsStoredWithTheBitsThatWereRead) {
    const Drawing drawing;
    const ObjectContext context(drawing);
    auto record = encodeObject(plainObject(object_type::circle, Circle{{1, 2, 3}, 4}), context)->bytes;
    record.back() |= 1; // a bit of the filling
    auto object = decodeObject(record, context);
    ASSERT_TRUE(object.ok());
    EXPECT_EQ(*objectRecord(*object, context), record);
    object->changed();
    EXPECT_NE(*objectRecord(*object, context), record);
}

TEST(EntityLayout, AColourOfAnUnknownKindIsStoredAsTheIndexThatItsBitsHaveRoomFor) {
    Color color{-7020, 0, false};
    const std::uint32_t packed = packedColor(color);
    EXPECT_EQ(packed, 0xC3000000u | (7020 & 0x1FF));
    EXPECT_EQ(packedColor(unpackedColor(packed, 0)), packed);
    EXPECT_EQ(unpackedColor(0x55000000, -7020).index, -7020);
    for (const int index : {-32768, 512, 768, -769}) {
        Color any;
        any.index = static_cast<std::int16_t>(index);
        const std::uint32_t once = packedColor(any);
        EXPECT_EQ(packedColor(unpackedColor(once, 0)), once) << index;
    }
}

} // namespace
