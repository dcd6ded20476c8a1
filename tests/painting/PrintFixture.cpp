#include "tests/painting/PrintFixture.h"

#include <cstdlib>
#include <ctime>

namespace tests {

PrintFixture::PrintFixture() {
    setenv("TZ", "UTC", 1);
    tzset();
    directory.path = L"/parts";
    list.pictures = directory.largeImages.get();
    currentDirectory = &directory;
    versionText = L"3.9.10";
    printScale = 4;
    printType = 0;
    page(2400, 3300, 300);
}

PrintFixture::~PrintFixture() {
    currentDirectory = nullptr;
    printScale = 4;
    printType = 0;
}

void PrintFixture::page(int width, int height, int resolution) {
    dc.pageWidth = width;
    dc.pageHeight = height;
    dc.resolution = resolution;
}

Block& PrintFixture::addBlock(const std::wstring& name) {
    auto* const block = new Block;
    block->name = name;
    directory.blocks.push_back(block);
    list.rows.push_back({block, block->imageIndex});
    return *block;
}

void PrintFixture::addBlocks(int count) {
    for (int i = 0; i < count; ++i)
        addBlock(L'a' + std::to_wstring(i));
}

} // namespace tests
