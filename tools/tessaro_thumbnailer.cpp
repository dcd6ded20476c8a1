// tessaro-thumbnailer DRAWING PNG [-s SIZE]
//
// Writes the picture of a drawing for a file manager: the one that the drawing embeds, else what the editor draws. SIZE
// is the longest side in pixels, 256 without it; a smaller picture stays as it is. The exit status is 1 where the file
// has no picture or is no drawing, 2 for a wrong command line.

#include "tools/thumbnail.h"

#include <charconv>
#include <cstdio>
#include <exception>
#include <lodepng.h>
#include <optional>
#include <string_view>
#include <vector>

namespace {

struct Options {
    std::vector<const char*> files;
    int size = 256;
};

std::optional<Options> parse(int count, char** arguments) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument != "-s") {
            options.files.push_back(arguments[i]);
            continue;
        }
        const std::string_view value = i + 1 < count ? arguments[++i] : "";
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), options.size);
        if (error != std::errc() || end != value.data() + value.size() || options.size < 1 ||
            options.size > tools::largestThumbnail)
            return std::nullopt;
    }
    return options.files.size() == 2 ? std::optional(options) : std::nullopt;
}

int run(const Options& options) {
    const auto picture = tools::thumbnailOf(options.files[0], options.size);
    if (!picture) {
        std::fprintf(stderr, "tessaro-thumbnailer: %s has no picture, or is no drawing\n", options.files[0]);
        return 1;
    }
    const unsigned failure =
        lodepng_encode24_file(options.files[1], picture->pixels.data(), static_cast<unsigned>(picture->width),
                              static_cast<unsigned>(picture->height));
    if (failure != 0)
        std::fprintf(stderr, "tessaro-thumbnailer: can't write %s\n", options.files[1]);
    return failure == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) try {
    const auto options = parse(count, arguments);
    if (!options) {
        std::fprintf(stderr, "usage: tessaro-thumbnailer DRAWING PNG [-s SIZE]\n");
        return 2;
    }
    return run(*options);
} catch (const std::exception& failure) {
    std::fprintf(stderr, "tessaro-thumbnailer: %s\n", failure.what());
    return 1;
}
