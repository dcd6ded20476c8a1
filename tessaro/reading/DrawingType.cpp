#include "tessaro/reading/DrawingType.h"

#include <string_view>

namespace {

/// The CRC-32 of zip files and PNG.
template <typename Bytes> constexpr std::uint32_t Crc32(const Bytes& bytes) {
    std::uint32_t crc = 0xffffffff;
    for (const auto byte : bytes) {
        crc ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc % 2 == 1 ? 0xedb88320 : 0);
    }
    return ~crc;
}

constexpr std::uint32_t Mark(std::string_view text) {
    return Crc32(text);
}

static_assert(Mark("123456789") == 0xcbf43926);

} // namespace

std::int32_t DrawingType(std::span<const std::uint8_t, kMagicSize> magic) {
    switch (Crc32(magic)) {
    case Mark("MC0.00"):
        return 1;
    case Mark("AC1.20"):
        return 2;
    case Mark("AC1.40"):
        return 3;
    case Mark("AC1.50"):
        return 4;
    case Mark("AC2.10"):
        return 5;
    case Mark("AC2.20"):
        return 6;
    case Mark("AC2.21"):
        return 7;
    case Mark("AC2.22"):
        return 8;
    case Mark("AC1001"):
    case Mark("AC1002"):
        return 9;
    case Mark("AC1003"):
        return 10;
    case Mark("AC1004"):
        return 11;
    case Mark("AC1005"):
    case Mark("AC1006"):
        return 12;
    case Mark("AC1007"):
    case Mark("AC1008"):
    case Mark("AC1009"):
        return 13;
    case Mark("AC1010"):
    case Mark("AC1011"):
    case Mark("AC1012"):
        return 14;
    case Mark("AC1013"):
    case Mark("AC1014"):
        return 15;
    case Mark("AC1015"):
    case Mark("AC1016"):
    case Mark("AC1017"):
        return 16;
    case Mark("AC1018"):
    case Mark("AC1019"):
    case Mark("AC1020"):
        return 17;
    case Mark("AC1021"):
    case Mark("AC1022"):
    case Mark("AC1023"):
        return 18;
    case Mark("AC1024"):
    case Mark("AC1025"):
    case Mark("AC1026"):
        return 19;
    case Mark("AC1027"):
        return 20;
    case Mark("AC1032"): // Known, and all the same no type of its own: index 21 is given to no file.
    default:
        return 0;
    }
}
