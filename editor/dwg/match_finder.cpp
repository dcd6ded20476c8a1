#include "editor/dwg/match_finder.h"

#include <bit>
#include <cstring>

namespace dwg {

namespace {

constexpr unsigned hashBits = 15;
constexpr std::size_t hashedBytes = 3;
/// Candidates that are compared at most, and the length from which on no better one is looked for.
constexpr unsigned mostCandidates = 5;
constexpr std::size_t goodLength = 128;

std::size_t commonLength(ByteView bytes, std::size_t earlier, std::size_t at) {
    std::size_t length = 0;
    // Eight at a time; the lowest bit that differs is in the first byte that does.
    for (; at + length + sizeof(std::uint64_t) <= bytes.size(); length += sizeof(std::uint64_t)) {
        std::uint64_t one = 0, other = 0;
        std::memcpy(&one, bytes.data() + at + length, sizeof one);
        std::memcpy(&other, bytes.data() + earlier + length, sizeof other);
        if (one != other)
            return length + static_cast<std::size_t>(std::countr_zero(one ^ other)) / 8;
    }
    while (at + length < bytes.size() && bytes[at + length] == bytes[earlier + length])
        ++length;
    return length;
}

} // namespace

MatchFinder::MatchFinder(ByteView bytes)
    : content(bytes), heads(std::size_t{1} << hashBits), chain(bytes.size() < hashedBytes ? 0 : bytes.size()) {}

std::size_t MatchFinder::slot(std::size_t at) const {
    const std::uint32_t word =
        static_cast<std::uint32_t>(content[at] | content[at + 1] << 8 | content[at + 2] << 16) * 2654435761u;
    return word >> (32 - hashBits);
}

void MatchFinder::enterUpTo(std::size_t at) {
    for (; entered < at && entered + hashedBytes <= content.size(); ++entered) {
        std::uint32_t& head = heads[slot(entered)];
        chain[entered] = head;
        head = static_cast<std::uint32_t>(entered + 1);
    }
}

MatchFinder::Match MatchFinder::longest(std::size_t at, std::size_t farthest) const {
    Match best;
    if (at + hashedBytes > content.size())
        return best;
    std::uint32_t candidate = heads[slot(at)];
    for (unsigned tries = 0; candidate != 0 && tries < mostCandidates && best.length < goodLength; ++tries) {
        const std::size_t earlier = candidate - 1;
        if (at - earlier > farthest)
            break;
        candidate = chain[earlier];
        // A longer match has to agree where the best one so far ends; at the end of the bytes none is longer.
        if (at + best.length >= content.size())
            break;
        if (content[earlier + best.length] != content[at + best.length])
            continue;
        const std::size_t length = commonLength(content, earlier, at);
        if (length >= hashedBytes && length > best.length)
            best = {length, at - earlier};
    }
    return best;
}

} // namespace dwg
