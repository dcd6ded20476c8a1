#include "editor/dwg/guarded_section.h"

#include "editor/dwg/byte_cursor.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/text_stream.h"

#include <algorithm>

namespace dwg {

namespace {

constexpr std::size_t guardLength = 16;

} // namespace

Result<GuardedSection> openGuardedSection(Bytes bytes, Release release, std::uint8_t maintenance, const char* name,
                                          Findings* findings) {
    GuardedSection section;
    section.bytes = std::move(bytes);
    const ByteView view = section.bytes;
    ByteCursor cursor(view);
    const ByteView begin = cursor.take(guardLength);
    const std::uint32_t size = cursor.u32();
    // The length has a second half since sections may exceed 4 GiB; it is read to step over it.
    if (hasWideLength(release, maintenance))
        cursor.skip(4);
    const std::size_t contentAt = cursor.position();
    if (cursor.failed())
        return Error{ErrorKind::truncated, std::string(name) + " is shorter than its length field", view.size()};
    if (size > cursor.remaining())
        return Error{ErrorKind::damaged, std::string(name) + " declares more bytes than it has", guardLength};

    const std::size_t contentEnd = contentAt + size;
    if (findings != nullptr) {
        ByteCursor tail(view, contentEnd);
        const std::uint16_t stored = tail.u16();
        const ByteView end = tail.take(guardLength);
        const bool guarded = !tail.failed() && std::equal(begin.begin(), begin.end(), end.begin(),
                                                          [](unsigned a, unsigned b) { return (a ^ b) == 0xFF; });
        if (!guarded)
            findings->push_back({name, "the guards around the section don't belong together", contentEnd});
        if (!tail.failed() && crc16(view.subspan(guardLength, contentEnd - guardLength)) != stored)
            findings->push_back({name, "the section's check doesn't match", contentEnd});
    }

    if (release < Release::r2007) {
        section.data = BitReader(view, contentAt * 8, contentEnd * 8);
        return section;
    }
    const std::size_t bits = ByteCursor(view, contentAt).u32();
    const std::size_t end = contentAt * 8 + bits;
    if (bits < 32 || end > contentEnd * 8)
        return Error{ErrorKind::damaged, std::string(name) + " places its references outside itself", contentAt};
    const TextStream texts = textStreamBefore(view, end);
    section.data = BitReader(view, contentAt * 8 + 32, end);
    section.textsAt = texts.start;
    section.text = texts.texts;
    section.handles = BitReader(view, end, contentEnd * 8);
    return section;
}

Bytes GuardedContent::bytes(Release release) const {
    if (release < Release::r2007)
        return data.bytes();
    BitWriter body;
    body.append(data.bits());
    appendTextStream(body, texts.bits());
    BitWriter out;
    constexpr std::size_t ownBits = 32;
    out.rl(static_cast<std::uint32_t>(ownBits + body.position()));
    out.append(body.bits());
    out.append(handles.bits());
    return out.bytes();
}

} // namespace dwg
