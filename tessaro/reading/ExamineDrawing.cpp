#include "tessaro/reading/Examination.h"
#include "tessaro/reading/Examine.h"

#include "tessaro/catalogue/ShownImages.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/BlockRows.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/DrawingType.h"
#include "tessaro/reading/PreviewSection.h"
#include "tessaro/reading/SiblingFiles.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// What is read of the text in the image section, whatever length it declares.
constexpr std::size_t kLongestHeaderText = 65536;

/// One drawing while it is read.
class Reading {
public:
    Reading(const ExaminationTask& examined, Examination& result) : task(examined), found(result) {}
    void Run();

private:
    std::wstring DrawingPath() const;
    void ReadDrawing();
    void ReadImageSection();
    void TakeHeaderText(const std::vector<std::uint8_t>& bytes);
    void ReadBitmap();
    void DrawPictures();

    const ExaminationTask& task;
    Examination& found;
    std::wstring path;
    platform::File drawing;
    std::optional<PreviewBytes> preview;
    bool isPng = false;
};

std::wstring Reading::DrawingPath() const {
    const std::wstring stem = platform::Join(task.folder, task.block.name);
    // Both usual spellings ahead of a search, which lists the folder for each of its drawings.
    if (const auto spelled = FindSpelling({stem + L".dwg", stem + L".DWG"}))
        return *spelled;
    return platform::FindPath(stem + L".dwg").value_or(stem + L".dwg");
}

void Reading::Run() {
    path = DrawingPath();
    // Ahead of everything else: nothing of a drawing that its host has open is touched.
    if (FindLockFile(path))
        return;
    if (const auto sibling = FindDescriptionFile(path)) {
        if (const auto line = ReadFirstLine(*sibling))
            found.after.description = *line;
    }
    if (!drawing.Open(path, platform::File::modeRead))
        return;
    try {
        ReadDrawing();
    } catch (const platform::FileException&) {
        // What was read up to here counts; the result is the bridge's alone.
        drawing.Abort();
    }

    found.succeeded = LoadDrawing(path, found.after, task.showInsPts, preview ? &*preview : nullptr, found.points);
    if (task.marks)
        found.points = *task.marks;
    if (preview)
        DrawPictures();
    found.complete = true;
}

void Reading::ReadDrawing() {
    std::array<std::uint8_t, kMagicSize> magic{};
    drawing.Read(magic.data(), magic.size());
    found.after.fileType = DrawingType(magic);
    if (found.after.fileType >= kFirstTypeWithImages)
        ReadImageSection();
    else
        ReadBitmap();
}

void Reading::ReadImageSection() {
    const PreviewSection section = ReadPreviewSection(drawing);
    isPng = section.isPng;
    if (section.header)
        TakeHeaderText(ReadEntry(drawing, *section.header, kLongestHeaderText));
    preview = ReadSectionImage(drawing, section);
    drawing.Close();
}

void Reading::TakeHeaderText(const std::vector<std::uint8_t>& bytes) {
    const auto end = std::find(bytes.begin(), bytes.end(), std::uint8_t{0});
    if (end != bytes.begin()) {
        found.after.description = platform::FromNarrow(std::string(bytes.begin(), end));
        return;
    }
    // The drawing has no description but the catalogue has one, which may be stored in the drawing later.
    if (!found.after.description.empty())
        found.descriptionPending = true;
}

void Reading::ReadBitmap() {
    const auto bitmapPath = FindBitmapFile(path);
    if (!bitmapPath)
        return;
    drawing.Close();
    platform::File bitmap;
    if (bitmap.Open(*bitmapPath, platform::File::modeRead))
        preview = ReadBitmapFile(bitmap);
}

void Reading::DrawPictures() {
    Thumbnails drawn = DrawThumbnails(task.useLargeImages, found.after.fileType, *preview, isPng, found.points);
    found.pictures.emplace(drawn);
    if (task.keepDrawn)
        found.drawn = std::move(drawn);
}

void ShowInRow(const Directory& directory, const Block& block) {
    BrowserWindow* const window = theBlockDlg;
    if (window == nullptr || !IsShown(directory))
        return;
    const int row = window->FindBlockRow(&block);
    if (row < 0)
        return;
    constexpr const wchar_t* dateFormat = L"%x, %X";
    window->SetBlockImage(row, block.imageIndex);
    window->SetBlockCell(row, kDescriptionColumn, block.description);
    window->SetBlockCell(row, kTypeColumn, FileTypeName(block.fileType));
    window->SetBlockCell(row, kCreatedColumn, platform::FormatTime(block.created, dateFormat));
    window->SetBlockCell(row, kModifiedColumn, platform::FormatTime(block.modified, dateFormat));
}

/// Not over what another one changed meanwhile.
template <typename Value> void TakeOver(Value& value, const Value& before, const Value& after) {
    if (after != before && value == before)
        value = after;
}

} // namespace

ExaminationTask TaskFor(const Directory& directory, const Block& block) {
    return {directory.path, block, directory.showInsPts, directory.useLargeImages, std::nullopt, false};
}

void Examine(const ExaminationTask& task, Examination& found) {
    found = Examination{};
    found.before = task.block;
    found.after = task.block;
    Reading(task, found).Run();
}

void ApplyExamination(Directory& directory, Block& block, const Examination& found) {
    TakeOver(block.fileType, found.before.fileType, found.after.fileType);
    TakeOver(block.description, found.before.description, found.after.description);
    TakeOver(block.created, found.before.created, found.after.created);
    TakeOver(block.modified, found.before.modified, found.after.modified);
    if (found.descriptionPending) {
        directory.descriptionsPending = true;
        block.descriptionPending = true;
    }
    if (!found.complete)
        return;
    if (found.pictures) {
        const AttachedImagesScope attached(directory);
        StoreThumbnails(directory, block, *found.pictures);
    }
    ShowInRow(directory, block);
}

bool ExamineDrawing(Directory& directory, Block& block) {
    ExaminationTask task;
    platform::CallOnMainThread([&] { task = TaskFor(directory, block); });
    Examination found;
    const auto apply = [&] { ApplyExamination(directory, block, found); };
    try {
        Examine(task, found);
    } catch (...) {
        platform::CallOnMainThread(apply);
        throw;
    }
    platform::CallOnMainThread(apply);
    return found.succeeded;
}
