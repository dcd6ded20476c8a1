#include "editor/dwg/lz_2004.h"
#include "editor/dwg/match_finder.h"

namespace dwg {

namespace {

constexpr std::uint8_t endMark = 0x11;
/// Literals that stand alone, without a copy that counts them.
constexpr std::size_t fewestLiterals = 4;
constexpr std::size_t nearest = 0x400, middle = 0x4000, farthest = 0x7FFF;

using Match = MatchFinder::Match;

/// Whether the copy takes fewer bytes than what it replaces.
bool pays(const Match& match) {
    if (match.distance <= nearest)
        return match.length >= 3;
    return match.length >= (match.distance <= middle ? 4u : 5u);
}

class Packer {
public:
    explicit Packer(ByteView bytes) : plain(bytes), finder(bytes) {}

    Bytes run() {
        std::size_t at = fewestLiterals;
        while (at < plain.size()) {
            Match match = find(at);
            if (!pays(match)) {
                ++at;
                continue;
            }
            // A longer copy that begins one byte later is worth a literal.
            while (at + 1 < plain.size()) {
                const Match later = find(at + 1);
                if (!pays(later) || later.length <= match.length + 1)
                    break;
                match = later;
                ++at;
            }
            writePending(at);
            pending = match;
            at += match.length;
            literalsFrom = at;
        }
        writePending(plain.size());
        out.push_back(endMark);
        return std::move(out);
    }

private:
    Match find(std::size_t at) {
        finder.enterUpTo(at);
        return finder.longest(at, farthest);
    }

    /// The copy that waits for the count of literals behind it, then these up to `until`.
    void writePending(std::size_t until) {
        const std::size_t literals = until - literalsFrom;
        const bool counted = pending.length != 0 && literals < fewestLiterals;
        if (pending.length != 0)
            writeCopy(pending, static_cast<std::uint8_t>(counted ? literals : 0));
        if (!counted && literals != 0)
            writeLiteralCount(literals);
        const ByteView bytes = plain.subspan(literalsFrom, literals);
        out.insert(out.end(), bytes.begin(), bytes.end());
    }

    void writeLiteralCount(std::size_t count) {
        constexpr std::size_t shortest = 3, inOneByte = 0x0F;
        if (count <= shortest + inOneByte) {
            out.push_back(static_cast<std::uint8_t>(count - shortest));
            return;
        }
        out.push_back(0);
        writeRun(count - shortest - inOneByte);
    }

    /// At least 1: zero bytes count 255 each, the byte that ends them isn't zero.
    void writeRun(std::size_t count) {
        for (; count > 0xFF; count -= 0xFF)
            out.push_back(0);
        out.push_back(static_cast<std::uint8_t>(count));
    }

    void writeCopy(const Match& match, std::uint8_t literals) {
        constexpr std::size_t longestNearest = 14, longestMiddle = 33, longestFar = 9;
        if (match.distance <= nearest && match.length <= longestNearest) {
            const std::size_t back = match.distance - 1;
            out.push_back(static_cast<std::uint8_t>((match.length + 1) << 4 | (back & 3) << 2 | literals));
            out.push_back(static_cast<std::uint8_t>(back >> 2));
            return;
        }
        std::size_t back = match.distance - 1;
        if (match.distance <= middle) {
            writeLength(match.length, 0x20, longestMiddle, 0x1E);
        } else {
            back -= middle - 1;
            writeLength(match.length, 0x10, longestFar, 0x0E);
        }
        out.push_back(static_cast<std::uint8_t>((back & 0x3F) << 2 | literals));
        out.push_back(static_cast<std::uint8_t>(back >> 6));
    }

    /// Within the opcode, as `base` more than the length, up to `longest`; else as a run behind it.
    void writeLength(std::size_t length, std::uint8_t kind, std::size_t longest, std::size_t base) {
        if (length <= longest) {
            out.push_back(static_cast<std::uint8_t>(length + base));
            return;
        }
        constexpr std::size_t middleRun = 0x21, farRun = 9;
        out.push_back(kind);
        writeRun(length - (kind == 0x20 ? middleRun : farRun));
    }

    ByteView plain;
    MatchFinder finder;
    Bytes out;
    /// Written when the number of literals behind it is known.
    Match pending;
    std::size_t literalsFrom = 0;
};

} // namespace

Bytes pack2004(ByteView plain) {
    if (plain.size() >= fewestLiterals)
        return Packer(plain).run();
    Bytes filled(plain.begin(), plain.end());
    filled.resize(fewestLiterals);
    return Packer(filled).run();
}

} // namespace dwg
