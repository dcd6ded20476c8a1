#pragma once

#include "editor/dwg/handle.h"
#include "editor/dwg/point.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dwg {

/// A run of bits, first bit in the highest bit of the first byte; unused bits of the last byte are zero.
struct Bits {
    std::vector<std::uint8_t> bytes;
    std::size_t count = 0;
    bool operator==(const Bits&) const = default;
};

/// Reads the format's bit codes. Every read is checked against the end: one that passes it sets the error, which stays
/// set, gives zero and leaves the position at the end. Nothing throws. The bytes belong to the caller and outlive the
/// reader.
///
/// The functions bear the format's own names: B bit, BB two bits, BS bit short, BL bit long, BD bit double, RC RS RL RD
/// raw, DD double with default, BT thickness, BE extrusion, H handle, T text, MC and MS modular numbers.
class BitReader {
public:
    BitReader() = default;
    explicit BitReader(std::span<const std::uint8_t> bytes) : BitReader(bytes, 0, bytes.size() * 8) {}
    /// Reads the bits [first, end) of the bytes; an end beyond the bytes is cut to them.
    BitReader(std::span<const std::uint8_t> bytes, std::size_t first, std::size_t end);

    /// In bits from the start of the bytes.
    std::size_t position() const { return place; }
    std::size_t end() const { return limit; }
    std::size_t remaining() const { return limit - place; }
    bool failed() const { return error; }
    /// Also for callers that find a value which can't be.
    void fail();
    /// A position beyond the end is an error.
    void seek(std::size_t bit);
    void skip(std::size_t bits);
    void alignToByte();

    bool b();
    std::uint8_t bb();
    /// One to three bits, each set bit asking for the next.
    std::uint8_t b3();
    std::uint16_t bs();
    std::uint32_t bl();
    std::uint64_t bll();
    std::uint8_t rc();
    std::uint16_t rs();
    std::uint32_t rl();
    std::uint64_t rll();
    double rd();
    double bd();
    Point2 rd2();
    Point3 rd3();
    Point2 bd2();
    Point3 bd3();
    double dd(double byDefault);
    Point2 dd2(Point2 byDefault);
    Point3 dd3(Point3 byDefault);
    double bt();
    Point3 be();
    /// The reference as stored: relative codes are not resolved.
    HandleRef h();
    /// Length and bytes of a text in the drawing's code page.
    std::string t();
    /// Length in units and UTF-16 units; gives wide text, surrogate pairs joined.
    std::wstring tu();
    /// The same with a raw length, as lists of values have it.
    std::wstring tr();
    std::int32_t mc();
    std::uint32_t umc();
    std::uint32_t ms();
    /// `count` raw bytes, wherever they begin. Nothing is allocated before the count was checked.
    std::vector<std::uint8_t> bytes(std::size_t count);
    Bits bits(std::size_t count);

private:
    std::wstring wideUnits(std::size_t units);
    bool take(std::size_t count);
    /// Up to 8 bits at a place that was checked.
    std::uint8_t peek(std::size_t at, unsigned count) const;
    double patched(double byDefault, unsigned low, unsigned middle);

    std::span<const std::uint8_t> source;
    std::size_t place = 0;
    std::size_t limit = 0;
    bool error = false;
};

/// Writes the format's bit codes, each in its shortest form. The counterpart of BitReader.
class BitWriter {
public:
    std::size_t position() const { return length; }
    /// The bytes so far, the last one filled up with zero bits.
    const std::vector<std::uint8_t>& bytes() const { return buffer; }
    Bits bits() const { return {buffer, length}; }
    /// The same, given away: the writer is as new.
    Bits take() { return {std::move(buffer), std::exchange(length, 0)}; }
    void alignToByte();

    void b(bool value);
    void bb(std::uint8_t value);
    void b3(std::uint8_t value);
    void bs(std::uint16_t value);
    void bl(std::uint32_t value);
    void bll(std::uint64_t value);
    void rc(std::uint8_t value);
    void rs(std::uint16_t value);
    void rl(std::uint32_t value);
    void rll(std::uint64_t value);
    void rd(double value);
    void bd(double value);
    void rd2(Point2 value);
    void rd3(Point3 value);
    void bd2(Point2 value);
    void bd3(Point3 value);
    void dd(double value, double byDefault);
    void dd2(Point2 value, Point2 byDefault);
    void dd3(Point3 value, Point3 byDefault);
    void bt(double value);
    void be(Point3 value);
    /// Writes code and number as they are.
    void h(HandleRef stored);
    /// Text in the drawing's code page; cut at 65,535 bytes.
    void t(std::string_view text);
    /// Cut at 65,535 units, never inside a surrogate pair.
    void tu(std::wstring_view text);
    void tr(std::wstring_view text);
    void mc(std::int32_t value);
    void umc(std::uint32_t value);
    void ms(std::uint32_t value);
    void append(std::span<const std::uint8_t> bytes);
    void append(const Bits& bits);
    /// What another writer has written.
    void append(const BitWriter& other) { append(other.buffer, other.length); }

private:
    /// The lowest `count` (up to 8) bits of the value.
    void put(std::uint8_t value, unsigned count);
    void append(std::span<const std::uint8_t> bytes, std::size_t count);

    std::vector<std::uint8_t> buffer;
    std::size_t length = 0;
};

} // namespace dwg
