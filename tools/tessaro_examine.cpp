// Examines one drawing as the catalogue does and prints what it found as one JSON object.
//
//   tessaro-examine FILE [--background HEX] [--mark X,Y]... [--no-marks] [--pictures DIR] [--paint DIR]
//
// The background is the host's colour word, red in the low byte. Marks replace the insertion point that the helper
// gives; they count in pixels of the preview, from its bottom left corner. Dates are seconds since 1970-01-01 UTC. With
// --pictures the pixels of both pictures, as drawn and as the lists keep them, go to DIR as large.drawn, large.stored,
// small.drawn and small.stored: red, green, blue, top row first. With --paint the preview goes to DIR likewise: as on
// the screen at its own size (screen, 260 by 190 on black) and as printed at twice its size (print, 520 by 384 on
// white). The helper is taken from the program's own folder. The exit status is 1 where the drawing can't be examined.

#include "tessaro/browser/painting/PaintPreview.h"
#include "tessaro/browser/preview/PictureContext.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Examination.h"
#include "tools/json_writer.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

constexpr const char* kUsage = "usage: tessaro-examine FILE [--background HEX] [--mark X,Y]... [--no-marks] "
                               "[--pictures DIR] [--paint DIR]";

struct Options {
    bool help = false;
    std::wstring file;
    std::uint32_t background = 0;
    std::optional<MarkPoints> marks;
    std::optional<std::filesystem::path> pictures;
    std::optional<std::filesystem::path> paint;
};

template <typename Number, typename... Base> Number parse(std::string_view text, Base... base) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base...);
    if (error != std::errc() || end != text.data() + text.size())
        throw std::invalid_argument("not a number: " + std::string(text));
    return number;
}

void addMark(MarkPoints& marks, std::string_view text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos)
        throw std::invalid_argument("not a position: " + std::string(text));
    marks.push_back(parse<double>(text.substr(0, comma)));
    marks.push_back(parse<double>(text.substr(comma + 1)));
}

Options parseOptions(int argc, char** argv) {
    Options options;
    const auto next = [&](int& i) -> std::string_view {
        if (i + 1 >= argc)
            throw std::invalid_argument(std::string(argv[i]) + " needs a value");
        return argv[++i];
    };
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--help" || argument == "-h") {
            options.help = true;
        } else if (argument == "--background") {
            options.background = parse<std::uint32_t>(next(i), 16);
        } else if (argument == "--mark") {
            if (!options.marks)
                options.marks.emplace();
            addMark(*options.marks, next(i));
        } else if (argument == "--no-marks") {
            options.marks.emplace();
        } else if (argument == "--pictures") {
            options.pictures = next(i);
        } else if (argument == "--paint") {
            options.paint = next(i);
        } else if (argument.starts_with("--") || !options.file.empty()) {
            throw std::invalid_argument("unknown argument: " + std::string(argument));
        } else {
            options.file = platform::FromNarrow(argument);
        }
    }
    if (options.file.empty() && !options.help)
        throw std::invalid_argument(kUsage);
    return options;
}

void writePicture(const std::filesystem::path& file, const Picture& picture) {
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(picture.pixels.data()),
              static_cast<std::streamsize>(picture.pixels.size()));
    if (!out.flush())
        throw std::runtime_error("can't write " + file.string());
}

void writePictures(const std::filesystem::path& folder, const Directory& directory, const Block& block,
                   const Thumbnails& pictures) {
    std::filesystem::create_directories(folder);
    writePicture(folder / "large.drawn", *pictures.large);
    writePicture(folder / "large.stored", directory.largeImages->Draw(block.imageIndex));
    writePicture(folder / "small.drawn", pictures.small);
    writePicture(folder / "small.stored", directory.smallImages->Draw(block.imageIndex));
}

// Paints over all of the picture's pixels as they are given.
Picture paintedPreview(const Directory& directory, Block block, const std::optional<MarkPoints>& marks, Picture picture,
                       int scale, bool forScreen) {
    PictureContext context(picture);
    if (auto preview = LoadPreview(directory, block)) {
        if (marks)
            preview->points = *marks;
        DrawPreview(context, *preview, block.fileType, 0, 0, scale, forScreen);
    }
    return picture;
}

void writePaint(const Options& options, const Directory& directory, const Block& block) {
    Picture sheet(520, 384);
    std::fill(sheet.pixels.begin(), sheet.pixels.end(), std::uint8_t{255});
    std::filesystem::create_directories(*options.paint);
    writePicture(*options.paint / "screen",
                 paintedPreview(directory, block, options.marks, Picture(260, 190), 1, true));
    writePicture(*options.paint / "print", paintedPreview(directory, block, options.marks, sheet, 2, false));
}

std::string toJson(const Block& block, const Examination& found) {
    tools::JsonWriter json;
    json.beginObject();
    json.member("fileType", block.fileType);
    json.member("typeName", std::wstring_view(FileTypeName(block.fileType)));
    json.member("description", std::wstring_view(block.description));
    json.member("created", block.created);
    json.member("modified", block.modified);
    json.key("points").beginArray();
    for (const double number : found.points)
        json.value(number);
    json.endArray();
    json.member("hasPicture", found.pictures.has_value());
    json.endObject();
    return json.text();
}

void run(const Options& options) {
    const platform::PathParts parts = platform::SplitPath(options.file);
    if (!platform::EqualNoCase(parts.extension, L".dwg"))
        throw std::invalid_argument("no .dwg file: " + platform::ToNarrow(options.file));
    LocalPath = platform::SplitPath(platform::ExecutablePath()).driveAndFolder();
    SetBackground(options.background);

    Directory directory;
    directory.path = parts.driveAndFolder();
    Block block;
    block.name = parts.name;
    ExaminationTask task = TaskFor(directory, block);
    task.marks = options.marks;
    task.keepDrawn = true;
    Examination found;
    Examine(task, found);
    if (!found.complete)
        throw std::runtime_error("locked, or can't be opened: " + platform::ToNarrow(options.file));
    ApplyExamination(directory, block, found);
    if (options.pictures && found.drawn)
        writePictures(*options.pictures, directory, block, *found.drawn);
    if (options.paint && found.pictures)
        writePaint(options, directory, block);
    std::printf("%s\n", toJson(block, found).c_str());
}

} // namespace

int main(int argc, char** argv) try {
    platform::SetMainThread();
    const Options options = parseOptions(argc, argv);
    if (options.help)
        std::puts(kUsage);
    else
        run(options);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "tessaro-examine: %s\n", failure.what());
    return 1;
}
