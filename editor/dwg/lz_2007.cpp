#include "editor/dwg/lz_2007.h"

#include "editor/dwg/byte_cursor.h"
#include "editor/dwg/lz_2007_order.h"

#include <algorithm>

namespace dwg {

namespace {

struct Copy {
    std::size_t length = 0;
    std::size_t distance = 0; // back from the end of the output, 1 is the last byte written
};

class Unpacker {
public:
    Unpacker(ByteView packed, std::size_t declared) : in(packed), size(declared) {
        out.reserve(std::min(declared, packed.size() * 256));
    }

    Result<Bytes> run() {
        std::uint8_t opcode = in.u8();
        std::size_t literals = 0;
        if (opcode >> 4 == 2) {
            in.skip(2);
            literals = in.u8() & 7u;
            if (literals == 0)
                damaged = true;
        }
        while (good() && in.remaining() > 0) {
            if (literals == 0)
                literals = readLiteralCount(opcode);
            appendLiterals(literals);
            if (!good() || in.remaining() == 0)
                break;
            opcode = in.u8();
            literals = copies(opcode);
        }
        if (damaged)
            return Error{ErrorKind::damaged, "packed data reaches outside its output", in.position()};
        if (in.failed())
            return Error{ErrorKind::damaged, "packed data ends within an instruction", in.position()};
        if (out.size() != size)
            return Error{ErrorKind::damaged, "packed data holds fewer bytes than declared", in.position()};
        return std::move(out);
    }

private:
    bool good() const { return !damaged && !in.failed(); }

    // Copies until literals are due; gives their count, 0 when `opcode` then tells it.
    std::size_t copies(std::uint8_t& opcode) {
        while (good()) {
            append(readCopy(opcode));
            const std::size_t literals = opcode & 7u;
            if (literals != 0 || in.remaining() == 0)
                return literals;
            opcode = in.u8();
            if (opcode >> 4 == 0)
                return 0;
            if (opcode >> 4 == 15)
                opcode &= 15u;
        }
        return 0;
    }

    std::size_t readLiteralCount(std::uint8_t opcode) {
        std::size_t count = std::size_t{opcode} + 8;
        if (count != 0x17)
            return count;
        const std::uint8_t more = in.u8();
        count += more;
        if (more != 0xFF)
            return count;
        std::uint16_t word = 0;
        do {
            word = in.u16();
            count += word;
        } while (word == 0xFFFF && !in.failed());
        return count;
    }

    // Reads what follows `opcode` and leaves in it the byte whose low bits count the literals behind the copy.
    Copy readCopy(std::uint8_t& opcode) {
        Copy copy;
        switch (opcode >> 4) {
        case 0:
            copy.length = (opcode & 0x0Fu) + 0x13;
            copy.distance = in.u8();
            opcode = in.u8();
            copy.length += opcode >> 3 & 0x10u;
            copy.distance += ((opcode & 0x78u) << 5) + 1;
            break;
        case 1:
            copy.length = (opcode & 0x0Fu) + 3;
            copy.distance = in.u8();
            opcode = in.u8();
            copy.distance += ((opcode & 0xF8u) << 5) + 1;
            break;
        case 2:
            copy.length = opcode & 7u;
            copy.distance = in.u16();
            if ((opcode & 8u) == 0) {
                opcode = in.u8();
                copy.length += opcode & 0xF8u;
            } else {
                ++copy.distance;
                copy.length += std::size_t{in.u8()} << 3;
                opcode = in.u8();
                copy.length += (std::size_t{opcode & 0xF8u} << 8) + 0x100;
            }
            break;
        default:
            copy.length = opcode >> 4;
            copy.distance = opcode & 0x0Fu;
            opcode = in.u8();
            copy.distance += ((opcode & 0xF8u) << 1) + 1;
        }
        return copy;
    }

    void append(const Copy& copy) {
        if (copy.distance == 0 || copy.distance > out.size() || copy.length > size - out.size()) {
            damaged = true;
            return;
        }
        const std::size_t from = out.size() - copy.distance;
        for (std::size_t i = 0; i < copy.length; ++i) // source and target may overlap
            out.push_back(out[from + i]);
    }

    void appendLiterals(std::size_t count) {
        const ByteView bytes = in.take(count);
        if (bytes.size() > size - out.size()) {
            damaged = true;
            return;
        }
        std::size_t at = 0;
        for (; bytes.size() - at >= 32; at += 32)
            appendPieces(bytes.subspan(at, 32), lz2007::fullOrder);
        appendPieces(bytes.subspan(at), lz2007::literalOrder[bytes.size() - at]);
    }

    void appendPieces(ByteView bytes, const lz2007::Order& order) {
        for (std::size_t i = 0; i < order.pieces; ++i) {
            const ByteView piece = bytes.subspan(order.piece[i].from, order.piece[i].count);
            out.insert(out.end(), piece.begin(), piece.end());
        }
    }

    ByteCursor in;
    std::size_t size;
    Bytes out;
    bool damaged = false;
};

} // namespace

Result<Bytes> unpack2007(ByteView packed, std::size_t size) {
    return Unpacker(packed, size).run();
}

} // namespace dwg
