#include "editor/dwg/reed_solomon.h"

#include <algorithm>
#include <array>

namespace dwg {

namespace {

/// A code over the field of 256 elements that `polynomial` makes, with the roots x^1 to x^parity.
class Code {
public:
    Code(unsigned polynomial, std::size_t paritySymbols) : generator(paritySymbols + 1) {
        unsigned element = 1;
        for (std::size_t power = 0; power < order; ++power) {
            powers[power] = powers[power + order] = static_cast<std::uint8_t>(element);
            logarithms[element] = static_cast<std::uint8_t>(power);
            element <<= 1;
            if ((element & 0x100) != 0)
                element ^= polynomial;
        }
        generator[0] = 1;
        for (std::size_t root = 1; root <= paritySymbols; ++root)
            for (std::size_t i = root + 1; i > 0; --i) // times (x - x^root)
                generator[i - 1] =
                    static_cast<std::uint8_t>((i > 1 ? generator[i - 2] : 0) ^ product(generator[i - 1], powers[root]));
    }

    /// The parity of a word, lowest power first; the last data byte has the highest power.
    Bytes parity(ByteView data) const {
        Bytes rest(generator.size() - 1);
        for (std::size_t i = data.size(); i > 0; --i) {
            const auto lead = static_cast<std::uint8_t>(rest.back() ^ data[i - 1]);
            for (std::size_t j = rest.size() - 1; j > 0; --j)
                rest[j] = rest[j - 1] ^ product(lead, generator[j]);
            rest[0] = product(lead, generator[0]);
        }
        return rest;
    }

private:
    static constexpr std::size_t order = 255;

    std::uint8_t product(std::uint8_t left, std::uint8_t right) const {
        if (left == 0 || right == 0)
            return 0;
        return powers[std::size_t{logarithms[left]} + logarithms[right]];
    }

    std::array<std::uint8_t, 2 * order> powers{};
    std::array<std::uint8_t, order + 1> logarithms{};
    Bytes generator; // lowest power first
};

const Code& codeOf(std::size_t dataLength) {
    static const Code systemCode(0x169, codeWordLength - systemDataLength);
    static const Code pageCode(0x11D, codeWordLength - pageDataLength);
    return dataLength == systemDataLength ? systemCode : pageCode;
}

} // namespace

Result<Bytes> deinterleave(ByteView coded, std::size_t words, std::size_t dataLength) {
    if (words > coded.size() / codeWordLength)
        return Error{ErrorKind::truncated, "fewer bytes than its code words need", coded.size()};
    Bytes out;
    out.reserve(words * dataLength);
    for (std::size_t word = 0; word < words; ++word)
        for (std::size_t i = 0; i < dataLength; ++i)
            out.push_back(coded[word + i * words]);
    return out;
}

Bytes interleave(ByteView data, std::size_t words, std::size_t dataLength) {
    Bytes out(words * codeWordLength);
    for (std::size_t word = 0; word < words; ++word) {
        const std::size_t from = std::min(word * dataLength, data.size());
        Bytes symbols(dataLength);
        std::ranges::copy(data.subspan(from, std::min(dataLength, data.size() - from)), symbols.begin());
        const Bytes parity = codeOf(dataLength).parity(symbols);
        symbols.insert(symbols.end(), parity.begin(), parity.end());
        for (std::size_t i = 0; i < codeWordLength; ++i)
            out[i * words + word] = symbols[i];
    }
    return out;
}

Bytes pageParity(ByteView data) {
    Bytes out;
    for (; !data.empty(); data = data.subspan(std::min(pageDataLength, data.size()))) {
        Bytes symbols(pageDataLength);
        std::ranges::copy(data.first(std::min(pageDataLength, data.size())), symbols.begin());
        const Bytes parity = codeOf(pageDataLength).parity(symbols);
        out.insert(out.end(), parity.begin(), parity.end());
    }
    return out;
}

} // namespace dwg
