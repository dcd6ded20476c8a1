#include "tessaro/browser/printing/QtPrinterContext.h"

#include "tests/printing/Pdf.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QPrinter>

#include <cerrno>
#include <cstring>

using namespace tests;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr int kDots = 300;
const DeviceFont kFont{110, L"Arial"};

class QtPrinterContextTest : public testing::Test {
protected:
    QtPrinterContextTest() {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(file.string()));
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageMargins(QMarginsF(0, 0, 0, 0));
        printer.setResolution(kDots);
    }

    void begin() {
        ASSERT_EQ(dc.StartDoc(L"Tessaro Print"), 1) << std::strerror(static_cast<int>(dc.LastError()));
        dc.StartPage();
        dc.SelectFont(kFont);
    }
    /// Ends the document; the colour of a device's pixel on its first page, as an independent program draws it.
    QColor pixel(int x, int y) {
        if (page.isNull()) {
            dc.EndPage();
            dc.EndDoc();
            page = pdfPage(file, 1, kDots);
        }
        return page.isNull() ? QColor() : page.pixelColor(x, y);
    }

    TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "sheet.pdf";
    QPrinter printer{QPrinter::HighResolution};
    QtPrinterContext dc{printer};
    QImage page;
};

TEST_F(QtPrinterContextTest, aPageIsThePrintableAreaInPixelsOfTheResolution) {
    EXPECT_EQ(dc.Resolution(), 300);
    EXPECT_NEAR(dc.PageWidth(), 2480, 1);
    EXPECT_NEAR(dc.PageHeight(), 3508, 1);
    printer.setResolution(1200);
    printer.setPageMargins(QMarginsF(10, 20, 10, 20), QPageLayout::Millimeter);
    EXPECT_EQ(dc.Resolution(), 1200);
    EXPECT_NEAR(dc.PageWidth(), 190 / 25.4 * 1200, 17) << "margins are whole points";
    EXPECT_NEAR(dc.PageHeight(), 257 / 25.4 * 1200, 17);
}

TEST_F(QtPrinterContextTest, elevenPointsAreSoManyPixelsOfTheResolution) {
    EXPECT_EQ(FontPixels(110, 300), 45);
    EXPECT_EQ(FontPixels(110, 600), 91);
    EXPECT_EQ(FontPixels(110, 1200), 183);
    begin();
    const int small = dc.LineHeight();
    EXPECT_GE(small, 45);
    EXPECT_LE(small, 60);
    EXPECT_EQ(dc.Measure(L"words").height, small);
    EXPECT_GT(dc.Measure(L"words words").width, dc.Measure(L"words").width);
}

TEST_F(QtPrinterContextTest, eachSelectionGivesTheOneBefore) {
    begin();
    EXPECT_EQ(dc.SelectFont({}), kFont);
    EXPECT_EQ(dc.SelectFont(kFont), DeviceFont());
    EXPECT_EQ(dc.SelectPen({{1, 2, 3, 0}, 5}), (Pen{{0, 0, 0, 0}, 1}));
    EXPECT_EQ(dc.SelectPen({}), (Pen{{1, 2, 3, 0}, 5}));
    EXPECT_EQ(dc.SelectBrush({4, 5, 6, 0}), (Rgb{255, 255, 255, 0}));
    EXPECT_EQ(dc.SelectBrush({}), (Rgb{4, 5, 6, 0}));
    EXPECT_EQ(dc.SetTextColour({7, 8, 9, 0}), Rgb());
    EXPECT_EQ(dc.SetTextColour({}), (Rgb{7, 8, 9, 0}));
    EXPECT_EQ(dc.SetBackColour({1, 1, 1, 0}), (Rgb{255, 255, 255, 0}));
    EXPECT_FALSE(dc.SetTransparent(true));
    EXPECT_TRUE(dc.SetTransparent(false));
}

TEST_F(QtPrinterContextTest, aDocumentHasAsManyPagesAsWereStarted) {
    begin();
    dc.EndPage();
    for (int i = 0; i < 2; ++i) {
        dc.StartPage();
        dc.EndPage();
    }
    dc.EndDoc();
    EXPECT_THAT(readFile(file), HasSubstr("%PDF"));
    if (!hasPdfPrograms())
        GTEST_SKIP() << "no programs that read a PDF";
    EXPECT_EQ(pdfPageCount(file), 3);
}

TEST_F(QtPrinterContextTest, aFileThatCantBeWrittenFailsWithTheSystemsNumber) {
    printer.setOutputFileName(QString::fromStdString((folder.path() / "none" / "sheet.pdf").string()));
    EXPECT_EQ(dc.StartDoc(L"Tessaro Print"), -1);
    EXPECT_EQ(dc.LastError(), ENOENT);
}

TEST_F(QtPrinterContextTest, aReadOnlyFileFailsAlsoForRoot) {
    folder.write("sheet.pdf", "old");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    EXPECT_EQ(dc.StartDoc(L"Tessaro Print"), -1);
    EXPECT_NE(dc.LastError(), 0);
    EXPECT_EQ(readFile(file), "old");
}

TEST_F(QtPrinterContextTest, aFolderInThePlaceOfTheFileFails) {
    std::filesystem::create_directory(file);
    EXPECT_EQ(dc.StartDoc(L"Tessaro Print"), -1);
    EXPECT_NE(dc.LastError(), 0);
}

TEST_F(QtPrinterContextTest, rectanglesFillThePixelsOfTheirOutlineAndNoMore) {
    if (!hasPdfPrograms())
        GTEST_SKIP() << "no programs that read a PDF";
    begin();
    dc.SelectPen({{255, 0, 0, 0}, 0});
    dc.SelectBrush({0, 0, 255, 0});
    dc.Rectangle({100, 200, 300, 400});
    EXPECT_EQ(pixel(200, 300), QColor(0, 0, 255));
    EXPECT_EQ(pixel(97, 300), QColor(Qt::white));
    EXPECT_EQ(pixel(303, 300), QColor(Qt::white));
    EXPECT_EQ(pixel(200, 403), QColor(Qt::white));
    EXPECT_GT(pixel(100, 300).red(), 100) << "the pen";
    EXPECT_GT(pixel(299, 300).red(), 100);
}

TEST_F(QtPrinterContextTest, aWidePenStandsOnBothSidesOfTheOutline) {
    if (!hasPdfPrograms())
        GTEST_SKIP() << "no programs that read a PDF";
    begin();
    dc.SelectPen({{0, 0, 0, 0}, 5});
    dc.Rectangle({100, 200, 300, 400});
    for (const int x : {99, 100, 101, 298, 299, 300})
        EXPECT_LT(pixel(x, 300).lightness(), 30) << x;
    EXPECT_EQ(pixel(95, 300), QColor(Qt::white));
    EXPECT_EQ(pixel(105, 300), QColor(Qt::white));
}

TEST_F(QtPrinterContextTest, aPictureGrowsWithoutSmoothingAndWhatLiesOutsideOfItIsLeftOut) {
    if (!hasPdfPrograms())
        GTEST_SKIP() << "no programs that read a PDF";
    Picture picture(3, 2);
    picture.pixels = {255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 128, 128, 128, 255, 255, 0};
    begin();
    // Two of the three columns that are asked for are there.
    dc.StretchPicture({100, 100, 300, 200}, picture, {1, 0, 3, 2});
    EXPECT_EQ(pixel(110, 110), QColor(0, 255, 0));
    EXPECT_EQ(pixel(195, 195), QColor(0, 255, 0));
    EXPECT_EQ(pixel(205, 110), QColor(0, 0, 255));
    EXPECT_EQ(pixel(150, 250), QColor(128, 128, 128));
    EXPECT_EQ(pixel(350, 150), QColor(Qt::white));
}

TEST_F(QtPrinterContextTest, textIsCutAtItsRectangleAndStaysText) {
    if (!hasPdfPrograms())
        GTEST_SKIP() << "no programs that read a PDF";
    begin();
    dc.DrawText(L"first & second words", {100, 100, 2000, 200}, kTextNoPrefix | kTextWordBreak);
    dc.DrawText(std::wstring(10000, L'W'), {100, 300, 400, 340}, kTextNoPrefix | kTextWordBreak);
    dc.DrawText(L"nothing", {400, 500, 300, 600}, kTextNoPrefix);
    EXPECT_EQ(pixel(450, 320), QColor(Qt::white)) << "right of the rectangle";
    EXPECT_EQ(pixel(200, 360), QColor(Qt::white)) << "below it";
    EXPECT_THAT(pdfText(file), HasSubstr("first & second words"));
    EXPECT_THAT(pdfText(file), Not(HasSubstr("nothing")));
}

TEST_F(QtPrinterContextTest, aPreviewThatCantBeDrawnIsNone) {
    begin();
    const auto size = [&](std::int32_t width, std::int32_t height, std::uint16_t bits) {
        PreviewBytes bytes(64, 0);
        bytes[0] = 40;
        std::memcpy(&bytes[4], &width, 4);
        std::memcpy(&bytes[8], &height, 4);
        std::memcpy(&bytes[14], &bits, 2);
        return bytes;
    };
    dc.StretchDib({0, 0, 100, 100}, size(10, 10, 7), 40, {0, 0, 10, 10});
    dc.StretchDib({0, 0, 100, 100}, size(-10, 10, 24), 40, {0, 0, 10, 10});
    dc.StretchDib({0, 0, 100, 100}, size(10, 10, 24), 40, {0, 0, 0, 0});
    dc.StretchDib({0, 0, -100, 100}, size(10, 10, 24), 40, {0, 0, 10, 10});
    // As large as a header can say; its bytes are not there.
    dc.StretchDib({200, 0, 100, 100}, size(2147483647, 2147483647, 24), 40, {0, 0, 2147483647, 2147483647});
    if (!hasPdfPrograms())
        GTEST_SKIP() << "no programs that read a PDF";
    EXPECT_EQ(pixel(50, 50), QColor(Qt::white));
    EXPECT_EQ(pixel(250, 50), QColor(Qt::black)) << "bytes past the end count as zero";
}

} // namespace
