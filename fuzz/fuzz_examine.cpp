// The examination of one drawing, from its first byte to the drawn pictures. The first byte of the input chooses
// between a drawing and a bitmap beside an early drawing.

#include "tessaro/reading/DrawingType.h"
#include "tessaro/reading/PreviewSection.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <string>

namespace {

/// A file in memory that is opened by its name like any other.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size) : descriptor(memfd_create("input", 0)) {
        if (write(descriptor, data, size) != static_cast<ssize_t>(size))
            std::abort();
    }
    ~MemoryFile() { close(descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    std::wstring path() const { return L"/proc/self/fd/" + std::to_wstring(descriptor); }

private:
    const int descriptor;
};

void draw(std::optional<PreviewBytes> preview, std::int32_t fileType, bool isPng) {
    if (preview)
        DrawThumbnails(fileType % 2 == 0, fileType, *preview, isPng, {40.5, 33.25});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const MemoryFile memory(data + 1, size - 1);
    platform::File file(memory.path(), platform::File::modeRead);
    if (data[0] % 2 == 1) {
        draw(ReadBitmapFile(file), data[0] / 2 % 22, false);
        return 0;
    }
    std::array<std::uint8_t, kMagicSize> magic{};
    file.Read(magic.data(), magic.size());
    const PreviewSection section = ReadPreviewSection(file);
    if (section.header)
        ReadEntry(file, *section.header, 65536);
    draw(ReadSectionImage(file, section), DrawingType(magic), section.isPng);
    return 0;
}
