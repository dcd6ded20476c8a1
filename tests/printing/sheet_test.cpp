// Whole sheets as PDF files, looked at by programs that nobody here wrote.
#include "tessaro/browser/painting/PrintCatalogue.h"
#include "tessaro/browser/printing/QtPrinterContext.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tests/printing/Pdf.h"
#include "tests/reading/DrawingBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QPrinter>

#include <algorithm>

using namespace tests;
using testing::HasSubstr;

namespace {

class Rows : public PrintWindow {
public:
    explicit Rows(Directory& shown) : directory(shown) {}
    int RowCount() const override { return static_cast<int>(directory.blocks.size()); }
    PrintRow Row(int row) const override { return {*std::next(directory.blocks.begin(), row), 0}; }
    const ImageList* Pictures() const override { return directory.largeImages.get(); }
    void OpenProgress(int) override {}
    void SetProgress(int) override {}
    void CloseProgress() override {}

private:
    Directory& directory;
};

class SheetTest : public testing::Test {
protected:
    SheetTest() {
        currentDirectory = &directory;
        versionText = L"3.9.10";
        LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
    }
    ~SheetTest() override {
        currentDirectory = nullptr;
        printType = 0;
        LocalPath.clear();
    }

    void addBlock(const std::wstring& name, int fileType) {
        auto* const block = new Block;
        block->name = name;
        block->description = L"words of " + name;
        block->fileType = fileType;
        block->imageIndex = 1;
        directory.blocks.push_back(block);
    }
    /// Prints on A4 without margins.
    std::filesystem::path print(int type, int dots) {
        printType = type;
        const auto file = folder.path() / (std::to_string(type) + '-' + std::to_string(dots) + ".pdf");
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(file.string()));
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageMargins(QMarginsF(0, 0, 0, 0));
        printer.setResolution(dots);
        QtPrinterContext dc(printer);
        Rows rows(directory);
        PrintCatalogue(dc, rows);
        return file;
    }

    TemporaryFolder folder;
    Directory directory;
};

TEST_F(SheetTest, namesDescriptionsAndFactsAreFoundInTheTextAndPicturesAtTheirPlaces) {
    if (!hasPdfPrograms())
        GTEST_SKIP() << "no programs that read a PDF";
    directory.path = platform::FromNarrow(folder.path().string());
    for (const wchar_t* name : {L"Armchair", L"Filing-cabinet", L"Tisch & Stühle"}) {
        addBlock(name, 16);
        const std::string drawing = DrawingBuilder("AC1015").entry(2, plainBitmap(256, 188, 0x2080ff));
        folder.write(platform::ToNarrow(name) + ".dwg", drawing);
    }
    for (const int type : {0, 1}) {
        for (const int dots : {300, 600}) {
            const auto file = print(type, dots);
            const std::string text = pdfText(file);
            EXPECT_THAT(text, HasSubstr("3.9.10"));
            EXPECT_THAT(text, HasSubstr(folder.path().string()));
            EXPECT_THAT(text, HasSubstr("Armchair"));
            EXPECT_THAT(text, HasSubstr("Filing"));
            EXPECT_THAT(text, HasSubstr("Tisch"));
            if (type == 0) {
                EXPECT_THAT(text, HasSubstr("words of Armchair"));
                EXPECT_THAT(text, HasSubstr("Created: "));
                EXPECT_THAT(text, HasSubstr("Modified: "));
                EXPECT_THAT(text, HasSubstr("Size: 0"));
            }
        }
    }
    // The first picture's middle, at a fourth of the device's pixels. The header's height depends on the font.
    const QImage page = pdfPage(folder.path() / "0-300.pdf", 1, 75);
    ASSERT_FALSE(page.isNull());
    const QColor colour(0xff, 0x80, 0x20);
    int top = 0;
    while (top < page.height() && page.pixelColor(65, top) != colour)
        ++top;
    EXPECT_GT(top, 20) << "below the header";
    EXPECT_LT(top, 60);
    EXPECT_EQ(page.pixelColor(65, top + 90), colour) << "376 pixels high";
    EXPECT_NE(page.pixelColor(65, top + 97), colour);
    EXPECT_EQ(page.pixelColor(3, top + 40), colour);
    EXPECT_EQ(page.pixelColor(126, top + 40), colour) << "512 pixels wide";
    EXPECT_EQ(page.pixelColor(132, top + 60), QColor(Qt::white));
}

TEST_F(SheetTest, realDrawingsArePrintedInBothLayouts) {
    const auto drawings = sharedFolder("drawings");
    if (drawings.empty() || !hasPdfPrograms())
        GTEST_SKIP() << "no shared drawings, or no programs that read a PDF";
    directory.path = platform::FromNarrow((drawings / "2013").string());
    std::vector<std::wstring> names;
    for (const auto& file : std::filesystem::directory_iterator(drawings / "2013"))
        if (file.path().extension() == ".dwg")
            names.push_back(platform::FromNarrow(file.path().stem().string()));
    std::sort(names.begin(), names.end());
    ASSERT_GT(names.size(), 10U);
    for (const std::wstring& name : names)
        addBlock(name, 20);
    for (const int type : {0, 1}) {
        const auto file = print(type, 600);
        const std::string text = pdfText(file);
        EXPECT_GE(pdfPageCount(file), 1);
        for (const wchar_t* name : {L"Arc", L"Ellipse", L"Polyline", L"Spline"})
            EXPECT_THAT(text, HasSubstr(platform::ToNarrow(name)));
    }
}

} // namespace
