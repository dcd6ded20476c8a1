// What a process takes to read files that ask for more than they hold: 16 times the file and 64 MiB at most.

#include "tests/dwg/container_builder.h"
#include "tests/dwg/model_support.h"

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/write_drawing.h"
#include "tests/support/ProgramCost.h"
#include "tests/support/Sanitized.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using namespace dwg;

constexpr long kibibyte = 1024;

void expectLittleMemory(const Bytes& bytes) {
    if (tests::isSanitized)
        GTEST_SKIP() << "a sanitizer takes memory of its own";
    const tests::TemporaryFolder folder;
    const auto file = folder.write("a.dwg", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    const auto cost = tests::runProgram({TESSARO_BIN_DIR "/drawing-facts", file.string()});
    if (!cost)
        GTEST_SKIP() << "no process may watch its child here";
    EXPECT_GE(cost->status, 0) << "it ended by a signal";
    EXPECT_GT(cost->kibibytes, 1000);
    EXPECT_LE(cost->kibibytes, 16 * static_cast<long>(bytes.size()) / kibibyte + 64 * kibibyte);
}

/// As it is, so that some records of release 2000 lie in it.
Bytes fileOf(Drawing& drawing, Release release) {
    drawing.release = release;
    HeaderVariables header = makeDefaultHeader({2460000, 0});
    header.HANDSEED = drawing.handleSeed();
    const auto bytes = writeDrawing(drawing, header, {}, 0);
    EXPECT_TRUE(bytes.ok());
    return bytes ? *bytes : Bytes{};
}

void addRecord(Drawing& drawing, Body body, std::uint16_t type) {
    Object object;
    object.handle = drawing.newHandle();
    object.type = type;
    object.owner = {handle_code::softPointer, default_handle::namedObjects};
    object.body = std::move(body);
    drawing.add(std::move(object));
}

/// Ahead of all that is added lies a dictionary that is none.
Drawing damagedDrawing() {
    Drawing drawing = makeDefaultDrawing();
    addRecord(drawing, Carried{{{0xFF}, 8}, {}, {}}, object_type::dictionary);
    return drawing;
}

TEST(MemoryOfDamage, ZerosThatPackToNothing) {
    Drawing drawing = damagedDrawing();
    for (int i = 0; i < 36; ++i)
        addRecord(drawing, DataRecord{Bytes(1 << 20), 1, {}}, object_type::record);
    expectLittleMemory(fileOf(drawing, Release::r2018));
}

TEST(MemoryOfDamage, ManyObjectsOfAFewBytes) {
    Drawing drawing = damagedDrawing();
    for (int i = 0; i < 100'000; ++i)
        addRecord(drawing, Placeholder{}, object_type::placeholder);
    expectLittleMemory(fileOf(drawing, Release::r2018));
}

TEST(MemoryOfDamage, CountsOfAMillionInShortRecords) {
    Drawing drawing = damagedDrawing();
    BitWriter huge;
    for (int i = 0; i < 4; ++i)
        huge.bl(1'000'000);
    for (const std::uint16_t type : {object_type::dictionary, object_type::record, object_type::layerControl})
        for (int i = 0; i < 1000; ++i)
            addRecord(drawing, Carried{huge.bits(), {}, {}}, type);
    for (const Release release : {Release::r2000, Release::r2018})
        expectLittleMemory(fileOf(drawing, release));
}

TEST(MemoryOfDamage, SectionsThatDeclareMoreThanTheyHold) {
    for (const Release release : {Release::r2004, Release::r2018}) {
        Bytes file = tests::buildPagedFile(release, {{"AcDb:AcDbObjects", Bytes(999, 1)}});
        Bytes size;
        tests::append64(size, 999);
        const auto found = std::ranges::search(file, size);
        ASSERT_FALSE(found.empty());
        found[3] = 0x10; // 256 MiB
        expectLittleMemory(file);
    }
}

} // namespace
