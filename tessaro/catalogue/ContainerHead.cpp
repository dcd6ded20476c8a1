#include "tessaro/catalogue/ContainerHead.h"

#include <algorithm>

namespace {

constexpr std::array<std::uint8_t, 6> kMarks = {'a', 0, 'k', 0, 'z', 0};

template <typename Number> Number Get(const std::uint8_t* at) {
    Number value = 0;
    for (std::size_t i = 0; i < sizeof value; ++i)
        value = static_cast<Number>(value | static_cast<Number>(static_cast<Number>(at[i]) << (8 * i)));
    return value;
}

template <typename Number> void Put(std::uint8_t* at, Number value) {
    for (std::size_t i = 0; i < sizeof value; ++i)
        at[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

} // namespace

std::array<std::uint8_t, ContainerHead::kSize> ContainerHead::Bytes() const {
    std::array<std::uint8_t, kSize> bytes{};
    std::copy(kMarks.begin(), kMarks.end(), bytes.begin());
    Put(bytes.data() + 6, kind);
    Put(bytes.data() + 8, plainLength);
    Put(bytes.data() + 12, checksum);
    return bytes;
}

std::optional<ContainerHead> ContainerHead::Parse(std::span<const std::uint8_t> bytes) {
    std::array<std::uint8_t, kSize> head{};
    std::copy_n(bytes.begin(), std::min(bytes.size(), kSize), head.begin());
    if (!std::equal(kMarks.begin(), kMarks.end(), head.begin()))
        return std::nullopt;
    return ContainerHead{Get<std::uint16_t>(head.data() + 6), Get<std::uint32_t>(head.data() + 8),
                         Get<std::uint32_t>(head.data() + 12)};
}
