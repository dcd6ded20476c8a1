#include "tests/reading/ExamineFixture.h"

#include "tessaro/platform/Text.h"

namespace tests {

ExamineFixture::ExamineFixture() {
    SetBackground(0x000000);
    directory.path = platform::FromNarrow(folder.path().string());
    block.name = L"a";
}

bool ExamineFixture::examine(const std::string& drawing) {
    folder.write("a.dwg", drawing);
    return examine();
}

bool ExamineFixture::examine() {
    return ExamineDrawing(directory, block);
}

std::uint32_t ExamineFixture::middle() const {
    const Picture picture = directory.largeImages->Draw(block.imageIndex);
    const auto* pixel = &picture.pixels.at((48 * 130 + 65) * 3);
    return pixel[0] | static_cast<std::uint32_t>(pixel[1]) << 8 | static_cast<std::uint32_t>(pixel[2]) << 16;
}

} // namespace tests
