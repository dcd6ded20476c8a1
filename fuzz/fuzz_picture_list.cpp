// Picture lists one behind the other; one that can be read is drawn, added to and written, and what was written is read
// as the same.

#include "tessaro/catalogue/ImageList.h"

#include <cstdlib>

namespace {

constexpr std::size_t kMostDrawn = std::size_t{1} << 20;

void Check(ImageList& list) {
    const std::size_t pixels = static_cast<std::size_t>(list.Width()) * static_cast<std::size_t>(list.Height());
    std::size_t drawn = 0;
    for (int slot = 0; slot < list.Count() && drawn < kMostDrawn; ++slot, drawn += pixels)
        if (list.Draw(slot).pixels.size() != pixels * 3)
            std::abort();
    if (pixels < kMostDrawn) {
        const int before = list.Count();
        const int slot = list.Add(Picture(list.Width(), list.Height()));
        if (slot != before && slot != -1)
            std::abort();
    }
    std::string bytes;
    list.Write(bytes);
    std::size_t used = 0;
    const auto again = ImageList::Read({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, used);
    if (again == nullptr || used != bytes.size() || *again != list)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::span<const std::uint8_t> rest(data, size);
    std::size_t used = 0;
    while (const auto list = ImageList::Read(rest, used)) {
        rest = rest.subspan(used);
        Check(*list);
    }
    return 0;
}
