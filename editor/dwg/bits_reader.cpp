#include "editor/dwg/bits.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace dwg {

BitReader::BitReader(std::span<const std::uint8_t> bytes, std::size_t first, std::size_t end)
    : source(bytes), limit(std::min(end, bytes.size() * 8)) {
    seek(first);
}

void BitReader::fail() {
    error = true;
    place = limit;
}

void BitReader::seek(std::size_t bit) {
    if (bit > limit)
        fail();
    else
        place = bit;
}

void BitReader::skip(std::size_t bits) {
    if (bits > remaining())
        fail();
    else
        place += bits;
}

void BitReader::alignToByte() {
    seek(std::min((place + 7) / 8 * 8, limit));
}

bool BitReader::take(std::size_t count) {
    if (count > remaining()) {
        fail();
        return false;
    }
    place += count;
    return true;
}

std::uint8_t BitReader::peek(std::size_t at, unsigned count) const {
    const std::size_t byte = at / 8;
    const unsigned shift = at % 8;
    unsigned window = static_cast<unsigned>(source[byte]) << 8;
    if (shift + count > 8)
        window |= source[byte + 1];
    return static_cast<std::uint8_t>((window >> (16 - shift - count)) & ((1U << count) - 1));
}

bool BitReader::b() {
    return take(1) && peek(place - 1, 1) != 0;
}

std::uint8_t BitReader::bb() {
    return take(2) ? peek(place - 2, 2) : std::uint8_t{0};
}

std::uint8_t BitReader::b3() {
    std::uint8_t value = 0;
    for (int i = 0; i < 3; ++i) {
        const bool bit = b();
        value = static_cast<std::uint8_t>(value << 1 | (bit ? 1 : 0));
        if (!bit)
            break;
    }
    return value;
}

std::uint8_t BitReader::rc() {
    return take(8) ? peek(place - 8, 8) : std::uint8_t{0};
}

std::uint16_t BitReader::rs() {
    if (!take(16))
        return 0;
    return static_cast<std::uint16_t>(peek(place - 16, 8) | peek(place - 8, 8) << 8);
}

std::uint32_t BitReader::rl() {
    if (!take(32))
        return 0;
    std::uint32_t value = 0;
    for (unsigned i = 0; i < 4; ++i)
        value |= static_cast<std::uint32_t>(peek(place - 32 + 8 * i, 8)) << (8 * i);
    return value;
}

std::uint64_t BitReader::rll() {
    if (!take(64))
        return 0;
    std::uint64_t value = 0;
    for (unsigned i = 0; i < 8; ++i)
        value |= static_cast<std::uint64_t>(peek(place - 64 + 8 * i, 8)) << (8 * i);
    return value;
}

std::uint16_t BitReader::bs() {
    switch (bb()) {
    case 0:
        return rs();
    case 1:
        return rc();
    case 2:
        return 0;
    default:
        return 256;
    }
}

std::uint32_t BitReader::bl() {
    switch (bb()) {
    case 0:
        return rl();
    case 1:
        return rc();
    case 2:
        return 0;
    default:
        fail();
        return 0;
    }
}

std::uint64_t BitReader::bll() {
    if (!take(3))
        return 0;
    const unsigned count = peek(place - 3, 3);
    std::uint64_t value = 0;
    for (unsigned i = 0; i < count; ++i)
        value |= static_cast<std::uint64_t>(rc()) << (8 * i);
    return failed() ? 0 : value;
}

double BitReader::rd() {
    return std::bit_cast<double>(rll());
}

double BitReader::bd() {
    switch (bb()) {
    case 0:
        return rd();
    case 1:
        return 1.0;
    case 2:
        return 0.0;
    default:
        fail();
        return 0.0;
    }
}

Point2 BitReader::rd2() {
    const double x = rd();
    return {x, rd()};
}

Point3 BitReader::rd3() {
    const double x = rd();
    const double y = rd();
    return {x, y, rd()};
}

Point2 BitReader::bd2() {
    const double x = bd();
    return {x, bd()};
}

Point3 BitReader::bd3() {
    const double x = bd();
    const double y = bd();
    return {x, y, bd()};
}

double BitReader::patched(double byDefault, unsigned low, unsigned middle) {
    if (!take(8U * (low + middle)))
        return 0.0;
    std::uint64_t value = std::bit_cast<std::uint64_t>(byDefault);
    std::size_t at = place - 8U * (low + middle);
    const auto patch = [&](unsigned byte) {
        value &= ~(std::uint64_t{0xFF} << (8 * byte));
        value |= static_cast<std::uint64_t>(peek(at, 8)) << (8 * byte);
        at += 8;
    };
    for (unsigned i = 0; i < middle; ++i)
        patch(4 + i);
    for (unsigned i = 0; i < low; ++i)
        patch(i);
    return std::bit_cast<double>(value);
}

double BitReader::dd(double byDefault) {
    switch (bb()) {
    case 0:
        return failed() ? 0.0 : byDefault;
    case 1:
        return patched(byDefault, 4, 0);
    case 2:
        return patched(byDefault, 4, 2);
    default:
        return rd();
    }
}

Point2 BitReader::dd2(Point2 byDefault) {
    const double x = dd(byDefault.x);
    return {x, dd(byDefault.y)};
}

Point3 BitReader::dd3(Point3 byDefault) {
    const double x = dd(byDefault.x);
    const double y = dd(byDefault.y);
    return {x, y, dd(byDefault.z)};
}

double BitReader::bt() {
    return b() ? 0.0 : bd();
}

Point3 BitReader::be() {
    return b() ? Point3{0, 0, 1} : bd3();
}

HandleRef BitReader::h() {
    const std::uint8_t head = rc();
    const unsigned count = head & 0x0F;
    if (count > 8) {
        fail();
        return {};
    }
    Handle value = 0;
    for (unsigned i = 0; i < count; ++i)
        value = value << 8 | rc();
    return failed() ? HandleRef{} : HandleRef{static_cast<std::uint8_t>(head >> 4), value};
}

std::vector<std::uint8_t> BitReader::bytes(std::size_t count) {
    if (count > remaining() / 8) {
        fail();
        return {};
    }
    return bits(count * 8).bytes;
}

Bits BitReader::bits(std::size_t count) {
    if (!take(count))
        return {};
    const std::size_t start = place - count;
    Bits result{std::vector<std::uint8_t>((count + 7) / 8), count};
    std::size_t done = 0;
    if (start % 8 == 0 && count >= 8) {
        std::memcpy(result.bytes.data(), source.data() + start / 8, count / 8);
        done = count / 8 * 8;
    }
    for (; done < count; done += 8) {
        const auto part = static_cast<unsigned>(std::min<std::size_t>(8, count - done));
        result.bytes[done / 8] = static_cast<std::uint8_t>(peek(start + done, part) << (8 - part));
    }
    return result;
}

std::string BitReader::t() {
    const std::vector<std::uint8_t> text = bytes(bs());
    return std::string(text.begin(), text.end());
}

std::wstring BitReader::tu() {
    return wideUnits(bs());
}

std::wstring BitReader::tr() {
    return wideUnits(rs());
}

std::wstring BitReader::wideUnits(std::size_t units) {
    std::wstring text;
    if (units > remaining() / 16) {
        fail();
        return text;
    }
    text.reserve(units);
    for (std::size_t i = 0; i < units; ++i) {
        const std::uint16_t unit = rs();
        const bool low = unit >= 0xDC00 && unit < 0xE000;
        if (low && !text.empty() && text.back() >= 0xD800 && text.back() < 0xDC00)
            text.back() = static_cast<wchar_t>(0x10000 + ((text.back() - 0xD800) << 10) + (unit - 0xDC00));
        else
            text.push_back(static_cast<wchar_t>(unit));
    }
    return text;
}

std::int32_t BitReader::mc() {
    std::uint32_t value = 0;
    for (unsigned shift = 0; shift < 35; shift += 7) {
        const std::uint8_t byte = rc();
        if ((byte & 0x80) != 0) {
            value |= static_cast<std::uint32_t>(byte & 0x7F) << shift;
            continue;
        }
        value |= static_cast<std::uint32_t>(byte & 0x3F) << shift;
        return static_cast<std::int32_t>((byte & 0x40) != 0 ? 0U - value : value);
    }
    fail();
    return 0;
}

std::uint32_t BitReader::umc() {
    std::uint32_t value = 0;
    for (unsigned shift = 0; shift < 35; shift += 7) {
        const std::uint8_t byte = rc();
        value |= static_cast<std::uint32_t>(byte & 0x7F) << shift;
        if ((byte & 0x80) == 0)
            return value;
    }
    fail();
    return 0;
}

std::uint32_t BitReader::ms() {
    const std::uint16_t low = rs();
    if ((low & 0x8000) == 0)
        return low;
    const std::uint16_t high = rs();
    if ((high & 0x8000) != 0) {
        fail();
        return 0;
    }
    return static_cast<std::uint32_t>(high) << 15 | (low & 0x7FFFU);
}

} // namespace dwg
