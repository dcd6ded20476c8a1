#include "editor/dwg/small_sections.h"

#include "editor/dwg/bits.h"

#include <array>
#include <limits>

namespace dwg {

Bytes writeObjectFreeSpace(Release release, std::uint32_t objects, DayAndTime updated) {
    // From 2010 on all numbers but the date are twice as wide.
    const bool wide = release >= Release::r2010;
    BitWriter out;
    const auto number = [&](std::uint32_t value) {
        out.rl(value);
        if (wide)
            out.rl(0);
    };
    number(0);
    number(objects);
    out.rl(updated.day);
    out.rl(updated.milliseconds);
    if (!wide)
        out.rl(0);
    constexpr std::array<std::uint32_t, 4> limits = {0x32, 0x64, 0x200, std::numeric_limits<std::uint32_t>::max()};
    out.rc(static_cast<std::uint8_t>(limits.size()));
    for (const std::uint32_t limit : limits) {
        number(limit);
        number(0);
    }
    return out.bytes();
}

Bytes writeTemplate(Release release, std::uint16_t measurement) {
    BitWriter out;
    if (release >= Release::r2007) {
        out.rs(1); // a text of its closing null alone
        out.rs(0);
    } else {
        out.rs(0);
    }
    out.rs(measurement);
    return out.bytes();
}

Bytes writeRevisionHistory() {
    BitWriter out;
    for (const std::uint32_t number : {0, 0, 1, 0})
        out.rl(number);
    return out.bytes();
}

Bytes writeAppInfo(std::wstring_view product, std::wstring_view version) {
    constexpr std::size_t identifierSize = 16;
    BitWriter out;
    const auto text = [&out](std::wstring_view value) {
        out.rs(static_cast<std::uint16_t>(value.size() + 1));
        for (const wchar_t letter : value)
            out.rs(static_cast<std::uint16_t>(letter));
        out.rs(0);
    };
    const std::array<std::wstring_view, 3> values = {version, L"", product};
    out.rl(static_cast<std::uint32_t>(values.size()));
    text(L"AppInfoDataList");
    out.rl(static_cast<std::uint32_t>(values.size()));
    for (const std::wstring_view value : values) {
        out.append(Bytes(identifierSize));
        text(value);
    }
    return out.bytes();
}

} // namespace dwg
