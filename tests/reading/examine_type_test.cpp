#include "tessaro/reading/DrawingType.h"
#include "tests/reading/ExamineFixture.h"

#include <array>
#include <string_view>

using namespace tests;

namespace {

std::int32_t typeOf(std::string_view magic) {
    std::array<std::uint8_t, kMagicSize> bytes{};
    std::copy_n(magic.begin(), std::min(magic.size(), bytes.size()), bytes.begin());
    return DrawingType(bytes);
}

TEST(DrawingType, followsTheFirstSixBytes) {
    struct Row {
        std::string_view magic;
        std::int32_t type;
    };
    const Row rows[] = {
        {"MC0.00", 1},  {"AC1.20", 2},  {"AC1.40", 3},  {"AC1.50", 4},   {"AC2.10", 5},  {"AC2.20", 6},  {"AC2.21", 7},
        {"AC2.22", 8},  {"AC1001", 9},  {"AC1002", 9},  {"AC1003", 10},  {"AC1004", 11}, {"AC1005", 12}, {"AC1006", 12},
        {"AC1007", 13}, {"AC1008", 13}, {"AC1009", 13}, {"AC1010", 14},  {"AC1011", 14}, {"AC1012", 14}, {"AC1013", 15},
        {"AC1014", 15}, {"AC1015", 16}, {"AC1016", 16}, {"AC1017", 16},  {"AC1018", 17}, {"AC1019", 17}, {"AC1020", 17},
        {"AC1021", 18}, {"AC1022", 18}, {"AC1023", 18}, {"AC1024", 19},  {"AC1025", 19}, {"AC1026", 19}, {"AC1027", 20},
        {"AC1028", 0},  {"AC1029", 0},  {"AC1030", 0},  {"AC1031", 0},   {"AC1032", 0},  {"AC1033", 0},  {"ac1015", 0},
        {"AC1000", 0},  {"", 0},        {"AC", 0},      {"PK\3\4..", 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(typeOf(row.magic), row.type) << row.magic;
}

TEST(DrawingType, noFileIsOfTheLastType) {
    for (int version = 1000; version < 1100; ++version)
        EXPECT_NE(typeOf("AC" + std::to_string(version)), 21) << version;
    EXPECT_EQ(FileTypeNames[21], L"2018");
    EXPECT_EQ(FileTypeName(typeOf("AC1032")), L"Unknwn");
}

using ExamineType = ExamineFixture;

TEST_F(ExamineType, isReadFromTheDrawing) {
    examine(DrawingBuilder("AC1018"));
    EXPECT_EQ(block.fileType, 17);
}

TEST_F(ExamineType, ofAFileOfFewerThanSixBytesIsUnknown) {
    for (const char* bytes : {"", "A", "AC101"}) {
        block.fileType = 16;
        EXPECT_FALSE(examine(bytes));
        EXPECT_EQ(block.fileType, 0) << bytes;
        EXPECT_EQ(calls.size(), 1U) << "the helper is asked all the same";
        calls.clear();
    }
}

TEST_F(ExamineType, unknownSectionOfANewerFormatIsNotWalked) {
    folder.write("a.bmp", bitmapFile(plainBitmap(20, 20, 0x00ff00)));
    examine(DrawingBuilder("AC1032").entry(2, plainBitmap(20, 20, 0x0000ff)));
    EXPECT_EQ(block.fileType, 0);
    ASSERT_TRUE(hasPicture()) << "but the picture beside it is used";
    EXPECT_EQ(middle(), 0x00ff00U);
}

} // namespace
