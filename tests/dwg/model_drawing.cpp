#include "tests/dwg/model_support.h"

#include "editor/dwg/facts.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"

#include <gtest/gtest.h>

namespace {

using namespace dwg;

Object plain(Handle handle, std::uint16_t type, Body body) {
    Object object;
    object.handle = handle;
    object.type = type;
    object.body = std::move(body);
    if (isFixedEntity(type))
        object.entity.emplace();
    return object;
}

constexpr Handle model = 0x1F, paper = 0x1B, chair = 0x50;

/// Two spaces and a block "chair", nothing in them.
Drawing emptyDrawing() {
    Drawing drawing;
    drawing.add(plain(1, object_type::blockControl, BlockControl{{{2, chair}}, {3, model}, {3, paper}}));
    for (const auto& [handle, name] :
         {std::pair{model, L"*Model_Space"}, {paper, L"*Paper_Space"}, {chair, L"chair"}}) {
        BlockHeader header;
        header.head.name = name;
        drawing.add(plain(handle, object_type::blockHeader, header));
    }
    drawing.add(plain(0x10, object_type::layer, Layer{{L"0", false, 0, false, {}}}));
    return drawing;
}

/// A line in the block, joined to the neighbours as stored; 0 is none.
void addLine(Drawing& drawing, Handle handle, Handle owner, Handle previous, Handle next) {
    Object line = plain(handle, object_type::line, Line{});
    drawing.setOwner(line, owner);
    line.entity->noLinks = false;
    line.entity->previous.value = previous;
    line.entity->next.value = next;
    line.entity->layer.value = 0x10;
    drawing.add(std::move(line));
}

BlockHeader& block(Drawing& drawing, Handle handle) {
    return *drawing.find(handle)->as<BlockHeader>();
}

void setEnds(Drawing& drawing, Handle handle, Handle first, Handle last) {
    block(drawing, handle).first.value = first;
    block(drawing, handle).last.value = last;
}

using Handles = std::vector<Handle>;

TEST(ModelDrawing, ObjectsAreFoundByHandleAndListedInItsOrder) {
    Drawing drawing;
    for (const Handle handle : {5, 2, 9, 3})
        ASSERT_NE(drawing.add(plain(handle, object_type::line, Line{})), nullptr);
    Handles handles;
    for (const auto& object : drawing.objects())
        handles.push_back(object->handle);
    EXPECT_EQ(handles, (Handles{2, 3, 5, 9}));
    EXPECT_EQ(drawing.find(5)->handle, 5u);
    EXPECT_EQ(drawing.find(4), nullptr);
    drawing.remove(5);
    drawing.remove(4);
    EXPECT_EQ(drawing.find(5), nullptr);
    EXPECT_EQ(drawing.objects().size(), 3u);
}

TEST(ModelDrawing, NullAndTakenHandlesAreRefused) {
    Drawing drawing;
    EXPECT_EQ(drawing.add(plain(0, object_type::line, Line{})), nullptr);
    EXPECT_NE(drawing.add(plain(1, object_type::line, Line{})), nullptr);
    EXPECT_EQ(drawing.add(plain(1, object_type::circle, Circle{})), nullptr);
    EXPECT_EQ(drawing.objects().size(), 1u);
}

TEST(ModelDrawing, NewHandlesAreAboveAllAndNeverGivenTwice) {
    Drawing drawing;
    drawing.add(plain(0x41, object_type::line, Line{}));
    EXPECT_EQ(drawing.newHandle(), 0x42u);
    drawing.remove(0x41);
    EXPECT_EQ(drawing.newHandle(), 0x43u);
    drawing.raiseHandleSeed(0x100);
    drawing.raiseHandleSeed(0x50);
    EXPECT_EQ(drawing.newHandle(), 0x100u);
}

TEST(ModelDrawing, ObjectsStayAtTheirAddress) {
    Drawing drawing;
    Object* const first = drawing.add(plain(5000, object_type::line, Line{}));
    for (Handle handle = 1; handle < 5000; ++handle)
        drawing.add(plain(handle, object_type::line, Line{}));
    EXPECT_EQ(drawing.find(5000), first);
    const Drawing moved = std::move(drawing);
    EXPECT_EQ(moved.find(5000), first);
}

TEST(ModelDrawing, AClassIsFoundByNameOrAddedWithTheNextNumber) {
    Drawing drawing;
    const ObjectClass wipeout{777, 0, L"a", L"b", L"WIPEOUT", false, ObjectClass::entityItem};
    EXPECT_EQ(drawing.classNumber(wipeout), 500);
    EXPECT_EQ(drawing.classNumber(wipeout), 500);
    EXPECT_EQ(drawing.classNumber({0, 0, L"", L"", L"IMAGE", false, ObjectClass::entityItem}), 501);
    EXPECT_EQ(drawing.classes.size(), 2u);
}

TEST(ModelDrawing, TypesAreNamedByTheirFixedNamesOrTheirClass) {
    Drawing drawing;
    drawing.classes = {{500, 0, L"", L"", L"WIPEOUT", false, ObjectClass::entityItem}};
    const struct {
        std::uint16_t type;
        const char* name;
    } rows[] = {{19, "LINE"},        {21, "DIMENSION_LINEAR"},  {15, "POLYLINE_2D"},        {38, "3DSOLID"},
                {77, "LWPOLYLINE"},  {14, "VERTEX_PFACE_FACE"}, {498, "ACAD_PROXY_ENTITY"}, {500, "WIPEOUT"},
                {501, "UNKNOWN_OBJ"}};
    for (const auto& row : rows)
        EXPECT_EQ(typeName(drawing, plain(1, row.type, Carried{})), row.name);
    Object entity = plain(1, 501, Carried{});
    entity.entity.emplace();
    EXPECT_EQ(typeName(drawing, entity), "UNKNOWN_ENT");
}

TEST(ModelDrawing, TheOwnerDecidesTheSpace) {
    const Drawing drawing = emptyDrawing();
    Object line = plain(0x60, object_type::line, Line{});
    line.record = {1};
    for (const auto& [owner, space] :
         {std::pair{model, Space::model}, {paper, Space::paper}, {chair, Space::owner}, {Handle{0}, Space::owner}}) {
        drawing.setOwner(line, owner);
        EXPECT_EQ(line.entity->space, space);
        EXPECT_EQ(line.owner.value, owner);
    }
    EXPECT_TRUE(line.record.empty());
}

TEST(ModelLinks, AChainIsFollowedFromFirstToLast) {
    Drawing drawing = emptyDrawing();
    addLine(drawing, 0x60, model, 0x65, 0);
    addLine(drawing, 0x65, model, 0x70, 0x60);
    addLine(drawing, 0x70, model, 0, 0x65);
    addLine(drawing, 0x71, chair, 0, 0);
    setEnds(drawing, model, 0x70, 0x60);
    setEnds(drawing, chair, 0x71, 0x71);
    resolveLinks(drawing);
    EXPECT_EQ(block(drawing, model).entities, (Handles{0x70, 0x65, 0x60}));
    EXPECT_EQ(block(drawing, chair).entities, (Handles{0x71}));
    EXPECT_TRUE(drawing.findings.empty());
}

TEST(ModelLinks, WithoutStoredLinksNeighboursAreTheHandlesBesides) {
    Drawing drawing = emptyDrawing();
    for (const Handle handle : {0x60, 0x61, 0x62}) {
        addLine(drawing, handle, model, 0, 0);
        drawing.find(handle)->entity->noLinks = true;
    }
    setEnds(drawing, model, 0x60, 0x62);
    resolveLinks(drawing);
    EXPECT_EQ(block(drawing, model).entities, (Handles{0x60, 0x61, 0x62}));
}

TEST(ModelLinks, AChainThatGoesRoundEndsAndIsFound) {
    Drawing drawing = emptyDrawing();
    addLine(drawing, 0x60, model, 0, 0x61);
    addLine(drawing, 0x61, model, 0x60, 0x60);
    addLine(drawing, 0x62, model, 0x61, 0);
    setEnds(drawing, model, 0x60, 0x62);
    resolveLinks(drawing);
    EXPECT_EQ(block(drawing, model).entities, (Handles{0x60, 0x61, 0x62}));
    EXPECT_EQ(drawing.findings.size(), 2u);
}

TEST(ModelLinks, AChainThatLeavesItsBlockEndsAndWhatNamesTheBlockIsAdded) {
    Drawing drawing = emptyDrawing();
    addLine(drawing, 0x60, model, 0, 0x71);
    addLine(drawing, 0x61, model, 0, 0);
    addLine(drawing, 0x71, chair, 0, 0);
    setEnds(drawing, model, 0x60, 0x61);
    setEnds(drawing, chair, 0x71, 0x71);
    resolveLinks(drawing);
    EXPECT_EQ(block(drawing, model).entities, (Handles{0x60, 0x61}));
    EXPECT_EQ(block(drawing, chair).entities, (Handles{0x71}));
    EXPECT_FALSE(drawing.findings.empty());
}

TEST(ModelLinks, PartsHangOnTheirInsertionAndNotOnTheBlock) {
    Drawing drawing = emptyDrawing();
    Insert insert;
    insert.hasAttributes = true;
    insert.attributes.first.value = 0x61;
    insert.attributes.last.value = 0x62;
    insert.attributes.sequenceEnd.value = 0x63;
    Object object = plain(0x60, object_type::insert, insert);
    drawing.setOwner(object, model);
    object.entity->noLinks = false;
    drawing.add(std::move(object));
    for (const Handle handle : {0x61, 0x62}) {
        Object attribute = plain(handle, object_type::attribute, Attribute{});
        drawing.setOwner(attribute, 0x60);
        drawing.add(std::move(attribute));
    }
    Object end = plain(0x63, object_type::sequenceEnd, SequenceEnd{});
    drawing.setOwner(end, 0x60);
    drawing.add(std::move(end));
    setEnds(drawing, model, 0x60, 0x60);
    resolveLinks(drawing);
    EXPECT_EQ(block(drawing, model).entities, (Handles{0x60}));
    EXPECT_EQ(drawing.find(0x60)->as<Insert>()->attributes.parts, (Handles{0x61, 0x62}));
    EXPECT_TRUE(drawing.findings.empty());
}

TEST(ModelLinks, LinkingGivesEndsAndNeighboursOfTheOrderAndMarksWhatChanged) {
    Drawing drawing = emptyDrawing();
    for (const Handle handle : {0x60, 0x61, 0x62, 0x70}) {
        addLine(drawing, handle, model, 0, 0);
        drawing.find(handle)->record = {1};
    }
    block(drawing, model).entities = {0x70, 0x60, 0x61, 0x62};
    linkEntities(drawing);
    EXPECT_EQ(block(drawing, model).first.value, 0x70u);
    EXPECT_EQ(block(drawing, model).last.value, 0x62u);
    const auto links = [&](Handle handle) {
        const EntityData& entity = *drawing.find(handle)->entity;
        return entity.noLinks ? Handles{} : Handles{entity.previous.value, entity.next.value};
    };
    EXPECT_EQ(links(0x70), (Handles{0, 0x60}));
    EXPECT_EQ(links(0x60), (Handles{0x70, 0x61}));
    EXPECT_EQ(links(0x61), Handles{});
    EXPECT_EQ(links(0x62), (Handles{0x61, 0}));
    EXPECT_TRUE(drawing.find(0x61)->record.empty());

    for (const auto& object : drawing.objects())
        object->record = {1};
    linkEntities(drawing);
    for (const auto& object : drawing.objects())
        EXPECT_FALSE(object->record.empty());
    block(drawing, model).entities.clear();
    linkEntities(drawing);
    EXPECT_EQ(block(drawing, model).first.value, 0u);
    EXPECT_EQ(block(drawing, model).last.value, 0u);
}

TEST(ModelReferences, MappingReachesAllOfThemAndOnlyThem) {
    BlockHeader header;
    header.head.externalReference.value = 1;
    header.begin.value = 2;
    header.end.value = 3;
    header.layout.value = 4;
    header.insertions = {{4, 5}, {4, 6}};
    header.entities = {7, 8};
    Object object = plain(9, object_type::blockHeader, header);
    object.owner.value = 10;
    object.reactors = {{4, 11}};
    object.extensionDictionary.value = 12;
    object.extendedData = {{{5, 13}, {1, 2}}};
    object.record = {1};
    mapReferences(object, [](Handle handle) { return handle == 8 ? 0 : handle + 100; });
    const auto& mapped = *object.as<BlockHeader>();
    EXPECT_EQ(object.handle, 9u);
    EXPECT_EQ(mapped.head.externalReference.value, 101u);
    EXPECT_EQ(mapped.begin.value, 102u);
    EXPECT_EQ(mapped.end.value, 103u);
    EXPECT_EQ(mapped.layout.value, 104u);
    EXPECT_EQ(mapped.insertions, (std::vector<HandleRef>{{4, 105}, {4, 106}}));
    EXPECT_EQ(mapped.first.value, 0u);
    EXPECT_EQ(mapped.entities, (Handles{107}));
    EXPECT_EQ(object.owner.value, 110u);
    EXPECT_EQ(object.reactors[0].value, 111u);
    EXPECT_EQ(object.extensionDictionary.value, 112u);
    EXPECT_EQ(object.extendedData[0].application.value, 113u);
    EXPECT_TRUE(object.record.empty());
}

TEST(ModelReferences, MappingReachesThoseOfEntitiesAndCarriedBodies) {
    Object object = plain(9, object_type::dimensionOrdinate, Carried{{{0x80}, 1}, {{5, 1}, {5, 0}}});
    object.entity->layer.value = 2;
    object.entity->linetype.value = 3;
    object.entity->plotStyle.value = 4;
    mapReferences(object, [](Handle handle) { return handle + 100; });
    EXPECT_EQ(object.as<Carried>()->references, (std::vector<HandleRef>{{5, 101}, {5, 0}}));
    EXPECT_EQ(object.entity->layer.value, 102u);
    EXPECT_EQ(object.entity->linetype.value, 103u);
    EXPECT_EQ(object.entity->plotStyle.value, 104u);
}

TEST(ModelFacts, BlocksOfOneNameAreCountedTogetherByTypeAndLayer) {
    Drawing drawing = emptyDrawing();
    block(drawing, chair).head.name = L"*Paper_Space";
    addLine(drawing, 0x60, paper, 0, 0);
    addLine(drawing, 0x61, chair, 0, 0);
    block(drawing, paper).entities = {0x60};
    block(drawing, chair).entities = {0x61};
    const auto facts = blockFacts(drawing);
    ASSERT_EQ(facts.size(), 2u);
    EXPECT_EQ(facts[0].name, L"*Paper_Space");
    EXPECT_EQ(facts[0].entities, 2u);
    EXPECT_EQ(facts[0].types, (std::map<std::string, std::size_t>{{"LINE", 2}}));
    EXPECT_EQ(facts[0].layers, (std::map<std::wstring, std::size_t>{{L"0", 2}}));
    EXPECT_EQ(facts[1].entities, 0u);
}

TEST(ModelFacts, TheActiveViewIsTheFirstOfItsNameWhateverTheCase) {
    Drawing drawing;
    EXPECT_FALSE(activeView(drawing).has_value());
    ViewportRecord record;
    record.head.name = L"*ACTIVE";
    record.height = 4;
    record.width = 8;
    drawing.add(plain(8, object_type::viewportControl, TableControl{{{2, 0}, {2, 0x30}, {2, 0x29}}, {}}));
    drawing.add(plain(0x30, object_type::viewportRecord, record));
    record.height = 1;
    drawing.add(plain(0x29, object_type::viewportRecord, record));
    ASSERT_TRUE(activeView(drawing).has_value());
    EXPECT_EQ(activeView(drawing)->height, 4);
    EXPECT_EQ(activeView(drawing)->aspectRatio, 2);
}

TEST(ObjectCodec, ListsWithoutRoomInTheFormatAreRefused) {
    const Drawing drawing;
    const ObjectContext context(drawing);
    Object object = plain(9, object_type::linetype, Linetype{});
    object.as<Linetype>()->dashes.resize(256);
    EXPECT_EQ(encodeObject(object, context).error().kind, ErrorKind::invalid);
    object.as<Linetype>()->dashes.resize(255);
    EXPECT_TRUE(encodeObject(object, context).ok());
    object.extendedData = {{{5, 0x12}, std::vector<std::uint8_t>(0x10000)}};
    EXPECT_EQ(encodeObject(object, context).error().kind, ErrorKind::invalid);
}

} // namespace
