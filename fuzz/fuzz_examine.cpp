// The examination of one drawing with the helper, from its first byte to the pictures in their lists. The first byte of
// the input chooses between a drawing and a bitmap beside an early drawing.

#include "fuzz/FuzzFolder.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Examine.h"

#include <exception>
#include <fstream>

namespace {

void Write(const char* name, const std::uint8_t* data, std::size_t size) {
    std::ofstream(FuzzFolder::Path() / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Directory& directory = *new Directory;
    static Block& block = *new Block;
    if (size == 0)
        return 0;
    LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
    directory.path = platform::FromNarrow(FuzzFolder::Path().native());
    const bool isBitmap = data[0] % 2 == 1;
    block.name = isBitmap ? L"early" : L"drawing";
    if (isBitmap) {
        constexpr std::uint8_t mark[] = {'A', 'C', '1', '0', '0', '9'};
        Write("early.dwg", mark, sizeof mark);
        Write("early.bmp", data + 1, size - 1);
    } else {
        Write("drawing.dwg", data + 1, size - 1);
    }
    try {
        ExamineDrawing(directory, block);
    } catch (const std::exception&) {
        // A helper that raises, or a date that is none: the worker logs it and ends.
        return 0;
    }
    return 0;
}
