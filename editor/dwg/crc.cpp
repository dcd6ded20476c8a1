#include "editor/dwg/crc.h"

#include <array>

namespace dwg {

namespace {

template <typename Word> constexpr std::array<Word, 256> makeTable(Word polynomial) {
    std::array<Word, 256> table{};
    for (unsigned value = 0; value < 256; ++value) {
        Word word = static_cast<Word>(value);
        for (int bit = 0; bit < 8; ++bit)
            word = static_cast<Word>((word >> 1) ^ ((word & 1) != 0 ? polynomial : 0));
        table[value] = word;
    }
    return table;
}

constexpr auto table16 = makeTable<std::uint16_t>(0xA001);
constexpr auto table32 = makeTable<std::uint32_t>(0xEDB88320);

} // namespace

std::uint16_t crc16(std::span<const std::uint8_t> bytes, std::uint16_t seed) {
    std::uint16_t crc = seed;
    for (const std::uint8_t byte : bytes)
        crc = static_cast<std::uint16_t>((crc >> 8) ^ table16[(crc ^ byte) & 0xFF]);
    return crc;
}

std::uint32_t crc32(std::span<const std::uint8_t> bytes, std::uint32_t seed) {
    std::uint32_t crc = ~seed;
    for (const std::uint8_t byte : bytes)
        crc = (crc >> 8) ^ table32[(crc ^ byte) & 0xFF];
    return ~crc;
}

} // namespace dwg
