// Drawings, bitmaps and helpers that lie, and files that change under the reader's hands.

#include "tests/reading/ExamineFixture.h"

#include "tessaro/platform/Text.h"
#include "tessaro/reading/PreviewPng.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <thread>

using namespace tests;
using testing::IsEmpty;

namespace {

class BadInput : public ExamineFixture {
protected:
    /// A bitmap of code 2 whose header field at that place says something else.
    static std::string Lying(std::size_t at, std::uint32_t value, std::size_t size = 4) {
        std::string bitmap = plainBitmap(20, 16, 0x0000ff);
        for (std::size_t byte = 0; byte < size; ++byte)
            bitmap[at + byte] = static_cast<char>(value >> (8 * byte));
        return bitmap;
    }
    std::string Drawing(const std::string& bitmap) const { return DrawingBuilder("AC1015").entry(2, bitmap); }
};

constexpr std::uint32_t kNumbers[] = {0,          1,          2,      19,         21,         255,
                                      32767,      65535,      65536,  0x7ffffff8, 0x7fffffff, 0x80000000,
                                      0x80000001, 0xfffffff0, 0xffff, 0xfffffffe, 0xffffffff};

} // namespace

TEST_F(BadInput, ABitmapThatLiesAboutItsWidthOrHeightIsSurvived) {
    for (const std::size_t field : {4, 8})
        for (const std::uint32_t value : kNumbers) {
            examine(Drawing(Lying(field, value)));
            EXPECT_EQ(block.fileType, 16) << field << " " << value;
        }
}

TEST_F(BadInput, ABitmapThatLiesAboutItsBitsIsSurvived) {
    for (std::uint32_t bits = 0; bits <= 64; ++bits) {
        examine(Drawing(Lying(14, bits, 2)));
        EXPECT_EQ(block.fileType, 16) << bits;
    }
    examine(Drawing(Lying(14, 65535, 2)));
    EXPECT_EQ(block.fileType, 16);
}

TEST_F(BadInput, ABitmapThatLiesAboutItsColoursOrCompressionIsSurvived) {
    for (const std::uint32_t bits : {1U, 4U, 8U, 24U, 32U})
        for (const std::size_t field : {16, 20, 32, 36})
            for (const std::uint32_t value : kNumbers) {
                std::string bitmap = Lying(field, value);
                bitmap[14] = static_cast<char>(bits);
                examine(Drawing(bitmap));
                EXPECT_EQ(block.fileType, 16) << bits << " " << field << " " << value;
            }
}

TEST_F(BadInput, APaletteThatRunsPastTheEndIsSurvivedWhereverTheFileEnds) {
    std::string bitmap = Lying(14, 8, 2);
    bitmap.resize(40 + 256 * 4 + 20 * 16);
    for (std::size_t length = 0; length < 40 + 64; ++length) {
        examine(Drawing(cut(bitmap, length)));
        EXPECT_EQ(block.fileType, 16) << length;
    }
    EXPECT_TRUE(hasPicture()) << "a header alone is a preview";
}

TEST_F(BadInput, AHeaderThatLiesAboutItsOwnLengthIsSurvived) {
    for (const std::uint32_t value : kNumbers) {
        examine(Drawing(Lying(0, value)));
        EXPECT_EQ(block.fileType, 16) << value;
    }
}

TEST_F(BadInput, ABitmapFileThatLiesIsSurvivedToo) {
    for (const std::size_t field : {0, 4, 8, 14, 16, 20, 32})
        for (const std::uint32_t value : kNumbers) {
            folder.write("a.bmp", bitmapFile(Lying(field, value)));
            examine("AC1009 and nothing more");
            EXPECT_EQ(block.fileType, 13) << field << " " << value;
        }
}

TEST_F(BadInput, SectionsAndEntriesThatPointAnywhereAreSurvived) {
    constexpr std::uint32_t places[] = {0, 13, 48, 65536, 0x7fffffff, 0xffffffff};
    for (const std::uint32_t address : places)
        for (const std::uint32_t start : places)
            for (const std::uint32_t size : places) {
                DrawingBuilder drawing("AC1018");
                drawing.entryAt(1, start, size).entryAt(2, start, size).entryAt(6, size, start).address(address);
                examine(drawing);
                EXPECT_EQ(block.fileType, 17) << address << " " << start << " " << size;
            }
}

TEST_F(BadInput, APngOf65536PixelsWidthHasAPreviewOfTheLow16Bits) {
    const std::string png = plainPng(65536, 1, 0x00ff00);
    const auto decoded = DecodePng(std::span(reinterpret_cast<const std::uint8_t*>(png.data()), png.size()));
    ASSERT_TRUE(decoded);
    std::uint32_t width = 1;
    std::memcpy(&width, decoded->data() + 4, sizeof width);
    EXPECT_EQ(width, 0U);
    examine(DrawingBuilder("AC1027").entry(6, png));
    EXPECT_EQ(block.fileType, 20);
}

TEST_F(BadInput, ADrawingThatVanishesBetweenListAndReadingIsLeftAlone) {
    EXPECT_FALSE(examine()) << "there is none";
    EXPECT_EQ(block.fileType, 0);
    EXPECT_THAT(calls, IsEmpty()) << "the helper is not asked";
}

TEST_F(BadInput, ADrawingThatVanishesBeforeTheHelperOpensItIsTheHelpersFalse) {
    answer = [&](HelperCall&) {
        std::filesystem::remove(folder.path() / "a.dwg");
        return kHelperFalse;
    };
    EXPECT_FALSE(examine(Drawing(plainBitmap(20, 16, 0x0000ff))));
    EXPECT_EQ(block.fileType, 16);
    EXPECT_TRUE(hasPicture());
}

TEST_F(BadInput, FilesThatGrowShrinkChangeAndVanishWhileTheyAreReadAreSurvived) {
    const std::filesystem::path file = folder.path() / "a.dwg";
    const std::string whole = DrawingBuilder("AC1018").entry(1, "text").entry(6, plainPng(64, 64, 0x123456));
    const std::string other = DrawingBuilder("AC1015").entry(2, plainBitmap(100, 80, 0x654321));
    std::atomic<bool> ended{false};
    std::thread changer([&] {
        for (unsigned round = 0; !ended; ++round) {
            const std::string& bytes = round % 2 == 0 ? whole : other;
            switch (round % 5) {
            case 0:
                std::filesystem::remove(file);
                break;
            case 1: {
                std::error_code gone;
                std::filesystem::resize_file(file, round % bytes.size(), gone);
                break;
            }
            default:
                std::ofstream(file, std::ios::binary) << bytes;
            }
        }
    });
    for (int reading = 0; reading < 400; ++reading) {
        examine();
        EXPECT_TRUE(block.fileType == 0 || block.fileType == 16 || block.fileType == 17) << block.fileType;
    }
    ended = true;
    changer.join();
}

TEST_F(BadInput, AHelperThatTellsOfImpossibleDatesRaisesWithTheTypeAndPictureFound) {
    for (const HelperDate date : {HelperDate{0, 0, 0, 0, 0, 0}, HelperDate{2020, 13, 40, 25, 61, 61},
                                  HelperDate{-5, -5, -5, -5, -5, -5}, HelperDate{1, 1, 1, 0, 0, 0},
                                  HelperDate{2147483647, 2147483647, 2147483647, 2147483647, 2147483647, 2147483647},
                                  HelperDate{-2147483647 - 1, 1, 1, 0, 0, 0}}) {
        answer = [&](HelperCall& call) {
            *call.first = *call.second = date;
            return kHelperTrue;
        };
        EXPECT_THROW(examine(Drawing(plainBitmap(20, 16, 0x0000ff))), std::exception) << date.year;
        EXPECT_EQ(block.fileType, 16);
    }
}

TEST_F(BadInput, AHelperThatTellsOfImpossibleViewsDrawsNoPictureOutOfBounds) {
    const double infinite = std::numeric_limits<double>::infinity(), none = std::nan(""), huge = 1e308;
    for (const double lie : {0.0, -0.0, infinite, -infinite, none, huge, -huge, 1e-320})
        for (std::size_t place = 0; place < 18; ++place) {
            answer = [&](HelperCall& call) {
                call.numbers = {0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1, 10, 8, 0, 0, 0};
                call.numbers[place] = lie;
                return answerPlainly(call);
            };
            EXPECT_TRUE(examine(Drawing(plainBitmap(20, 16, 0x0000ff)))) << lie << " " << place;
            EXPECT_TRUE(hasPicture());
        }
    for (const double lie : {infinite, none, huge}) {
        answer = [&](HelperCall& call) {
            call.numbers.assign(18, lie);
            return answerPlainly(call);
        };
        EXPECT_TRUE(examine(Drawing(plainBitmap(20, 16, 0x0000ff)))) << lie;
    }
}

TEST_F(BadInput, AHelperMayTellAVeryLongDescription) {
    const std::wstring text(1 << 20, L'x');
    answer = [&](HelperCall& call) {
        answerPlainly(call);
        call.description = text.c_str();
        return kHelperTrue;
    };
    EXPECT_TRUE(examine(Drawing(plainBitmap(20, 16, 0x0000ff))));
    EXPECT_EQ(block.description.size(), text.size());
}
