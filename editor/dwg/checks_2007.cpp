#include "editor/dwg/checks_2007.h"

#include "editor/dwg/checksum.h"

#include <array>
#include <bit>
#include <span>

namespace dwg {

namespace {

using Table = std::array<std::uint64_t, 256>;

constexpr Table makeHighFirst() {
    constexpr std::uint64_t polynomial = 0x42F0E1EBA9EA3693;
    Table table{};
    for (std::uint64_t value = 0; value < table.size(); ++value) {
        std::uint64_t word = value << 56;
        for (int bit = 0; bit < 8; ++bit)
            word = word << 1 ^ ((word >> 63) != 0 ? polynomial : 0);
        table[value] = word;
    }
    return table;
}

constexpr Table makeLowFirst() {
    constexpr std::uint64_t reflected = 0x95AC9329AC4BC9B5;
    Table table{};
    for (std::uint64_t value = 0; value < table.size(); ++value) {
        std::uint64_t word = value;
        for (int bit = 0; bit < 8; ++bit)
            word = word >> 1 ^ ((word & 1) != 0 ? reflected : 0);
        table[value] = word;
    }
    return table;
}

constexpr Table highFirst = makeHighFirst(), lowFirst = makeLowFirst();

constexpr std::uint64_t factor = 214013, addend = 2531011;

std::uint64_t pageSeed(std::uint64_t length) {
    const std::uint64_t first = length * factor + addend;
    return ~(first | (first * factor + addend) << 32);
}

std::uint64_t headerSeed(std::uint64_t length) {
    const std::uint64_t first = length * factor + addend;
    return ~(first * ((1ull << 32) + factor) + length + addend);
}

/// The bytes in the order that the checks take them in.
Bytes inOrder(ByteView bytes) {
    Bytes out;
    out.reserve(bytes.size());
    for (std::size_t group = 8; group >= 2; group /= 2) {
        for (; bytes.size() >= group; bytes = bytes.subspan(group)) {
            for (std::size_t pair = group; pair > 0; pair -= 2)
                out.insert(out.end(), {bytes[pair - 2], bytes[pair - 1]});
            if (group < 8) { // one group of each smaller size at most
                bytes = bytes.subspan(group);
                break;
            }
        }
    }
    out.insert(out.end(), bytes.begin(), bytes.end());
    return out;
}

std::uint64_t checkHighFirst(ByteView bytes, std::uint64_t seed) {
    std::uint64_t check = seed;
    for (const std::uint8_t byte : inOrder(bytes))
        check = check << 8 ^ highFirst[check >> 56 ^ byte];
    return ~check;
}

std::uint64_t checkLowFirst(ByteView bytes, std::uint64_t seed) {
    std::uint64_t check = seed;
    for (const std::uint8_t byte : inOrder(bytes))
        check = check >> 8 ^ lowFirst[(check ^ byte) & 0xFF];
    return check;
}

Bytes littleEndian(std::span<const std::uint64_t> numbers) {
    Bytes out;
    for (const std::uint64_t number : numbers)
        for (unsigned shift = 0; shift < 64; shift += 8)
            out.push_back(static_cast<std::uint8_t>(number >> shift));
    return out;
}

std::uint64_t turned(std::uint64_t number, std::uint64_t by) {
    return std::rotl(number, static_cast<int>(by & 0x1F));
}

} // namespace

std::uint64_t pageCheck2007(ByteView bytes) {
    return checkLowFirst(bytes, pageSeed(bytes.size()));
}

std::uint32_t pageChecksum2007(ByteView bytes) {
    return pageChecksum(inOrder(bytes), static_cast<std::uint32_t>(bytes.size() * factor + addend));
}

std::uint64_t headerCheck2007(ByteView bytes) {
    return checkHighFirst(bytes, headerSeed(bytes.size()));
}

std::uint64_t keyCheck2007(std::uint64_t key) {
    const std::array<std::uint64_t, 2> numbers = {key, turned(key, key)};
    const Bytes bytes = littleEndian(numbers);
    return checkHighFirst(bytes, pageSeed(bytes.size()));
}

Bytes checkData2007(std::uint64_t first, std::uint64_t second, std::uint64_t further) {
    std::array<std::uint64_t, 8> chain{};
    chain[0] = turned(first, second);
    chain[1] = turned(chain[0], chain[0]);
    chain[2] = turned(second, chain[1]);
    chain[3] = turned(chain[2], chain[2]);
    chain[4] = turned(first, chain[3]);
    for (std::size_t i = 5; i < chain.size(); ++i)
        chain[i] = turned(chain[i - 1], chain[i - 1]);
    const std::uint64_t one = checkHighFirst(littleEndian(chain), ~second);

    chain[0] = turned(first, second);
    chain[1] = turned(one, chain[0]);
    chain[2] = turned(second, chain[1]);
    chain[3] = turned(one, chain[2]);
    chain[4] = turned(first, chain[3]);
    chain[5] = turned(one, chain[4]);
    chain[6] = turned(second, chain[5]);
    chain[7] = turned(chain[6], chain[6]);
    const std::uint64_t other = checkLowFirst(littleEndian(chain), ~first);
    return littleEndian(std::array{one, other, first, second, further});
}

} // namespace dwg
