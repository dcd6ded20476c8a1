#include "editor/dwg/text_stream.h"

namespace dwg {

namespace {

constexpr std::size_t sizeBits = 16;
// Set where the length has a second number, for its upper bits, ahead of the first.
constexpr std::size_t isLong = 0x8000;

} // namespace

TextStream textStreamBefore(std::span<const std::uint8_t> bytes, std::size_t end) {
    if (end == 0 || end > bytes.size() * 8)
        return {{}, end};
    BitReader tail(bytes, end - 1, end);
    if (!tail.b())
        return {{}, end - 1};
    if (end <= sizeBits)
        return {{}, end};
    std::size_t lengthAt = end - 1 - sizeBits;
    tail = BitReader(bytes, lengthAt, end);
    std::size_t length = tail.rs();
    if ((length & isLong) != 0 && lengthAt >= sizeBits) {
        lengthAt -= sizeBits;
        tail = BitReader(bytes, lengthAt, end);
        length = (length & (isLong - 1)) | std::size_t{tail.rs()} << 15;
    }
    if (length > lengthAt)
        return {{}, end};
    return {BitReader(bytes, lengthAt - length, lengthAt), lengthAt - length};
}

void appendTextStream(BitWriter& data, const Bits& texts) {
    data.append(texts);
    if (texts.count >= isLong)
        data.rs(static_cast<std::uint16_t>(texts.count >> 15));
    if (texts.count != 0)
        data.rs(static_cast<std::uint16_t>((texts.count & (isLong - 1)) | (texts.count >= isLong ? isLong : 0)));
    data.b(texts.count != 0);
}

} // namespace dwg
