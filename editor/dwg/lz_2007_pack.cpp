#include "editor/dwg/lz_2007.h"

#include "editor/dwg/lz_2007_order.h"
#include "editor/dwg/match_finder.h"

#include <algorithm>

namespace dwg {

namespace {

using Match = MatchFinder::Match;

/// Literals that are counted by the copy ahead of them; more are counted by a number of their own.
constexpr std::size_t mostCounted = 7;
constexpr std::size_t farthest = 0xFFFF;
constexpr std::size_t longestCopy = 0x100 + 0xFFFF;

/// A copy by the reach of its kind: distance, shortest and longest length, bytes that it takes.
struct Kind {
    std::size_t farthest, shortest, longest, bytes;
};
constexpr Kind near{512, 3, 14, 2};
constexpr Kind medium{8192, 3, 18, 3};
constexpr Kind longer{4096, 19, 50, 3};
constexpr Kind anywhere{farthest, 3, 0xFF, 4};
constexpr Kind longest{farthest, 0x100, longestCopy, 5};

bool fits(const Kind& kind, const Match& match) {
    return match.distance <= kind.farthest && match.length >= kind.shortest && match.length <= kind.longest;
}

const Kind& kindOf(const Match& match) {
    for (const Kind* kind : {&near, &medium, &longer, &anywhere})
        if (fits(*kind, match))
            return *kind;
    return longest;
}

class Packer {
public:
    explicit Packer(ByteView bytes) : plain(bytes), finder(bytes) {}

    Bytes run() {
        std::size_t at = 1;
        while (at < plain.size()) {
            Match match = find(at);
            if (!pays(match)) {
                ++at;
                continue;
            }
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
        if (!plain.empty())
            writePending(plain.size());
        return std::move(out);
    }

private:
    static bool pays(const Match& match) { return match.length >= 3 && match.length > kindOf(match).bytes; }

    Match find(std::size_t at) {
        finder.enterUpTo(at);
        Match match = finder.longest(at, farthest);
        match.length = std::min(match.length, longestCopy);
        return match;
    }

    /// The copy that waits for the count of literals behind it, then these up to `until`.
    void writePending(std::size_t until) {
        const std::size_t literals = until - literalsFrom;
        const bool counted = literals <= mostCounted;
        if (pending.length != 0)
            writeCopy(pending, static_cast<std::uint8_t>(counted ? literals : 0));
        else if (counted)
            out.insert(out.end(), {0x20, 0, 0, static_cast<std::uint8_t>(literals)});
        behindCopy = counted && literals == 0;
        if (!counted)
            writeLiteralCount(literals);
        writeLiterals(plain.subspan(literalsFrom, literals));
    }

    void writeLiteralCount(std::size_t count) {
        constexpr std::size_t least = 8, inOpcode = 0x0F, inByte = 0xFF, inWord = 0xFFFF;
        count -= least;
        if (count < inOpcode) {
            out.push_back(static_cast<std::uint8_t>(count));
            return;
        }
        out.push_back(inOpcode);
        count -= inOpcode;
        if (count < inByte) {
            out.push_back(static_cast<std::uint8_t>(count));
            return;
        }
        out.push_back(inByte);
        count -= inByte;
        for (; count >= inWord; count -= inWord)
            writeWord(inWord);
        writeWord(count);
    }

    void writeLiterals(ByteView bytes) {
        for (; bytes.size() >= 32; bytes = bytes.subspan(32))
            writePieces(bytes.first(32), lz2007::fullOrder);
        writePieces(bytes, lz2007::literalOrder[bytes.size()]);
    }

    void writePieces(ByteView bytes, const lz2007::Order& order) {
        const std::size_t start = out.size();
        out.resize(start + bytes.size());
        for (std::size_t i = 0; i < order.pieces; ++i) {
            const lz2007::Piece piece = order.piece[i];
            std::copy_n(bytes.begin(), piece.count, out.begin() + static_cast<std::ptrdiff_t>(start + piece.from));
            bytes = bytes.subspan(piece.count);
        }
    }

    void writeCopy(const Match& match, std::uint8_t literals) {
        const Kind& kind = kindOf(match);
        const std::size_t back = match.distance - 1;
        if (&kind == &near) {
            out.push_back(static_cast<std::uint8_t>(match.length << 4 | (back & 0x0F)));
            out.push_back(static_cast<std::uint8_t>((back >> 4) << 3 | literals));
        } else if (&kind == &medium) {
            out.push_back(static_cast<std::uint8_t>(0x10 | (match.length - medium.shortest)));
            out.push_back(static_cast<std::uint8_t>(back & 0xFF));
            out.push_back(static_cast<std::uint8_t>((back >> 8) << 3 | literals));
        } else if (&kind == &longer) {
            // Right behind another copy a high half of 0 counts literals, and 15 stands for it.
            const std::size_t more = match.length - longer.shortest;
            out.push_back(static_cast<std::uint8_t>((behindCopy ? 0xF0 : 0x00) | (more & 0x0F)));
            out.push_back(static_cast<std::uint8_t>(back & 0xFF));
            out.push_back(static_cast<std::uint8_t>((more & 0x10) << 3 | (back >> 8) << 3 | literals));
        } else if (&kind == &anywhere) {
            out.push_back(static_cast<std::uint8_t>(0x20 | (match.length & 7)));
            writeWord(match.distance);
            out.push_back(static_cast<std::uint8_t>((match.length & 0xF8) | literals));
        } else {
            const std::size_t more = match.length - longest.shortest;
            out.push_back(static_cast<std::uint8_t>(0x28 | (more & 7)));
            writeWord(back);
            out.push_back(static_cast<std::uint8_t>(more >> 3 & 0xFF));
            out.push_back(static_cast<std::uint8_t>((more >> 11) << 3 | literals));
        }
    }

    void writeWord(std::size_t word) {
        out.push_back(static_cast<std::uint8_t>(word & 0xFF));
        out.push_back(static_cast<std::uint8_t>(word >> 8));
    }

    ByteView plain;
    MatchFinder finder;
    Bytes out;
    Match pending;
    std::size_t literalsFrom = 0;
    /// No literals stand between the copy written last and the next one.
    bool behindCopy = false;
};

} // namespace

Bytes pack2007(ByteView plain) {
    return Packer(plain).run();
}

} // namespace dwg
