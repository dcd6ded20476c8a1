#pragma once

#include "editor/dwg/source.h"

namespace dwg {

/// Walks over little-endian numbers in memory. Reading past the end gives 0 and marks the cursor as failed for good,
/// so that a run of reads is checked once at its end.
class ByteCursor {
public:
    explicit ByteCursor(ByteView bytes, std::size_t start = 0) : content(bytes), at(start) {
        if (start > bytes.size())
            fail();
    }

    bool failed() const { return overrun; }
    std::size_t position() const { return at; }
    std::size_t remaining() const { return content.size() - at; }

    std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u32() { return static_cast<std::uint32_t>(number(4)); }
    std::uint64_t u64() { return number(8); }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
    std::int64_t i64() { return static_cast<std::int64_t>(u64()); }

    /// The next `count` bytes; an empty view and failure when there are fewer.
    ByteView take(std::size_t count) {
        if (count > remaining()) {
            fail();
            return {};
        }
        const ByteView out = content.subspan(at, count);
        at += count;
        return out;
    }

    void skip(std::size_t count) { take(count); }

private:
    void fail() {
        overrun = true;
        at = content.size();
    }

    std::uint64_t number(std::size_t count) {
        std::uint64_t value = 0;
        const ByteView bytes = take(count);
        for (std::size_t i = bytes.size(); i > 0; --i)
            value = value << 8 | bytes[i - 1];
        return value;
    }

    ByteView content;
    std::size_t at;
    bool overrun = false;
};

} // namespace dwg
