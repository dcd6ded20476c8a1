// Both layouts on pages of several sizes and resolutions: every rectangle, pen, brush, flag and page break against
// numbers that are computed here step by step.
#include "tests/painting/PrintFixture.h"

#include "tessaro/platform/Text.h"

#include <gmock/gmock.h>

using namespace tests;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

struct PageSize {
    const char* name;
    int width, height, resolution, lineHeight;
};

void PrintTo(const PageSize& page, std::ostream* out) {
    *out << page.name << " at " << page.resolution;
}

/// The printable area of two papers with margins of 10 mm, and a label printer.
const PageSize kPages[] = {
    {"A4", 2244, 3272, 300, 54},     {"A4", 4488, 6543, 600, 107},     {"A4", 8976, 13087, 1200, 214},
    {"Letter", 2314, 3064, 300, 54}, {"Letter", 4628, 6128, 600, 107}, {"Letter", 9255, 12255, 1200, 214},
    {"A0", 9697, 13807, 300, 54},    {"label", 400, 600, 203, 37},
};

std::string box(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom) {
    return std::to_string(left) + ',' + std::to_string(top) + ',' + std::to_string(right) + ',' +
           std::to_string(bottom);
}

class PrintLayout : public PrintFixture, public testing::WithParamInterface<PageSize> {
protected:
    PrintLayout() {
        page(GetParam().width, GetParam().height, GetParam().resolution);
        dc.lineHeight = dc.versionHeight = height;
    }

    const std::int64_t width = GetParam().width, pageHeight = GetParam().height, height = GetParam().lineHeight;
    const std::int64_t band = 2 * (height + height / 5);
    std::vector<std::string> expected;
    std::int64_t y = 0;

    void expectHead() {
        const std::string style = " font 110 Arial colour 0000ff transparent";
        expected.push_back("rectangle " + box(1, 1, width, band) + " pen 000000/5 brush c0c0c0");
        expected.push_back("text \"3.9.10\" " + box(8, 8, width - 7, band - 7) + " flags 2081" + style);
        expected.push_back("text \"/parts\" " + box(8, 8, width - 7, band - 7) + " flags 2088" + style);
        y = 1 + band + height / 10;
    }
    void expectStart() {
        expected = {"start doc \"Tessaro Print\"", "start page"};
        expectHead();
    }
    void expectNextPage() {
        expected.insert(expected.end(), {"end page", "start page"});
        expectHead();
    }
    void expectEnd() { expected.insert(expected.end(), {"end page", "end doc"}); }
    void expectPicture(std::int64_t x, std::int64_t scale) {
        expected.push_back("picture " + box(x, y, scale * 130, scale * 96) + " from 1,1,131,97 of 131x97 mode 1");
    }
    void expectText(const std::string& words, const std::string& place, int flags) {
        expected.push_back("text \"" + words + "\" " + place + " flags " + std::to_string(flags) +
                           " font 110 Arial colour 000000 on ffffff");
    }
};

TEST_P(PrintLayout, rowsStandBelowEachOtherWithThreeColumnsAndASeparator) {
    addBlocks(30);
    for (const std::int64_t scale : {1, 3, 4, 10}) {
        printScale = static_cast<int>(scale);
        dc.lines.clear();
        print();

        const std::string facts =
            GetParam().resolution > 600
                ? "Created: 01/01/70, 00:00:00\nModified: 01/01/70, 00:00:00\nFileType: ??? Size: 0"
                : "Created: 01/01/70, 00:00:00\nModified: 01/01/70, 00:00:00\nSize: 0\nFileType: ???";
        const std::string type = platform::ToNarrow(FileTypeName(0));
        const std::string words = std::string(facts).replace(facts.find("???"), 3, type);
        expectStart();
        for (int row = 0; row < 30; ++row) {
            if (y + scale * 130 > pageHeight)
                expectNextPage();
            const std::int64_t bottom = y + scale * 96;
            expectPicture(1, scale);
            expectText('a' + std::to_string(row), box(1 + scale * 130 + 10, y, width / 3, bottom), 2064);
            expectText("", box(width / 3, y, width - width / 3, bottom), 2064);
            expectText(words, box(width - width / 3, y, width, bottom), 2066);
            expected.push_back("rectangle " + box(1, bottom + 1, width, bottom + 19) + " pen ffffff/0 brush c0c0c0");
            y = bottom + 20;
        }
        expectEnd();
        EXPECT_THAT(dc.lines, ElementsAreArray(expected)) << "scale " << scale;
    }
}

TEST_P(PrintLayout, theGridFillsThePagesWidthFromItsMiddle) {
    printType = 1;
    addBlocks(60);
    for (const std::int64_t scale : {1, 3, 4, 10}) {
        printScale = static_cast<int>(scale);
        dc.lines.clear();
        print();

        const std::int64_t cell = scale * 130 + 10, rowHeight = scale * 96 + 3 * height;
        const std::int64_t margin = (width % cell) / 2;
        std::int64_t x = margin;
        expectStart();
        for (int row = 0; row < 60; ++row) {
            if (x + cell > width) {
                y += rowHeight;
                x = margin;
            }
            if (y + rowHeight > pageHeight)
                expectNextPage();
            expectPicture(x, scale);
            expectText('a' + std::to_string(row), box(x, y + scale * 96 + 5, x + cell, y + rowHeight), 2065);
            x += cell;
        }
        expectEnd();
        EXPECT_THAT(dc.lines, ElementsAreArray(expected)) << "scale " << scale;
    }
}

INSTANTIATE_TEST_SUITE_P(pages, PrintLayout, testing::ValuesIn(kPages));

using PrintRows = PrintFixture;
using PrintGrid = PrintFixture;

TEST_F(PrintRows, theFirstRowsOfA4At300DotsPerInch) {
    page(2244, 3272, 300);
    dc.lineHeight = dc.versionHeight = 54;
    Block& block = addBlock(L"Chair");
    block.description = L"a chair";
    block.created = 86400;
    block.modified = 90061;
    block.fileType = 16;
    block.status.m_size = 4711;
    print();
    EXPECT_THAT(dc.lines,
                ElementsAre("start doc \"Tessaro Print\"", "start page",
                            "rectangle 1,1,2244,128 pen 000000/5 brush c0c0c0",
                            "text \"3.9.10\" 8,8,2237,121 flags 2081 font 110 Arial colour 0000ff transparent",
                            "text \"/parts\" 8,8,2237,121 flags 2088 font 110 Arial colour 0000ff transparent",
                            "picture 1,134,520,384 from 1,1,131,97 of 131x97 mode 1",
                            "text \"Chair\" 531,134,748,518 flags 2064 font 110 Arial colour 000000 on ffffff",
                            "text \"a chair\" 748,134,1496,518 flags 2064 font 110 Arial colour 000000 on ffffff",
                            "text \"Created: 01/02/70, 00:00:00\nModified: 01/02/70, 01:01:01\nSize: 4711\nFileType: "
                            "2000\" 1496,134,2244,518 flags 2066 font 110 Arial colour 000000 on ffffff",
                            "rectangle 1,519,2244,537 pen ffffff/0 brush c0c0c0", "end page", "end doc"));
}

TEST_F(PrintRows, aPrinterOf1200DotsGetsThreeLinesOneOf600Four) {
    Block& block = addBlock(L"a");
    block.fileType = 21;
    const auto facts = [&](int resolution) {
        dc.lines.clear();
        page(4000, 4000, resolution);
        print();
        return dc.linesOf("text \"Created").at(0);
    };
    EXPECT_THAT(facts(1200), testing::HasSubstr("\nFileType: 2018 Size: 0\""));
    EXPECT_THAT(facts(601), testing::HasSubstr("\nFileType: 2018 Size: 0\""));
    EXPECT_THAT(facts(600), testing::HasSubstr("\nSize: 0\nFileType: 2018\""));
    EXPECT_THAT(facts(300), testing::HasSubstr("\nSize: 0\nFileType: 2018\""));
}

TEST_F(PrintRows, ASizeOver32BitsPrintsItsLowHalf) {
    addBlock(L"a").status.m_size = (std::uint64_t{5} << 32) + 77;
    addBlock(L"b").status.m_size = 0xffffffff;
    print();
    EXPECT_THAT(dc.linesOf("text \"Created").at(0), testing::HasSubstr("Size: 77\n"));
    EXPECT_THAT(dc.linesOf("text \"Created").at(1), testing::HasSubstr("Size: -1\n"));
}

TEST_F(PrintRows, aRowIsMeasuredByThePicturesWidthNotItsHeight) {
    // The head ends at 26; a row takes 404 pixels, and is tested with 520.
    addBlocks(2);
    page(2400, 26 + 404 + 520, 300);
    print();
    EXPECT_EQ(dc.linesOf("start page").size(), 1U) << "just fits";
    dc.lines.clear();
    page(2400, 26 + 404 + 519, 300);
    print();
    EXPECT_EQ(dc.linesOf("start page").size(), 2U);
}

TEST_F(PrintRows, aPictureThatIsHigherThanThePageTakesANewPageForEachRow) {
    printScale = 1000;
    addBlocks(3);
    print();
    EXPECT_EQ(dc.linesOf("start page").size(), 4U) << "the first one stays with its head alone";
}

TEST_F(PrintRows, anUnknownFileTypeHasTheNameOfTheFirst) {
    addBlock(L"a").fileType = 99;
    print();
    EXPECT_THAT(dc.linesOf("text \"Created").at(0),
                testing::HasSubstr("FileType: " + platform::ToNarrow(FileTypeName(0))));
}

TEST_F(PrintGrid, ACellWiderThanThePageTakesARowOfItsOwnPastTheRightEdge) {
    printType = 1;
    page(400, 2000, 300);
    addBlocks(3);
    print();
    // Half of the page's width to the left; the first block moves to the next row.
    EXPECT_THAT(dc.linesOf("picture"), ElementsAre("picture 200,440,520,384 from 1,1,131,97 of 131x97 mode 1",
                                                   "picture 200,854,520,384 from 1,1,131,97 of 131x97 mode 1",
                                                   "picture 200,1268,520,384 from 1,1,131,97 of 131x97 mode 1"));
}

TEST_F(PrintGrid, aNewPageKeepsTheColumn) {
    printType = 1;
    page(540, 26 + 414, 300); // One cell across, one row.
    addBlocks(2);
    print();
    EXPECT_EQ(dc.linesOf("picture").size(), 2U);
    EXPECT_EQ(dc.linesOf("picture").at(1), "picture 5,26,520,384 from 1,1,131,97 of 131x97 mode 1");
    EXPECT_EQ(dc.linesOf("start page").size(), 2U);
}

TEST_F(PrintGrid, namesAreWrittenInThePresentColours) {
    printType = 1;
    addBlocks(1);
    dc.SetTextColour({1, 2, 3, 0});
    dc.SetBackColour({4, 5, 6, 0});
    print();
    EXPECT_THAT(dc.linesOf("text \"a0\"").at(0), testing::EndsWith("colour 010203 on 040506"));
}

TEST_F(PrintRows, textsAreWrittenBlackOnWhiteWhateverWasSetAndThatIsRestored) {
    addBlocks(1);
    dc.SetTextColour({1, 2, 3, 0});
    dc.SetBackColour({4, 5, 6, 0});
    print();
    EXPECT_THAT(dc.linesOf("text \"a0\"").at(0), testing::EndsWith("colour 000000 on ffffff"));
    EXPECT_EQ(dc.SetTextColour({}), (Rgb{1, 2, 3, 0}));
    EXPECT_EQ(dc.SetBackColour({}), (Rgb{4, 5, 6, 0}));
}

} // namespace
