#include "editor/dwg/lz_2004.h"

#include "editor/dwg/byte_cursor.h"

#include <algorithm>
#include <cstring>

namespace dwg {

namespace {

constexpr std::uint8_t endMark = 0x11;
constexpr std::size_t farOffset = 0x3FFF;

struct Copy {
    std::size_t length = 0;
    std::size_t distance = 0; // back from the end of the output, 1 is the last byte written
    std::size_t literals = 0; // 0: a literal count or the next opcode follows
};

class Unpacker {
public:
    Unpacker(ByteView packed, std::size_t most) : in(packed), limit(most) {
        out.reserve(std::min(most, packed.size() * 256));
    }

    Result<Bytes> run() {
        std::uint8_t opcode = startLiterals();
        while (!in.failed() && opcode != endMark && !damaged) {
            if (opcode < 0x10)
                return failure("an opcode below 16 stands where a copy is due");
            const Copy copy = readCopy(opcode);
            append(copy);
            if (damaged || in.failed())
                break;
            opcode = copy.literals == 0 ? startLiterals() : afterLiterals(copy.literals);
        }
        if (damaged)
            return failure("packed data reaches outside its output");
        if (in.failed())
            return failure("packed data ends without its end mark");
        return std::move(out);
    }

private:
    Error failure(const char* reason) const { return {ErrorKind::damaged, reason, in.position()}; }

    // A run of zero bytes, each counting 255, and the byte that ends it.
    std::size_t readRun() {
        std::size_t sum = 0;
        std::uint8_t byte = in.u8();
        while (byte == 0 && !in.failed()) {
            sum += 0xFF;
            byte = in.u8();
        }
        return sum + byte;
    }

    // Copies the literal run that may stand here; gives the opcode behind it.
    std::uint8_t startLiterals() {
        const std::uint8_t byte = in.u8();
        if (byte >= 0x10)
            return byte;
        const std::size_t count = byte == 0 ? 0x0F + readRun() + 3 : std::size_t{byte} + 3;
        return afterLiterals(count);
    }

    std::uint8_t afterLiterals(std::size_t count) {
        if (count > limit - out.size()) {
            damaged = true;
            return endMark;
        }
        const ByteView bytes = in.take(count);
        out.insert(out.end(), bytes.begin(), bytes.end());
        return in.u8();
    }

    Copy readCopy(std::uint8_t opcode) {
        Copy copy;
        if (opcode >= 0x40) {
            copy.length = (opcode >> 4) - 1u;
            copy.distance = (std::size_t{in.u8()} << 2 | (opcode >> 2 & 3u)) + 1;
            copy.literals = opcode & 3u;
            return copy;
        }
        std::size_t base = 1;
        if (opcode >= 0x20) {
            copy.length = opcode == 0x20 ? readRun() + 0x21 : opcode - 0x1Eu;
        } else {
            base += farOffset + ((opcode & 8u) << 11);
            copy.length = (opcode & 7u) == 0 ? readRun() + 9 : (opcode & 7u) + 2;
        }
        const std::uint8_t low = in.u8();
        copy.distance = (std::size_t{in.u8()} << 6 | low >> 2) + base;
        copy.literals = low & 3u;
        return copy;
    }

    void append(const Copy& copy) {
        if (copy.distance > out.size() || copy.length > limit - out.size()) {
            damaged = true;
            return;
        }
        const std::size_t end = out.size();
        out.resize(end + copy.length);
        const std::uint8_t* const from = out.data() + end - copy.distance;
        // Source and target may overlap: what has been copied joins the source, which doubles so each time.
        for (std::uint8_t *to = out.data() + end, *const last = to + copy.length; to != last;) {
            const auto count = std::min<std::ptrdiff_t>(last - to, to - from);
            std::memcpy(to, from, static_cast<std::size_t>(count));
            to += count;
        }
    }

    ByteCursor in;
    std::size_t limit;
    Bytes out;
    bool damaged = false;
};

} // namespace

Result<Bytes> unpack2004(ByteView packed, std::size_t limit) {
    return Unpacker(packed, limit).run();
}

} // namespace dwg
