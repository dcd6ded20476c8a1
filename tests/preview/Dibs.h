#pragma once

#include "tessaro/browser/preview/Dib.h"

#include "tessaro/host/ModuleState.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

/// A bitmap in memory, written as its header says and then bent by the test.
struct DibText {
    std::uint16_t bits = 8;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint32_t headerSize = 40;
    std::uint32_t compression = 0;
    std::vector<std::uint32_t> colours;           ///< colour table, red in the low byte
    std::vector<std::uint32_t> masks;             ///< behind the header, ahead of the colours
    std::vector<std::vector<std::uint32_t>> rows; ///< pixel values, top row first
    std::int64_t coloursUsed = -1;                ///< -1: as many as there are
};

PreviewBytes makeDib(const DibText& text);

/// Eight bits, one colour all over, with a full table whose entry i is the colour word `table(i)`.
PreviewBytes makePlainDib(int width, int height, std::uint32_t colourWord);

Rgb colourOf(std::uint32_t colourWord);
std::uint32_t wordAt(const Picture& picture, int x, int y);
/// A letter for each pixel: '.' black, 'R' red, '#' white, 'B' blue, 'G' green, '?' any other; rows ended by '\n'.
std::string drawn(const Picture& picture);

} // namespace tests

void PrintTo(const Rgb& colour, std::ostream* out);
