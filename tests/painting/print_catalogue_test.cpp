// The course of a print, its head and its failures; the two layouts have their own files.
#include "tessaro/platform/Text.h"
#include "tests/painting/PrintFixture.h"
#include "tests/reading/DrawingBuilder.h"

#include <gmock/gmock.h>

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using PrintCourse = PrintFixture;

TEST_F(PrintCourse, anEmptyListIsAPageWithTheHeadAloneInBothLayouts) {
    for (const int type : {0, 1}) {
        printType = type;
        dc.lines.clear();
        print();
        // 10 + 2 + 10 + 2 pixels of band; the texts stand 7 pixels inside of it.
        EXPECT_THAT(dc.lines,
                    ElementsAre("start doc \"Tessaro Print\"", "start page",
                                "rectangle 1,1,2400,24 pen 000000/5 brush c0c0c0",
                                "text \"3.9.10\" 8,8,2393,17 flags 2081 font 110 Arial colour 0000ff transparent",
                                "text \"/parts\" 8,8,2393,17 flags 2088 font 110 Arial colour 0000ff transparent",
                                "end page", "end doc"));
    }
}

TEST_F(PrintCourse, anotherTypeIsOneBlankPage) {
    addBlocks(3);
    for (const int type : {2, -1, 4711}) {
        printType = type;
        dc.lines.clear();
        print();
        EXPECT_THAT(dc.lines, ElementsAre("start doc \"Tessaro Print\"", "start page", "end page", "end doc"));
    }
    EXPECT_THAT(list.progress, testing::Not(testing::Contains("at 0")));
}

TEST_F(PrintCourse, theHeadsBandIsTheTwoTextsWithAFifthEachInWholeNumbers) {
    dc.versionHeight = 57;
    dc.lineHeight = 43;
    std::int64_t x = 1, y = 100;
    PrintHeader(dc, L"words", x, y);
    // 57 + 11 + 43 + 8; y moves by the band and a tenth of the version's height.
    EXPECT_EQ(dc.lines.at(0), "rectangle 1,1,2400,119 pen 000000/5 brush c0c0c0");
    EXPECT_EQ(y, 100 + 119 + 5);
    EXPECT_EQ(x, 1);
    EXPECT_TRUE(dc.isAsFresh());
}

TEST_F(PrintCourse, aFailedStartTellsTheSystemsNumberAndBeginsNoPage) {
    addBlocks(1);
    dc.failsToStart = true;
    print();
    EXPECT_THAT(messages.texts, ElementsAre(L"StartDoc failed: 13"));
    EXPECT_THAT(messages.captions, ElementsAre(L"Tessaro"));
    EXPECT_THAT(dc.lines, ElementsAre("start doc \"Tessaro Print\""));
    EXPECT_THAT(list.progress, ElementsAre("open 1", "close")) << "the progress window goes with it";
}

TEST_F(PrintCourse, progressRunsFromTheRowsNumberToTheDirectorysCount) {
    addBlocks(3);
    list.rows.pop_back(); // The list shows fewer rows than the directory has blocks.
    for (const int type : {0, 1}) {
        printType = type;
        list.progress.clear();
        print();
        EXPECT_THAT(list.progress, ElementsAre("open 3", "at 0", "at 1", "close"));
    }
}

TEST_F(PrintCourse, theProgressRangeHasSixteenBits) {
    printType = 2;
    addBlocks(65536 + 7);
    print();
    EXPECT_EQ(list.progress.at(0), "open 7");
}

TEST_F(PrintCourse, theRowCountIsAskedBeforeEachRow) {
    addBlocks(2);
    list.onRow = [&](int row) {
        if (row == 0)
            list.rows.pop_back();
    };
    print();
    EXPECT_EQ(dc.linesOf("text \"a0\"").size(), 1U);
    EXPECT_THAT(dc.linesOf("text \"a1\""), IsEmpty());
}

TEST_F(PrintCourse, aRowWithoutABlockIsPassedOver) {
    addBlocks(1);
    list.rows.insert(list.rows.begin(), PrintRow{});
    for (const int type : {0, 1}) {
        printType = type;
        dc.lines.clear();
        print();
        EXPECT_EQ(dc.linesOf("picture").size(), 1U);
    }
}

TEST_F(PrintCourse, everythingSelectedIsRestored) {
    addBlocks(40);
    for (const int type : {0, 1}) {
        printType = type;
        print();
        EXPECT_TRUE(dc.isAsFresh());
    }
}

TEST_F(PrintCourse, aPictureThatCantBeReadIsTheListsInABitmapOfItsOwn) {
    Picture red(130, 96);
    for (std::size_t i = 0; i < red.pixels.size(); i += 3)
        red.pixels[i] = 255;
    directory.largeImages = std::make_shared<ImageList>(130, 96, 1, 25);
    directory.largeImages->Add(PlaceholderPicture(130, 96));
    Block& block = addBlock(L"gone");
    block.imageIndex = directory.largeImages->Add(red);
    list.pictures = directory.largeImages.get();
    list.rows.at(0).slot = block.imageIndex;
    print();
    EXPECT_THAT(dc.linesOf("picture"), ElementsAre("picture 1,26,520,384 from 1,1,131,97 of 131x97 mode 1"));
    const Picture& printed = dc.pictures.at(0);
    EXPECT_EQ(printed.pixels.at(0), 255) << "outside of the picture the bitmap is white";
    EXPECT_EQ(printed.pixels.at(1), 255);
    EXPECT_EQ(printed.pixels.at((131 + 1) * 3), 255) << "the picture stands at (1, 1)";
    EXPECT_EQ(printed.pixels.at((131 + 1) * 3 + 1), 0);
}

TEST_F(PrintCourse, theSlotIsTheRowsNotTheBlocks) {
    addBlock(L"a");
    list.rows.at(0).slot = 99; // A slot that is not there leaves the bitmap empty.
    print();
    const auto& pixels = dc.pictures.at(0).pixels;
    EXPECT_TRUE(std::all_of(pixels.begin(), pixels.end(), [](std::uint8_t part) { return part == 255; }));
    list.pictures = nullptr;
    EXPECT_NO_THROW(print());
}

TEST_F(PrintCourse, aDrawingThatVanishesWhilePrintingGivesTheListsPictureFromThereOn) {
    directory.path = platform::FromNarrow(folder.path().string());
    const std::string drawing = DrawingBuilder("AC1015").entry(2, plainBitmap(100, 100, 0x00ff00));
    for (const wchar_t* name : {L"a", L"b"}) {
        Block& block = addBlock(name);
        block.imageIndex = 1;
        block.fileType = 16;
        folder.write(platform::ToNarrow(block.name) + ".dwg", drawing);
    }
    list.onRow = [&](int row) {
        if (row == 1)
            std::filesystem::remove(folder.path() / "b.dwg");
    };
    print();
    EXPECT_EQ(dc.linesOf("dib").size(), 1U);
    EXPECT_EQ(dc.linesOf("picture").size(), 1U);
    EXPECT_EQ(dc.linesOf("end doc").size(), 1U);
}

TEST_F(PrintCourse, previewsArePrintedAtHalfTheScaleOnTheDevicesBrush) {
    directory.path = platform::FromNarrow(folder.path().string());
    folder.write("a.dwg", DrawingBuilder("AC1015").entry(2, plainBitmap(256, 188, 0x00ff00)).bytes());
    Block& block = addBlock(L"a");
    block.imageIndex = 1;
    block.fileType = 16;
    // 4 / 2: a frame of 515 by 379 pixels inside of the 520 by 384 of the layout.
    print();
    EXPECT_EQ(dc.lines.at(5), "rectangle 1,26,516,405 pen 000000/1 brush ffffff");
    EXPECT_EQ(dc.lines.at(6), "dib 2,27,512,376 from 0,0,256,188 at 1064 mode 1");
    EXPECT_THAT(dc.linesOf("picture"), IsEmpty());
}

TEST_F(PrintCourse, atScaleOneAPreviewHasNoSizeAndAPlaceholderHas) {
    printScale = 1;
    directory.path = platform::FromNarrow(folder.path().string());
    folder.write("a.dwg", DrawingBuilder("AC1015").entry(2, plainBitmap(256, 188, 0x00ff00)).bytes());
    Block& block = addBlock(L"a");
    block.imageIndex = 1;
    block.fileType = 16;
    addBlock(L"b");
    print();
    EXPECT_EQ(dc.lines.at(5), "rectangle 1,26,4,29 pen 000000/1 brush ffffff");
    EXPECT_EQ(dc.lines.at(6), "dib 2,27,0,0 from 0,0,256,188 at 1064 mode 1");
    EXPECT_THAT(dc.linesOf("picture"), ElementsAre("picture 1,142,130,96 from 1,1,131,97 of 131x97 mode 1"));
}

TEST_F(PrintCourse, anyScaleEndsInADocument) {
    addBlocks(5);
    for (const int scale : {0, 1, -1, -4, 1000, 2147483647, -2147483647 - 1}) {
        for (const int type : {0, 1}) {
            printScale = scale;
            printType = type;
            dc.lines.clear();
            print();
            EXPECT_EQ(dc.lines.back(), "end doc") << scale;
            EXPECT_EQ(dc.linesOf("picture").size(), 5U) << scale;
            EXPECT_EQ(dc.linesOf("start page").size(), dc.linesOf("end page").size());
        }
    }
}

TEST_F(PrintCourse, namesAndDescriptionsOf10000CharactersAreHandedOverWhole) {
    Block& block = addBlock(std::wstring(10000, L'n'));
    block.description = std::wstring(10000, L'd');
    for (const int type : {0, 1}) {
        printType = type;
        dc.lines.clear();
        print();
        ASSERT_EQ(dc.linesOf("text \"n").size(), 1U);
        EXPECT_GT(dc.linesOf("text \"n").at(0).size(), 10000U);
    }
    printType = 0;
    dc.lines.clear();
    print();
    EXPECT_GT(dc.linesOf("text \"d").at(0).size(), 10000U);
}

TEST_F(PrintCourse, aMissingHelperIsRaisedAndTheProgressWindowGoes) {
    directory.path = platform::FromNarrow(folder.path().string());
    folder.write("a.dwg", DrawingBuilder("AC1015").entry(2, plainBitmap(256, 188, 0x00ff00)).bytes());
    Block& block = addBlock(L"a");
    block.imageIndex = 1;
    block.fileType = 16;
    LocalPath = directory.path;
    ForgetServices();
    EXPECT_THROW(print(), std::runtime_error);
    EXPECT_EQ(list.progress.back(), "close");
}

} // namespace
