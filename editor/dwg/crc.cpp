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

constexpr std::size_t stepBytes = 8;

/// For each place in a step of eight bytes what a byte there does to the check at the end of the step.
constexpr auto stepTables = [] {
    std::array<std::array<std::uint16_t, 256>, stepBytes> tables{};
    tables[stepBytes - 1] = table16;
    for (std::size_t place = stepBytes - 1; place-- > 0;) {
        for (std::size_t value = 0; value < table16.size(); ++value) {
            const std::uint16_t before = tables[place + 1][value];
            tables[place][value] = static_cast<std::uint16_t>((before >> 8) ^ table16[before & 0xFF]);
        }
    }
    return tables;
}();

constexpr auto table32 = makeTable<std::uint32_t>(0xEDB88320);

} // namespace

std::uint16_t crc16(std::span<const std::uint8_t> bytes, std::uint16_t seed) {
    std::uint16_t crc = seed;
    for (; bytes.size() >= stepBytes; bytes = bytes.subspan(stepBytes)) {
        crc = static_cast<std::uint16_t>(stepTables[0][(crc ^ bytes[0]) & 0xFF] ^ stepTables[1][(crc >> 8) ^ bytes[1]]);
        for (std::size_t place = 2; place < stepBytes; ++place)
            crc ^= stepTables[place][bytes[place]];
    }
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
