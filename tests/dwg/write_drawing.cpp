#include "editor/dwg/write_drawing.h"

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/section_names.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace dwg {
namespace {

struct Reread {
    DrawingFile file;
    Drawing drawing;
    HeaderVariables header;
};

Reread reread(const Bytes& bytes) {
    auto file = DrawingFile::open(memorySource(bytes));
    EXPECT_TRUE(file) << file.error().reason;
    auto drawing = readDrawing(*file);
    EXPECT_TRUE(drawing) << drawing.error().reason;
    auto header = readHeaderVariables(*file);
    EXPECT_TRUE(header) << header.error().reason;
    return {*file, std::move(*drawing), *header};
}

/// Both drawings have the same objects, bit for bit.
void expectSameObjects(const Drawing& one, const Drawing& other) {
    const ObjectContext oneContext(one), otherContext(other);
    ASSERT_EQ(one.objects().size(), other.objects().size());
    for (std::size_t i = 0; i < one.objects().size(); ++i) {
        const Object& left = *one.objects()[i];
        const Object& right = *other.objects()[i];
        ASSERT_EQ(left.handle, right.handle);
        ASSERT_EQ(*objectRecord(left, oneContext), *objectRecord(right, otherContext))
            << typeName(one, left) << " " << std::hex << left.handle;
    }
}

TEST(WriteDrawing, DefaultDrawingReadsBackEqual) {
    Drawing drawing = makeDefaultDrawing();
    const HeaderVariables header = makeDefaultHeader({2460000, 1234});
    const std::vector<Picture> pictures = {{image_code::bitmap, Bytes(64, 9)}};
    const auto bytes = writeDrawing(drawing, header, pictures, 1);
    ASSERT_TRUE(bytes) << bytes.error().reason;
    const Reread back = reread(*bytes);
    for (const Finding& finding : back.drawing.findings)
        ADD_FAILURE() << finding.place << ": " << finding.reason;
    expectSameObjects(drawing, back.drawing);
    EXPECT_EQ(back.header, header);
    EXPECT_EQ(back.drawing.classes, drawing.classes);
    EXPECT_EQ(*readPictures(back.file.source()), pictures);
    EXPECT_EQ(back.file.imageAddress(), 220u);
    EXPECT_EQ(*back.file.section(section::templateSection), (Bytes{0, 0, 1, 0}));
}

TEST(WriteDrawing, DefaultDrawingHasAllThatReadersExpect) {
    const Drawing drawing = makeDefaultDrawing();
    for (const std::uint16_t type : {48, 50, 52, 56, 60, 62, 64, 66, 68, 70})
        EXPECT_NE(drawing.firstOfType(type), nullptr) << type;
    const auto* const names = drawing.namedObjects()->as<Dictionary>();
    ASSERT_NE(names, nullptr);
    std::vector<std::wstring> entries;
    for (const auto& item : names->items) {
        entries.push_back(item.name);
        EXPECT_NE(drawing.find(item.object), nullptr);
    }
    EXPECT_EQ(entries, (std::vector<std::wstring>{L"ACAD_GROUP", L"ACAD_LAYOUT", L"ACAD_MLINESTYLE",
                                                  L"ACAD_PLOTSETTINGS", L"ACAD_PLOTSTYLENAME"}));
    for (const Handle space : {drawing.modelSpace(), drawing.paperSpace()}) {
        const auto* const block = drawing.body<BlockHeader>({0, space});
        ASSERT_NE(block, nullptr);
        EXPECT_NE(drawing.body<BlockBegin>(block->begin), nullptr);
        EXPECT_NE(drawing.body<BlockEnd>(block->end), nullptr);
        const auto* const layout = drawing.body<Layout>(block->layout);
        ASSERT_NE(layout, nullptr);
        EXPECT_EQ(layout->blockRecord.value, space);
    }
}

TEST(WriteDrawing, EveryReferenceOfTheDefaultDrawingLeadsSomewhere) {
    Drawing drawing = makeDefaultDrawing();
    for (const auto& object : drawing.objects()) {
        mapReferences(*object, [&](Handle handle) {
            EXPECT_TRUE(handle == 0 || drawing.find(handle) != nullptr)
                << std::hex << object->handle << " names " << handle;
            return handle;
        });
    }
    const HeaderVariables header = makeDefaultHeader({});
    visitHeaderVariables(header, [&](const char* name, const auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, HandleRef>) {
            EXPECT_TRUE(value.isNull() || drawing.find(value) != nullptr) << name;
        }
    });
    EXPECT_EQ(header.HANDSEED, drawing.handleSeed());
}

TEST(WriteDrawing, ReleasesBefore2000AreRefused) {
    Drawing drawing = makeDefaultDrawing();
    drawing.release = Release::r14;
    const auto bytes = writeDrawing(drawing, {}, {}, 0);
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.error().kind, ErrorKind::unsupported);
}

TEST(WriteDrawing, HandleAboveThirtyTwoBitsIsRefused) {
    Drawing drawing = makeDefaultDrawing();
    Object object;
    object.handle = 0x100000000;
    object.type = object_type::placeholder;
    object.body = Placeholder{};
    ASSERT_NE(drawing.add(std::move(object)), nullptr);
    const auto bytes = writeDrawing(drawing, {}, {}, 0);
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.error().kind, ErrorKind::invalid);
}

TEST(WriteDrawing, EntitiesAreLinkedInTheirOrder) {
    Drawing drawing = makeDefaultDrawing();
    auto* const space = drawing.body<BlockHeader>({0, drawing.modelSpace()});
    std::vector<Handle> order;
    for (int i = 0; i < 4; ++i) {
        Object object;
        object.handle = drawing.newHandle();
        object.type = object_type::line;
        object.body = Line{.start = {0, 0, 0}, .end = {double(i), 1, 0}};
        object.entity.emplace();
        object.entity->layer.value = default_handle::layerZero;
        drawing.setOwner(object, drawing.modelSpace());
        order.insert(order.begin() + (i % 2), object.handle);
        drawing.add(std::move(object));
    }
    space->entities = order;
    drawing.find(drawing.modelSpace())->changed();
    const auto bytes = writeDrawing(drawing, makeDefaultHeader({}), {}, 0);
    ASSERT_TRUE(bytes);
    const Reread back = reread(*bytes);
    EXPECT_EQ(back.drawing.body<BlockHeader>({0, back.drawing.modelSpace()})->entities, order);
}

TEST(WriteDrawing, RealDrawingsReadBackEqual) {
    const std::filesystem::path folder = tests::sharedFolder("drawings");
    if (folder.empty())
        GTEST_SKIP() << "shared drawings are absent";
    std::vector<std::filesystem::path> files = {folder / "sample_2000.dwg", folder / "example_2000.dwg"};
    for (const auto& entry : std::filesystem::directory_iterator(folder / "2000"))
        files.push_back(entry.path());
    for (const auto& path : files) {
        SCOPED_TRACE(path.string());
        const auto file = DrawingFile::open(path);
        ASSERT_TRUE(file);
        auto drawing = readDrawing(*file);
        ASSERT_TRUE(drawing);
        const auto header = readHeaderVariables(*file);
        ASSERT_TRUE(header);
        const auto pictures = readPictures(file->source());
        ASSERT_TRUE(pictures);
        const auto bytes = writeDrawing(*drawing, *header, *pictures, 0);
        ASSERT_TRUE(bytes) << bytes.error().reason;
        // Writing leaves the records as they were read, but where the links in the file contradict the order.
        const auto untouched =
            std::ranges::count_if(drawing->objects(), [](const auto& o) { return !o->record.empty(); });
        EXPECT_GE(untouched * 100, std::ssize(drawing->objects()) * 95);
        const Reread back = reread(*bytes);
        expectSameObjects(*drawing, back.drawing);
        EXPECT_EQ(back.header, *header);
        EXPECT_EQ(back.drawing.classes, drawing->classes);
        EXPECT_EQ(*readPictures(back.file.source()), *pictures);
    }
}

} // namespace
} // namespace dwg
