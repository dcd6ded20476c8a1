#include "tessaro/browser/preview/Preview.h"

#include "tessaro/browser/preview/Dib.h"
#include "tessaro/host/ModuleState.h"

#include <algorithm>

namespace {

constexpr Rgb kBlack{0, 0, 0, 0};
constexpr Rgb kWhite{255, 255, 255, 0};
constexpr std::size_t kAdaptedEntries = 256;

bool TakesBlack(std::uint32_t colourWord) {
    switch (colourWord) {
    case 0x0000ff:
    case 0x00ff00:
    case 0x00ffff:
    case 0xc0c0c0:
    case 0xff0000:
    case 0xff00ff:
    case 0xffff00:
    case 0xffffff:
        return true;
    default:
        return false;
    }
}

} // namespace

void SetBackground(std::uint32_t colourWord) {
    backColor = Rgb{static_cast<std::uint8_t>(colourWord), static_cast<std::uint8_t>(colourWord >> 8),
                    static_cast<std::uint8_t>(colourWord >> 16)};
    foreColor = TakesBlack(colourWord) ? kBlack : kWhite;
}

void AdaptPalette(PreviewBytes& preview) {
    const Rgb back = backColor;
    const Rgb fore = foreColor;
    for (std::size_t i = 0; i < kAdaptedEntries; ++i) {
        const std::size_t at = kDibHeaderSize + 4 * i;
        if (at + 3 > preview.size())
            return;
        const auto isEach = [&](std::uint8_t value) {
            return std::all_of(&preview[at], &preview[at] + 3, [value](std::uint8_t part) { return part == value; });
        };
        const Rgb* instead = isEach(255) ? &back : isEach(0) ? &fore : nullptr;
        if (instead == nullptr)
            continue;
        preview[at] = instead->blue;
        preview[at + 1] = instead->green;
        preview[at + 2] = instead->red;
    }
}
