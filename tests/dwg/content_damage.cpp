// Drawings whose every record can be read and whose content can't be meant: found, kept, and walked along safely.

#include "tests/dwg/container_builder.h"
#include "tests/dwg/model_support.h"

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/object_map.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/write_drawing.h"
#include "editor/dwg/write_sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace dwg;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::vector<std::string> placesOf(const Findings& findings, const std::string& reason) {
    std::vector<std::string> places;
    for (const Finding& finding : findings)
        if (finding.reason.find(reason) != std::string::npos)
            places.push_back(finding.place);
    return places;
}

void addDictionary(Drawing& drawing, Handle handle, Handle owner) {
    Object object;
    object.handle = handle;
    object.type = object_type::dictionary;
    object.owner = {handle_code::softPointer, owner};
    object.body = Dictionary{};
    drawing.add(std::move(object));
}

void addBlock(Drawing& drawing, Handle handle, const std::vector<Handle>& inserted) {
    Object block;
    block.handle = handle;
    block.type = object_type::blockHeader;
    block.owner = {handle_code::softPointer, default_handle::blockTable};
    BlockHeader header;
    header.head.name = L"B" + std::to_wstring(handle);
    block.body = header;
    drawing.add(std::move(block));
    for (const Handle other : inserted) {
        Object reference;
        reference.handle = drawing.newHandle();
        reference.type = object_type::insert;
        reference.owner = {handle_code::softPointer, handle};
        reference.entity.emplace();
        Insert insert;
        insert.block.value = other;
        reference.body = insert;
        drawing.add(std::move(reference));
    }
}

TEST(ContentDamage, ANewDrawingHasNone) {
    Drawing drawing = makeDefaultDrawing();
    checkContent(drawing);
    EXPECT_THAT(drawing.findings, IsEmpty());
}

TEST(ContentDamage, ObjectsThatOwnThemselvesByWayOfOthersAreFoundOnce) {
    Drawing drawing = makeDefaultDrawing();
    addDictionary(drawing, 0x100, 0x100);
    addDictionary(drawing, 0x101, 0x102);
    addDictionary(drawing, 0x102, 0x103);
    addDictionary(drawing, 0x103, 0x101);
    addDictionary(drawing, 0x104, 0x103); // hangs on the ring and isn't in it
    addDictionary(drawing, 0x105, 0x999); // its owner doesn't exist
    checkContent(drawing);
    EXPECT_THAT(placesOf(drawing.findings, "its own owner"),
                UnorderedElementsAre("object 100", testing::AnyOf("object 101", "object 102", "object 103")));
}

TEST(ContentDamage, AVeryLongWayOfOwnersIsNone) {
    Drawing drawing = makeDefaultDrawing();
    constexpr Handle first = 0x1000, count = 200'000;
    for (Handle handle = first; handle < first + count; ++handle)
        addDictionary(drawing, handle, handle + 1);
    addDictionary(drawing, first + count, default_handle::namedObjects);
    checkContent(drawing);
    EXPECT_THAT(drawing.findings, IsEmpty());
}

TEST(ContentDamage, BlocksThatAreInsertedInThemselvesAreFound) {
    Drawing drawing = makeDefaultDrawing();
    addBlock(drawing, 0x100, {0x100});
    addBlock(drawing, 0x101, {0x103, 0x102});
    addBlock(drawing, 0x102, {0x101, 0x101});
    addBlock(drawing, 0x103, {});
    addBlock(drawing, 0x104, {0x101, 0x103, 0x999});
    checkContent(drawing);
    EXPECT_THAT(placesOf(drawing.findings, "inserted in itself"),
                UnorderedElementsAre("object 100", testing::AnyOf("object 101", "object 102")));
}

TEST(ContentDamage, BlocksThatMultiplyAtEveryLevelAreNoRingAndTakeNoTime) {
    Drawing drawing = makeDefaultDrawing();
    for (Handle handle = 0x100; handle < 0x140; ++handle)
        addBlock(drawing, handle, {handle + 1, handle + 2, handle + 1, handle + 2});
    checkContent(drawing);
    EXPECT_THAT(drawing.findings, IsEmpty());
}

TEST(ContentDamage, NamesWithControlCharactersAreFoundAndKept) {
    Drawing drawing = makeDefaultDrawing();
    const std::wstring name = L"Wa\nlls\x7F";
    drawing.find(Handle{default_handle::layerZero})->as<Layer>()->head.name = name;
    HeaderVariables header = makeDefaultHeader({2460000, 0});
    header.HANDSEED = drawing.handleSeed();
    const auto bytes = writeDrawing(drawing, header, {}, 0);
    ASSERT_TRUE(bytes.ok());
    const auto read = readDrawing(*DrawingFile::open(memorySource(*bytes)));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read->find(Handle{default_handle::layerZero})->as<Layer>()->head.name, name);
    EXPECT_THAT(placesOf(read->findings, "control characters"), UnorderedElementsAre("object 10"));
}

/// The file with its object map changed by `change`, which leaves its length as it is.
template <class Change> Bytes withObjectMap(Change change) {
    Drawing drawing = makeDefaultDrawing();
    HeaderVariables header = makeDefaultHeader({2460000, 0});
    header.HANDSEED = drawing.handleSeed();
    auto bytes = writeDrawing(drawing, header, {}, 0);
    EXPECT_TRUE(bytes.ok());
    const auto map = DrawingFile::open(memorySource(*bytes))->section(section::handles);
    EXPECT_TRUE(map.ok());
    Findings findings;
    std::vector<ObjectPlace> places;
    for (const ObjectPlaceInFile& place : readObjectMap(*map, findings))
        places.emplace_back(place.handle, static_cast<std::uint32_t>(place.offset));
    change(places);
    const Bytes forged = writeObjectMap(places);
    EXPECT_EQ(forged.size(), map->size());
    std::ranges::copy(forged, std::ranges::search(*bytes, *map).begin());
    return *bytes;
}

TEST(ContentDamage, AHandleThatIsInTheObjectMapTwiceLeadsToOneObject) {
    const Bytes bytes = withObjectMap([](auto& places) { places[1].first = places[0].first; });
    const auto read = readDrawing(*DrawingFile::open(memorySource(bytes)));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read->objects().size(), makeDefaultDrawing().objects().size() - 1);
    EXPECT_EQ(placesOf(read->findings, "in the object map twice").size(), 1u);
}

TEST(ContentDamage, TwoHandlesThatLeadToOneRecordAreOneObject) {
    const Bytes bytes = withObjectMap([](auto& places) { places[1].second = places[0].second; });
    const auto read = readDrawing(*DrawingFile::open(memorySource(bytes)));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(placesOf(read->findings, "bears another handle").size(), 1u);
}

TEST(ContentDamage, PagesOfTheObjectMapInAnyOrderLeadToTheSameDrawing) {
    Drawing drawing = makeDefaultDrawing();
    drawing.release = Release::r2004;
    HeaderVariables header = makeDefaultHeader({2460000, 0});
    header.HANDSEED = drawing.handleSeed();
    const auto written = writeDrawing(drawing, header, {}, 0);
    ASSERT_TRUE(written.ok());
    const auto file = DrawingFile::open(memorySource(*written));
    const auto map = file->section(section::handles), objects = file->section(section::objects);
    ASSERT_TRUE(map.ok() && objects.ok());
    Findings findings;
    std::vector<ObjectPlace> lower, upper;
    for (const ObjectPlaceInFile& place : readObjectMap(*map, findings))
        (place.handle < 0x10 ? lower : upper).emplace_back(place.handle, static_cast<std::uint32_t>(place.offset));
    constexpr std::size_t emptyPage = 4;
    Bytes falling = writeObjectMap(upper);
    falling.resize(falling.size() - emptyPage);
    tests::append(falling, writeObjectMap(lower));
    const Bytes forged =
        tests::buildPagedFile(Release::r2004, {{"AcDb:Handles", falling}, {"AcDb:AcDbObjects", *objects}});
    const auto read = readDrawing(*DrawingFile::open(memorySource(forged)));
    ASSERT_TRUE(read.ok());
    const auto expected = readDrawing(*file);
    ASSERT_EQ(read->objects().size(), expected->objects().size());
    for (std::size_t i = 0; i < read->objects().size(); ++i) {
        EXPECT_EQ(read->objects()[i]->handle, expected->objects()[i]->handle);
        EXPECT_EQ(read->objects()[i]->record, expected->objects()[i]->record);
    }
}

TEST(ContentDamage, VeryManyDamagedPagesOfAnObjectMapAreNotAllListed) {
    Bytes map;
    for (int i = 0; i < 5000; ++i)
        tests::append(map, Bytes{0, 4, 1, 1, 0xFF, 0xFF}); // a page whose check is wrong
    Findings findings;
    readObjectMap(map, findings);
    EXPECT_LT(findings.size(), 1100u);
}

TEST(ContentDamage, PagesOfASectionThatOverlapAreAnErrorOfThatSectionAlone) {
    Bytes objects(0x7400 + 999);
    for (std::size_t i = 0; i < objects.size(); ++i)
        objects[i] = static_cast<std::uint8_t>(i * i);
    for (const Release release : {Release::r2004, Release::r2010, Release::r2018}) {
        Bytes file = tests::buildPagedFile(release, {{"AcDb:AcDbObjects", objects}, {"AcDb:Template", {0, 0, 1, 0}}});
        // In the section map, where the second page begins.
        Bytes start;
        tests::append64(start, 0x7400);
        const auto found = std::ranges::find_end(file, start);
        ASSERT_FALSE(found.empty());
        found.front() = 0xFF;
        found[1] = 0x73;
        const auto opened = DrawingFile::open(memorySource(file));
        ASSERT_TRUE(opened.ok());
        const auto overlapping = opened->section(section::objects);
        ASSERT_FALSE(overlapping.ok());
        EXPECT_EQ(overlapping.error().kind, ErrorKind::damaged);
        EXPECT_THAT(overlapping.error().reason, HasSubstr("overlap"));
        EXPECT_TRUE(opened->section(section::templateSection).ok());
    }
}

} // namespace
