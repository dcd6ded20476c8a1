#include "editor/dwg/version.h"

#include <array>

namespace dwg {

namespace {

// In the order of Release.
constexpr std::array<std::string_view, 8> magics = {"AC1012", "AC1014", "AC1015", "AC1018",
                                                    "AC1021", "AC1024", "AC1027", "AC1032"};

} // namespace

std::optional<Release> releaseOf(std::string_view magic) {
    for (std::size_t i = 0; i < magics.size(); ++i)
        if (magics[i] == magic)
            return static_cast<Release>(i);
    return std::nullopt;
}

std::string_view magicOf(Release release) {
    return magics[static_cast<std::size_t>(release)];
}

} // namespace dwg
