#include "tests/dwg/model_support.h"

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/write_drawing.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace dwg;

constexpr Handle firstLine = 0x100;
constexpr int lineCount = 20;

/// A whole file: a new drawing with lines in model space.
Bytes fileWithLines() {
    Drawing drawing = makeDefaultDrawing();
    auto& space = *drawing.find(drawing.modelSpace())->as<BlockHeader>();
    for (int i = 0; i < lineCount; ++i) {
        Object line;
        line.handle = firstLine + static_cast<Handle>(i) * 2;
        line.type = object_type::line;
        line.entity.emplace();
        line.entity->layer.value = default_handle::layerZero;
        line.body = Line{{double(i), 0, 0}, {double(i), 1, 0}};
        drawing.setOwner(line, drawing.modelSpace());
        space.entities.push_back(line.handle);
        drawing.add(std::move(line));
    }
    drawing.find(drawing.modelSpace())->changed();
    auto file = writeDrawing(drawing, makeDefaultHeader({2460000, 0}), {}, 0);
    return file.ok() ? *file : Bytes{};
}

Result<Drawing> read(Bytes bytes) {
    auto file = DrawingFile::open(memorySource(std::move(bytes)));
    if (!file)
        return file.error();
    return readDrawing(*file);
}

/// Where the record of the object begins in the file.
std::size_t placeOf(const Bytes& file, const Drawing& drawing, Handle handle) {
    const auto& record = drawing.find(handle)->record;
    return static_cast<std::size_t>(std::ranges::search(file, record).begin() - file.begin());
}

TEST(ObjectReading, WhatWasWrittenIsReadWithoutFindings) {
    const auto drawing = read(fileWithLines());
    ASSERT_TRUE(drawing.ok());
    EXPECT_TRUE(drawing->findings.empty());
    const auto& entities = drawing->find(drawing->modelSpace())->as<BlockHeader>()->entities;
    ASSERT_EQ(entities.size(), std::size_t{lineCount});
    EXPECT_EQ(drawing->find(entities[3])->as<Line>()->start, (Point3{3, 0, 0}));
    EXPECT_EQ(drawing->find(entities[3])->owner.value, drawing->modelSpace());
}

TEST(ObjectReading, AWrongCheckOfAnObjectIsAFindingAndTheObjectIsKept) {
    Bytes file = fileWithLines();
    const auto whole = read(file);
    ASSERT_TRUE(whole.ok());
    const std::size_t place = placeOf(file, *whole, firstLine);
    file[place + whole->find(firstLine)->record.size()] ^= 0xFF;
    const auto drawing = read(file);
    ASSERT_TRUE(drawing.ok());
    EXPECT_NE(drawing->find(firstLine), nullptr);
    ASSERT_EQ(drawing->findings.size(), 1u);
    EXPECT_EQ(drawing->findings[0].place, "object 100");
}

TEST(ObjectReading, AnObjectThatIsNotTheOneOfTheMapIsLeftOutAndTheOthersStayTheBlocks) {
    Bytes file = fileWithLines();
    const auto whole = read(file);
    ASSERT_TRUE(whole.ok());
    const Handle broken = firstLine + 6;
    const std::size_t place = placeOf(file, *whole, broken);
    file[place] = file[place + 1] = 0xFF;
    const auto drawing = read(file);
    ASSERT_TRUE(drawing.ok());
    EXPECT_EQ(drawing->find(broken), nullptr);
    const auto& entities = drawing->find(drawing->modelSpace())->as<BlockHeader>()->entities;
    EXPECT_EQ(entities.size(), std::size_t{lineCount - 1});
    EXPECT_FALSE(drawing->findings.empty());
}

TEST(ObjectReading, AnyFlippedByteGivesADrawingOrAnErrorAndEntitiesThatExist) {
    const Bytes file = fileWithLines();
    ASSERT_FALSE(file.empty());
    for (std::size_t at = 6; at < file.size(); at += 7) {
        Bytes flipped = file;
        flipped[at] ^= static_cast<std::uint8_t>(1 + at % 255);
        const auto drawing = read(std::move(flipped));
        if (!drawing.ok())
            continue;
        for (const auto& object : drawing->objects()) {
            const auto* const block = object->as<BlockHeader>();
            if (block == nullptr)
                continue;
            for (const Handle handle : block->entities)
                EXPECT_TRUE(drawing->find(handle) != nullptr && drawing->find(handle)->isEntity()) << at;
        }
    }
}

TEST(ObjectReading, CutAnywhereAFileIsAnErrorOrADrawingWithFindings) {
    const Bytes file = fileWithLines();
    const auto whole = read(file);
    ASSERT_TRUE(whole.ok());
    for (std::size_t size = 0; size < file.size(); size += 11) {
        const auto drawing = read(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)));
        const bool complete = drawing.ok() && drawing->objects().size() == whole->objects().size();
        EXPECT_TRUE(complete || !drawing.ok() || !drawing->findings.empty()) << size;
    }
}

} // namespace
