#include "bench/drawings/LargeDrawing.h"

#include "tests/support/TemporaryFolder.h"

#include <cstdio>

std::filesystem::path LargeDrawing() {
    const std::filesystem::path folder = tests::sharedFolder("drawings");
    if (folder.empty())
        std::puts("the drawing to be measured is not there");
    return folder.empty() ? folder : folder / "2018/Dynblocks.dwg";
}
