#include "tessaro/browser/painting/PrintCatalogue.h"

#include "tessaro/browser/painting/PaintPreview.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

namespace {

constexpr Rgb kBlack{0, 0, 0, 0}, kWhite{255, 255, 255, 0}, kGrey{0xc0, 0xc0, 0xc0, 0}, kBlue{0, 0, 255, 0};
const DeviceFont kFont{110, L"Arial"};

constexpr unsigned kCellText = kTextWordBreak | kTextNoPrefix;
constexpr unsigned kRightCellText = kCellText | kTextRight;
constexpr unsigned kNameText = kCellText | kTextCentre;
constexpr unsigned kVersionText = kTextCentre | kTextSingleLine | kTextNoPrefix;
constexpr unsigned kPathText = kTextBottom | kTextSingleLine | kTextNoPrefix;

constexpr int kLastWideResolution = 600; ///< above it three lines hold what otherwise takes four
constexpr int kProgressLimit = 0xffff;   ///< the progress window's range has 16 bits

/// The list's picture in a bitmap of its own, one pixel from its corner; what is printed of it goes one past its end.
constexpr int kFrame = 1;
constexpr PixelBox kFromList{1, 1, kLargeWidth + kFrame, kLargeHeight + kFrame};

class Progress {
public:
    Progress(PrintWindow& shown, int range) : window(shown) { window.OpenProgress(range); }
    ~Progress() { window.CloseProgress(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    PrintWindow& window;
};

/// The sheet of one directory while it is printed.
class Sheet {
public:
    Sheet(PrinterContext& device, PrintWindow& shown)
        : dc(device), window(shown), directory(*currentDirectory), pageWidth(dc.PageWidth()),
          pageHeight(dc.PageHeight()) {}
    void PrintRows();
    void PrintGrid();

private:
    void BeginSheet();
    void NextPage();
    void PrintPicture(const PrintRow& row);
    void PrintListPicture(int slot);
    void PrintCells(const Block& block);
    void PrintSeparator();
    std::wstring Facts(const Block& block) const;

    PrinterContext& dc;
    PrintWindow& window;
    const Directory& directory;
    const std::int64_t scale = printScale;
    const std::int64_t pictureWidth = scale * kLargeWidth;
    const std::int64_t pictureHeight = scale * kLargeHeight;
    const std::int64_t pageWidth, pageHeight;
    std::int64_t x = 1, y = 1;
};

void Sheet::BeginSheet() {
    x = y = 1;
    PrintHeader(dc, directory.path, x, y);
}

void Sheet::NextPage() {
    dc.EndPage();
    dc.StartPage();
    dc.SelectFont(kFont);
    y = 1;
    PrintHeader(dc, directory.path, x, y);
}

void Sheet::PrintPicture(const PrintRow& row) {
    if (row.block->imageIndex != 0 && PaintPreview(directory, *row.block, dc, x, y, scale / 2, false))
        return;
    PrintListPicture(row.slot);
}

void Sheet::PrintListPicture(int slot) {
    Picture framed(kLargeWidth + kFrame, kLargeHeight + kFrame);
    std::fill(framed.pixels.begin(), framed.pixels.end(), std::uint8_t{255});
    if (const ImageList* const pictures = window.Pictures()) {
        const Picture drawn = pictures->Draw(slot);
        StretchPicture(framed, {kFrame, kFrame, drawn.width, drawn.height}, drawn, {0, 0, drawn.width, drawn.height},
                       StretchMode::BlackOnWhite);
    }
    dc.StretchPicture({x, y, pictureWidth, pictureHeight}, framed, kFromList);
}

std::wstring Sheet::Facts(const Block& block) const {
    const std::wstring created = platform::FormatTime(block.created, L"%x, %X");
    const std::wstring modified = platform::FormatTime(block.modified, L"%x, %X");
    const std::wstring& type = FileTypeName(block.fileType);
    const auto size = static_cast<std::int32_t>(block.status.m_size); // Its low 32 bits.
    const bool compact = dc.Resolution() > kLastWideResolution;
    if (compact)
        return platform::Format(L"Created: %s\nModified: %s\nFileType: %s Size: %d", created.c_str(), modified.c_str(),
                                type.c_str(), size);
    return platform::Format(L"Created: %s\nModified: %s\nSize: %d\nFileType: %s", created.c_str(), modified.c_str(),
                            size, type.c_str());
}

void Sheet::PrintCells(const Block& block) {
    const Rgb oldBack = dc.SetBackColour(kWhite);
    const Rgb oldText = dc.SetTextColour(kBlack);
    const std::int64_t third = pageWidth / 3, bottom = y + pictureHeight;
    dc.DrawText(block.name, {x + pictureWidth + 10, y, third, bottom}, kCellText);
    dc.DrawText(block.description, {third, y, pageWidth - third, bottom}, kCellText);
    dc.DrawText(Facts(block), {pageWidth - third, y, pageWidth, bottom}, kRightCellText);
    dc.SetTextColour(oldText);
    dc.SetBackColour(oldBack);
}

void Sheet::PrintSeparator() {
    const Pen oldPen = dc.SelectPen({kWhite, 0});
    const Rgb oldBrush = dc.SelectBrush(kGrey);
    dc.Rectangle({1, y + pictureHeight + 1, pageWidth, y + pictureHeight + 19});
    dc.SelectBrush(oldBrush);
    dc.SelectPen(oldPen);
}

void Sheet::PrintRows() {
    BeginSheet();
    for (int row = 0; row < window.RowCount(); ++row) {
        window.SetProgress(row);
        const PrintRow item = window.Row(row);
        if (item.block == nullptr)
            continue;
        // A row is measured by the width of its picture, not by its height.
        if (y + pictureWidth > pageHeight)
            NextPage();
        PrintPicture(item);
        PrintCells(*item.block);
        PrintSeparator();
        y += pictureHeight + 20;
    }
}

void Sheet::PrintGrid() {
    const std::int64_t cellWidth = pictureWidth + 10;
    BeginSheet();
    const std::int64_t margin = (pageWidth % cellWidth) / 2;
    const std::int64_t lineHeight = dc.LineHeight();
    const std::int64_t rowHeight = pictureHeight + 3 * lineHeight;
    x = margin;
    for (int row = 0; row < window.RowCount(); ++row) {
        window.SetProgress(row);
        const PrintRow item = window.Row(row);
        if (item.block == nullptr)
            continue;
        if (x + cellWidth > pageWidth) {
            y += rowHeight;
            x = margin;
        }
        if (y + rowHeight > pageHeight)
            NextPage();
        PrintPicture(item);
        dc.DrawText(item.block->name, {x, y + pictureHeight + 5, x + cellWidth, y + rowHeight}, kNameText);
        x += cellWidth;
    }
}

} // namespace

void PrintCatalogue(PrinterContext& dc, PrintWindow& window) {
    const Progress progress(window, static_cast<int>(currentDirectory.load()->blocks.size() & kProgressLimit));
    if (dc.StartDoc(L"Tessaro Print") == -1) {
        platform::MessageBox(platform::Format(L"StartDoc failed: %ld", dc.LastError()));
        return;
    }
    dc.StartPage();
    const DeviceFont oldFont = dc.SelectFont(kFont);
    if (printType == 0)
        Sheet(dc, window).PrintRows();
    else if (printType == 1)
        Sheet(dc, window).PrintGrid();
    dc.SelectFont(oldFont);
    dc.EndPage();
    dc.EndDoc();
}

void PrintHeader(PrinterContext& dc, const std::wstring& text, std::int64_t&, std::int64_t& y) {
    const std::wstring version = versionText;
    const std::int64_t versionHeight = dc.Measure(version).height;
    const std::int64_t textHeight = dc.Measure(text).height;
    const std::int64_t bandHeight = versionHeight + versionHeight / 5 + textHeight + textHeight / 5;

    const Pen oldPen = dc.SelectPen({kBlack, 5});
    const Rgb oldBrush = dc.SelectBrush(kGrey);
    dc.Rectangle({1, 1, dc.PageWidth(), bandHeight});
    dc.SelectBrush(oldBrush);
    dc.SelectPen(oldPen);

    const bool oldTransparent = dc.SetTransparent(true);
    const Rgb oldText = dc.SetTextColour(kBlue);
    const DeviceRect inner{1 + 7, 1 + 7, dc.PageWidth() - 7, bandHeight - 7};
    dc.DrawText(version, inner, kVersionText);
    dc.DrawText(text, inner, kPathText);
    dc.SetTextColour(oldText);
    dc.SetTransparent(oldTransparent);
    y += bandHeight + versionHeight / 10;
}
