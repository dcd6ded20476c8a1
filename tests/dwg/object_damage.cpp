// Drawings whose parts hold but contradict each other: what can't be is left out and found, and memory stays small.

#include "tests/dwg/model_support.h"

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/object_map.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/reading_limits.h"
#include "editor/dwg/write_drawing.h"
#include "editor/dwg/write_sections.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace dwg;

constexpr Release allReleases[] = {Release::r13,   Release::r14,   Release::r2000, Release::r2004,
                                   Release::r2007, Release::r2010, Release::r2013, Release::r2018};

Object entityOf(Handle handle, std::uint16_t type, Body body) {
    Object object;
    object.handle = handle;
    object.type = type;
    object.entity.emplace();
    object.entity->layer.value = default_handle::layerZero;
    object.body = std::move(body);
    return object;
}

/// The drawing with its objects as a reader has them before it follows links.
Drawing relinked(Drawing drawing, Release release) {
    drawing.release = release;
    resolveLinks(drawing);
    return drawing;
}

bool allMembersBelong(const Drawing& drawing) {
    for (const auto& object : drawing.objects()) {
        const auto* const block = object->as<BlockHeader>();
        const OwnedChain* const chain = ownedChain(*object);
        for (const auto* const list :
             {block == nullptr ? nullptr : &block->entities, chain == nullptr ? nullptr : &chain->parts}) {
            if (list == nullptr)
                continue;
            for (const Handle member : *list) {
                const Object* const found = drawing.find(member);
                if (found == nullptr || !found->isEntity() || found->owner.value != object->handle)
                    return false;
            }
        }
    }
    return true;
}

TEST(ObjectDamage, AChainThatRunsInACircleEndsWithAFinding) {
    Drawing drawing = makeDefaultDrawing();
    const Handle space = drawing.modelSpace();
    for (Handle handle = 0x100; handle < 0x103; ++handle) {
        Object line = entityOf(handle, object_type::line, Line{});
        line.entity->space = Space::model;
        line.entity->noLinks = false;
        line.entity->next.value = handle == 0x102 ? 0x100 : handle + 1;
        drawing.add(std::move(line));
    }
    auto& header = *drawing.find(space)->as<BlockHeader>();
    header.first.value = 0x100;
    header.last.value = 0x200;
    const Drawing read = relinked(std::move(drawing), Release::r2000);
    EXPECT_EQ(read.find(space)->as<BlockHeader>()->entities, (std::vector<Handle>{0x100, 0x101, 0x102}));
    EXPECT_FALSE(read.findings.empty());
    EXPECT_TRUE(allMembersBelong(read));
}

TEST(ObjectDamage, AListThatNamesMembersTwiceOthersOrNobodyKeepsItsOwn) {
    Drawing drawing = makeDefaultDrawing();
    const Handle space = drawing.modelSpace();
    for (Handle handle = 0x100; handle < 0x104; ++handle) {
        Object line = entityOf(handle, object_type::line, Line{});
        line.entity->space = handle == 0x103 ? Space::paper : Space::model;
        drawing.add(std::move(line));
    }
    // Its own twice, one of paper space, a record of a table, itself, nobody; one of its own is missing.
    drawing.find(space)->as<BlockHeader>()->entities = {0x100, 0x100, 0x103, default_handle::layerZero,
                                                        space, 0x999, 0x101};
    const Drawing read = relinked(std::move(drawing), Release::r2018);
    EXPECT_EQ(read.find(space)->as<BlockHeader>()->entities, (std::vector<Handle>{0x100, 0x101, 0x102}));
    EXPECT_GE(read.findings.size(), 6u);
    EXPECT_TRUE(allMembersBelong(read));
}

TEST(ObjectDamage, EntitiesThatOwnEachOtherBelongToNoBlock) {
    Drawing drawing = makeDefaultDrawing();
    for (const Handle handle : {Handle{0x100}, Handle{0x101}}) {
        Insert insert;
        insert.hasAttributes = true;
        insert.attributes.parts = {handle ^ 1};
        Object object = entityOf(handle, object_type::insert, insert);
        object.owner.value = handle ^ 1;
        drawing.add(std::move(object));
    }
    Object attribute = entityOf(0x102, object_type::attribute, Attribute{});
    attribute.owner.value = 0x102;
    drawing.add(std::move(attribute));
    for (const Release release : {Release::r2000, Release::r2018})
        EXPECT_TRUE(allMembersBelong(relinked(makeDefaultDrawing(), release)));
    const Drawing read = relinked(std::move(drawing), Release::r2010);
    EXPECT_TRUE(allMembersBelong(read));
    EXPECT_TRUE(read.find(Handle{0x100})->as<Insert>()->attributes.parts.empty());
}

/// A record of a release that ends right behind a count of a million.
std::vector<std::uint8_t> recordWithHugeCount(Release release, std::uint16_t type) {
    Drawing drawing;
    drawing.release = release;
    Object object;
    object.handle = 0x30;
    object.type = type;
    BitWriter count;
    count.bl(1'000'000);
    object.body = Carried{count.bits(), {}, {}};
    return encodeObject(object, ObjectContext(drawing))->bytes;
}

TEST(ObjectDamage, AMillionEntriesInTenBytesAreCarriedBitsAndNoMillionEntries) {
    for (const Release release : allReleases) {
        for (const std::uint16_t type :
             {object_type::dictionary, object_type::layerControl, object_type::blockControl, object_type::record}) {
            Drawing drawing;
            drawing.release = release;
            const ObjectContext context(drawing);
            const auto record = recordWithHugeCount(release, type);
            EXPECT_LT(record.size(), 32u);
            std::optional<Finding> finding;
            const auto object = decodeObject(record, context, &finding);
            ASSERT_TRUE(object.ok()) << magicOf(release) << " " << type;
            EXPECT_NE(object->as<Carried>(), nullptr) << magicOf(release) << " " << type;
            EXPECT_TRUE(finding.has_value());
        }
    }
}

TEST(ObjectDamage, ListsBeyondTheAllowanceOfMemoryAreRefused) {
    Drawing drawing;
    drawing.release = Release::r2018;
    Object object;
    object.handle = 0x30;
    object.type = 600;
    object.body = Carried{{}, std::vector<HandleRef>(10'000, {handle_code::hardPointer, 0x10}), {}};
    ObjectContext context(drawing);
    const auto record = encodeObject(object, context)->bytes;
    std::size_t memory = 10'000 * sizeof(HandleRef);
    context.memory = &memory;
    EXPECT_TRUE(decodeObject(record, context).ok());
    EXPECT_LT(memory, sizeof(HandleRef)) << "what was taken is subtracted";
    EXPECT_FALSE(decodeObject(record, context).ok());
}

TEST(ObjectDamage, VeryMuchDamageIsFoundButNotListedWithoutEnd) {
    Findings findings;
    for (int i = 0; i < 5000; ++i)
        addFinding(findings, {"object 1", "broken", 0});
    ASSERT_EQ(findings.size(), 1001u);
    EXPECT_EQ(findings.back().reason, "there is more damage, which isn't listed");
}

TEST(ObjectDamage, AnObjectMapOfMoreEntriesThanThereCanBeObjectsIsCut) {
    std::vector<ObjectPlace> places;
    for (std::uint32_t i = 1; i <= 5000; ++i)
        places.emplace_back(Handle{i}, i);
    Findings findings;
    EXPECT_EQ(readObjectMap(writeObjectMap(places), findings, 1000).size(), 1000u);
    EXPECT_EQ(findings.size(), 1u);
}

TEST(ObjectDamage, ADamagedDrawingMayTakeLessMemoryThanASoundOne) {
    ReadingLimits limits(1 << 20);
    const Findings damage{{"object 1", "broken", 0}};
    EXPECT_LE(limits.left(damage), (16u << 20) + (64u << 20));
    EXPECT_GT(limits.left({}), limits.left(damage));
    limits.take(200u << 20);
    EXPECT_EQ(limits.left(damage), 0u);
    EXPECT_GT(limits.left({}), 0u);
}

TEST(ObjectDamage, OverlappingRecordsAreNotReadTwiceOver) {
    // A file whose object map leads to one and the same record again and again, by other handles.
    Drawing drawing = makeDefaultDrawing();
    HeaderVariables header = makeDefaultHeader({2460000, 0});
    header.HANDSEED = drawing.handleSeed();
    auto bytes = writeDrawing(drawing, header, {}, 0);
    ASSERT_TRUE(bytes.ok());
    const auto file = DrawingFile::open(memorySource(*bytes));
    const auto map = file->section(section::handles);
    ASSERT_TRUE(map.ok());
    Findings findings;
    auto places = readObjectMap(*map, findings);
    for (ObjectPlaceInFile& place : places)
        place.offset = places.front().offset;
    std::vector<ObjectPlace> same;
    for (const ObjectPlaceInFile& place : places)
        same.emplace_back(place.handle, static_cast<std::uint32_t>(place.offset));
    const Bytes forged = writeObjectMap(same);
    ASSERT_LE(forged.size(), map->size());
    const auto at = std::ranges::search(*bytes, *map).begin();
    std::ranges::copy(forged, at);
    const auto read = readDrawing(*DrawingFile::open(memorySource(*bytes)));
    ASSERT_TRUE(read.ok());
    EXPECT_LE(read->objects().size(), 1u);
    EXPECT_FALSE(read->findings.empty());
}

} // namespace
