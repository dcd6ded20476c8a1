#include "tessaro/reading/WriteDescription.h"

#include "editor/sdk/db.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/reading/PreviewSection.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

namespace {

/// Formats that are saved beside the drawing; all others are saved in place, in the newest format.
constexpr std::array<std::pair<std::int32_t, AcDb::AcDbDwgVersion>, 5> kSavedBeside{{
    {16, AcDb::kDHL_1015},
    {17, AcDb::kDHL_1800},
    {18, AcDb::kDHL_1021},
    {19, AcDb::kDHL_1024},
    {20, AcDb::kDHL_1027},
}};
constexpr std::int32_t kTypeR13 = 14, kTypeR14 = 15;

/// The embedded bitmap of a drawing, as its host may lose it.
std::optional<std::vector<std::uint8_t>> KeptImage(const std::wstring& drawing) {
    platform::File file(drawing, platform::File::modeRead);
    const auto entry = FindEntry(file, kBitmapCode);
    if (!entry)
        return std::nullopt;
    return ReadEntry(file, entry->place, kLargestPreview);
}

/// Reads the drawing, changes its comments and saves it; true when the save was good. `saved` tells whether it came to
/// a save at all.
bool SaveWithComments(const Block& block, const std::wstring& drawing, const std::wstring& temporary, bool& saved) {
    AcDbDatabase database(false, false);
    database.readDwgFile(drawing.c_str(), 1, false, nullptr);
    database.setRetainOriginalThumbnailBitmap(true);
    AcDbDatabaseSummaryInfo* made = nullptr;
    if (acdbGetSummaryInfo(&database, made) != 0)
        return false;
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    if (summary->setComments(block.description.c_str()) != 0)
        return false;
    if (acdbPutSummaryInfo(summary.get(), summary->database()) != 0)
        return false;
    saved = true;
    const auto format = std::ranges::find(kSavedBeside, block.fileType, &decltype(kSavedBeside)::value_type::first);
    if (format == kSavedBeside.end())
        return database.saveAs(drawing.c_str(), true, AcDb::kDHL_1032) == 0;
    return database.saveAs(temporary.c_str(), false, format->second) == 0;
}

/// The drawing is deleted and the temporary takes its name, whatever there is of either. Where both are there this is
/// one step, so that a process that dies loses nothing.
void Swap(const std::wstring& drawing, const std::wstring& temporary) {
    if (platform::ReplaceFile(temporary, drawing))
        return;
    platform::RemoveFile(drawing);
    platform::MoveFile(temporary, drawing);
}

/// Appends the picture and points the bitmap entry of the image section to it; where there is none, the entry of the
/// header data is given up for it.
void PutImageBack(const std::wstring& drawing, const std::vector<std::uint8_t>& image) {
    platform::File file(drawing, platform::File::modeReadWrite);
    const std::uint64_t end = file.SeekToEnd();
    file.Write(image.data(), image.size());
    const PreviewEntry place{static_cast<std::uint32_t>(end), static_cast<std::uint32_t>(image.size())};
    if (const auto bitmap = FindEntry(file, kBitmapCode))
        WriteEntry(file, bitmap->at, kBitmapCode, place);
    else if (const auto header = FindEntry(file, kHeaderCode))
        WriteEntry(file, header->at, kBitmapCode, place);
    file.Close();
}

} // namespace

bool WriteDescription(Block& block) {
    const Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return false;
    // The host takes paths as they are spelled.
    const std::wstring told = platform::Join(directory->path, block.name + L".dwg");
    const std::wstring drawing = platform::FindPath(told).value_or(told);
    const std::wstring temporary = platform::Join(platform::SplitPath(drawing).folder, block.name + L".dwg2");
    std::optional<std::vector<std::uint8_t>> image;
    if (block.fileType == kTypeR13 || block.fileType == kTypeR14)
        image = KeptImage(drawing);
    bool saved = false;
    const bool good = SaveWithComments(block, drawing, temporary, saved);
    if (!saved)
        return false;
    Swap(drawing, temporary);
    if (image)
        PutImageBack(drawing, *image);
    return good;
}

void SavePendingDescriptions() {
    Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    for (Block* block : directory->blocks)
        if (block->descriptionPending) {
            WriteDescription(*block);
            block->descriptionPending = false;
        }
    directory->descriptionsPending = false;
}
