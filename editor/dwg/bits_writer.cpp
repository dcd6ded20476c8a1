#include "editor/dwg/bits.h"

#include <algorithm>
#include <array>
#include <bit>

namespace dwg {

namespace {

constexpr std::size_t longestText = 0xFFFF;
/// Most objects take fewer bytes.
constexpr std::size_t usualLength = 128;

template <class Word> std::array<std::uint8_t, sizeof(Word)> lowestFirst(Word value) {
    std::array<std::uint8_t, sizeof(Word)> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
    return bytes;
}

} // namespace

void BitWriter::put(std::uint8_t value, unsigned count) {
    value = static_cast<std::uint8_t>(value & ((1U << count) - 1));
    const unsigned used = length % 8;
    if (buffer.capacity() == 0)
        buffer.reserve(usualLength);
    if (used == 0)
        buffer.push_back(0);
    const unsigned window = static_cast<unsigned>(value) << (16 - used - count);
    buffer.back() |= static_cast<std::uint8_t>(window >> 8);
    if (used + count > 8)
        buffer.push_back(static_cast<std::uint8_t>(window));
    length += count;
}

void BitWriter::alignToByte() {
    length = buffer.size() * 8;
}

void BitWriter::b(bool value) {
    put(value ? 1 : 0, 1);
}

void BitWriter::bb(std::uint8_t value) {
    put(value, 2);
}

void BitWriter::b3(std::uint8_t value) {
    switch (value) {
    case 0:
        return put(0, 1);
    case 2:
        return put(2, 2);
    default:
        return put(value == 7 ? 7 : 6, 3);
    }
}

void BitWriter::rc(std::uint8_t value) {
    put(value, 8);
}

void BitWriter::rs(std::uint16_t value) {
    append(lowestFirst(value));
}

void BitWriter::rl(std::uint32_t value) {
    append(lowestFirst(value));
}

void BitWriter::rll(std::uint64_t value) {
    append(lowestFirst(value));
}

void BitWriter::bs(std::uint16_t value) {
    if (value == 0) {
        bb(2);
    } else if (value == 256) {
        bb(3);
    } else if (value < 256) {
        bb(1);
        rc(static_cast<std::uint8_t>(value));
    } else {
        bb(0);
        rs(value);
    }
}

void BitWriter::bl(std::uint32_t value) {
    if (value == 0) {
        bb(2);
    } else if (value < 256) {
        bb(1);
        rc(static_cast<std::uint8_t>(value));
    } else {
        bb(0);
        rl(value);
    }
}

void BitWriter::bll(std::uint64_t value) {
    const unsigned count = std::min(7U, (static_cast<unsigned>(std::bit_width(value)) + 7) / 8);
    put(static_cast<std::uint8_t>(count), 3);
    for (unsigned i = 0; i < count; ++i)
        rc(static_cast<std::uint8_t>(value >> (8 * i)));
}

void BitWriter::rd(double value) {
    rll(std::bit_cast<std::uint64_t>(value));
}

void BitWriter::bd(double value) {
    if (std::bit_cast<std::uint64_t>(value) == 0) {
        bb(2);
    } else if (value == 1.0) {
        bb(1);
    } else {
        bb(0);
        rd(value);
    }
}

void BitWriter::rd2(Point2 value) {
    rd(value.x);
    rd(value.y);
}

void BitWriter::rd3(Point3 value) {
    rd(value.x);
    rd(value.y);
    rd(value.z);
}

void BitWriter::bd2(Point2 value) {
    bd(value.x);
    bd(value.y);
}

void BitWriter::bd3(Point3 value) {
    bd(value.x);
    bd(value.y);
    bd(value.z);
}

void BitWriter::dd(double value, double byDefault) {
    const auto bitsOfValue = std::bit_cast<std::uint64_t>(value);
    const std::uint64_t difference = bitsOfValue ^ std::bit_cast<std::uint64_t>(byDefault);
    if (difference == 0) {
        bb(0);
    } else if (difference >> 32 == 0) {
        bb(1);
        rl(static_cast<std::uint32_t>(bitsOfValue));
    } else if (difference >> 48 == 0) {
        bb(2);
        rs(static_cast<std::uint16_t>(bitsOfValue >> 32));
        rl(static_cast<std::uint32_t>(bitsOfValue));
    } else {
        bb(3);
        rd(value);
    }
}

void BitWriter::dd2(Point2 value, Point2 byDefault) {
    dd(value.x, byDefault.x);
    dd(value.y, byDefault.y);
}

void BitWriter::dd3(Point3 value, Point3 byDefault) {
    dd(value.x, byDefault.x);
    dd(value.y, byDefault.y);
    dd(value.z, byDefault.z);
}

void BitWriter::bt(double value) {
    const bool none = std::bit_cast<std::uint64_t>(value) == 0;
    b(none);
    if (!none)
        bd(value);
}

void BitWriter::be(Point3 value) {
    const auto same = [](double left, double right) {
        return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
    };
    const bool none = same(value.x, 0) && same(value.y, 0) && same(value.z, 1);
    b(none);
    if (!none)
        bd3(value);
}

void BitWriter::h(HandleRef stored) {
    const unsigned count = (static_cast<unsigned>(std::bit_width(stored.value)) + 7) / 8;
    rc(static_cast<std::uint8_t>(stored.code << 4 | count));
    for (unsigned i = count; i-- > 0;)
        rc(static_cast<std::uint8_t>(stored.value >> (8 * i)));
}

void BitWriter::t(std::string_view text) {
    text = text.substr(0, longestText);
    bs(static_cast<std::uint16_t>(text.size()));
    for (const char c : text)
        rc(static_cast<std::uint8_t>(c));
}

namespace {

std::vector<std::uint16_t> wideUnits(std::wstring_view text) {
    std::vector<std::uint16_t> units;
    units.reserve(text.size());
    for (const wchar_t wide : text) {
        const auto point = static_cast<std::uint32_t>(wide);
        if (units.size() + (point > 0xFFFF ? 2 : 1) > longestText)
            break;
        if (point > 0xFFFF) {
            units.push_back(static_cast<std::uint16_t>(0xD800 + ((point - 0x10000) >> 10)));
            units.push_back(static_cast<std::uint16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
        } else {
            units.push_back(static_cast<std::uint16_t>(point));
        }
    }
    return units;
}

} // namespace

void BitWriter::tu(std::wstring_view text) {
    const std::vector<std::uint16_t> units = wideUnits(text);
    bs(static_cast<std::uint16_t>(units.size()));
    for (const std::uint16_t unit : units)
        rs(unit);
}

void BitWriter::tr(std::wstring_view text) {
    const std::vector<std::uint16_t> units = wideUnits(text);
    rs(static_cast<std::uint16_t>(units.size()));
    for (const std::uint16_t unit : units)
        rs(unit);
}

void BitWriter::mc(std::int32_t value) {
    std::uint32_t rest = value < 0 ? 0U - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
    while (rest > 0x3F) {
        rc(static_cast<std::uint8_t>(0x80 | (rest & 0x7F)));
        rest >>= 7;
    }
    rc(static_cast<std::uint8_t>((value < 0 ? 0x40 : 0) | rest));
}

void BitWriter::umc(std::uint32_t value) {
    while (value > 0x7F) {
        rc(static_cast<std::uint8_t>(0x80 | (value & 0x7F)));
        value >>= 7;
    }
    rc(static_cast<std::uint8_t>(value));
}

void BitWriter::ms(std::uint32_t value) {
    if (value > 0x7FFF) {
        rs(static_cast<std::uint16_t>(0x8000 | (value & 0x7FFF)));
        rs(static_cast<std::uint16_t>(value >> 15));
    } else {
        rs(static_cast<std::uint16_t>(value));
    }
}

void BitWriter::append(std::span<const std::uint8_t> bytes) {
    const unsigned used = length % 8;
    if (buffer.capacity() == 0)
        buffer.reserve(std::max(usualLength, bytes.size()));
    length += bytes.size() * 8;
    if (used == 0) {
        buffer.insert(buffer.end(), bytes.begin(), bytes.end());
        return;
    }
    // The bits that are free in the last byte come first.
    std::size_t last = buffer.size() - 1;
    buffer.resize(buffer.size() + bytes.size());
    for (const std::uint8_t byte : bytes) {
        buffer[last] |= static_cast<std::uint8_t>(byte >> used);
        buffer[++last] = static_cast<std::uint8_t>(byte << (8 - used));
    }
}

void BitWriter::append(const Bits& bits) {
    append(bits.bytes, bits.count);
}

void BitWriter::append(std::span<const std::uint8_t> bytes, std::size_t count) {
    const std::size_t whole = count / 8;
    append(bytes.first(whole));
    const unsigned rest = count % 8;
    if (rest != 0)
        put(static_cast<std::uint8_t>(bytes[whole] >> (8 - rest)), rest);
}

} // namespace dwg
