#include "editor/dwg/write_sections.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/version.h"

#include <limits>

namespace dwg {

namespace {

using Guard = std::array<std::uint8_t, 16>;

constexpr Guard fileHeaderEnd = {0x95, 0xA0, 0x4E, 0x28, 0x99, 0x82, 0x1A, 0xE5,
                                 0x5E, 0x41, 0xE0, 0x5F, 0x9D, 0x3A, 0x4D, 0x00};
constexpr Guard secondHeaderBegin = {0xD4, 0x7B, 0x21, 0xCE, 0x28, 0x93, 0x9F, 0xBF,
                                     0x53, 0x24, 0x40, 0x09, 0x12, 0x3C, 0xAA, 0x01};
constexpr Guard secondHeaderEnd = {0x2B, 0x84, 0xDE, 0x31, 0xD7, 0x6C, 0x60, 0x40,
                                   0xAC, 0xDB, 0xBF, 0xF6, 0xED, 0xC3, 0x55, 0xFE};

/// The file header's check is combined with a number that depends on how many locators there are.
constexpr std::uint16_t checkMaskOfSixLocators = 0x8461;

/// A page of the object map holds at most this many bytes, its own length of two bytes included.
constexpr std::size_t mapPageLimit = 2032;
/// The longest spelling of a pair of differences.
constexpr std::size_t longestPair = 16;

void appendMagic(BitWriter& out) {
    for (const char letter : magicOf(Release::r2000))
        out.rc(static_cast<std::uint8_t>(letter));
}

void appendReversed(Bytes& out, std::uint16_t value) {
    out.push_back(static_cast<std::uint8_t>(value >> 8));
    out.push_back(static_cast<std::uint8_t>(value & 0xFF));
}

} // namespace

const Guard headerVariablesBegin = {0xCF, 0x7B, 0x1F, 0x23, 0xFD, 0xDE, 0x38, 0xA9,
                                    0x5F, 0x7C, 0x68, 0xB8, 0x4E, 0x6D, 0x33, 0x5F};
const Guard headerVariablesEnd = {0x30, 0x84, 0xE0, 0xDC, 0x02, 0x21, 0xC7, 0x56,
                                  0xA0, 0x83, 0x97, 0x47, 0xB1, 0x92, 0xCC, 0xA0};
const Guard classesBegin = {0x8D, 0xA1, 0xC4, 0xB8, 0xC4, 0xA9, 0xF8, 0xC5,
                            0xC0, 0xDC, 0xF4, 0x5F, 0xE7, 0xCF, 0xB6, 0x8A};
const Guard classesEnd = {0x72, 0x5E, 0x3B, 0x47, 0x3B, 0x56, 0x07, 0x3A,
                          0x3F, 0x23, 0x0B, 0xA0, 0x18, 0x30, 0x49, 0x75};

Bytes writeFileHeader(const FileFacts& facts, const Locators& locators) {
    BitWriter out;
    appendMagic(out);
    out.append(Bytes(5, 0));
    out.rc(facts.maintenance);
    out.rc(1);
    out.rl(facts.imageAddress);
    out.rs(facts.application);
    out.rs(facts.codePage);
    out.rl(static_cast<std::uint32_t>(locators.size()));
    for (const Locator& locator : locators) {
        out.rc(locator.number);
        out.rl(locator.address);
        out.rl(locator.size);
    }
    out.rs(crc16(out.bytes(), 0) ^ checkMaskOfSixLocators);
    out.append(fileHeaderEnd);
    return out.bytes();
}

// The numbers that aren't facts of the drawing are what programs of this release write.
Bytes writeAuxHeader(const FileFacts& facts, Release release) {
    BitWriter out;
    for (const std::uint8_t mark : {0xFF, 0x77, 0x01})
        out.rc(mark);
    const auto releaseAndMaintenance = [&](std::uint16_t number, std::uint16_t maintenance) {
        out.rs(number);
        out.rs(maintenance);
        if (release >= Release::r2018)
            out.rs(0);
    };
    releaseAndMaintenance(facts.application, 0);
    constexpr std::uint32_t saves = 1;
    out.rl(saves);
    out.rl(std::numeric_limits<std::uint32_t>::max());
    out.rs(saves);
    out.rs(0);
    out.rl(0);
    constexpr std::uint16_t drawn = 0x16, drawnMaintenance = 0x2E;
    releaseAndMaintenance(drawn, drawnMaintenance);
    releaseAndMaintenance(drawn, drawnMaintenance);
    for (const std::uint16_t number : {0x04, 0x0565, 0x05, 0x0893, 0, 1})
        out.rs(number);
    out.append(Bytes(20, 0));
    for (const DayAndTime& date : {facts.created, facts.updated}) {
        out.rl(date.day);
        out.rl(date.milliseconds);
    }
    constexpr Handle largestSeed = 0x7FFFFFFF;
    out.rl(facts.handleSeed < largestSeed ? static_cast<std::uint32_t>(facts.handleSeed)
                                          : std::numeric_limits<std::uint32_t>::max());
    out.rl(0);
    out.rs(0);
    out.rs(saves);
    for (const std::uint32_t number : {0u, 0u, 0u, saves, 0u, 0u, 0u, 0u})
        out.rl(number);
    constexpr std::size_t moreFrom2018 = 6;
    Bytes bytes = out.bytes();
    bytes.resize(auxHeaderSize + (release >= Release::r2018 ? moreFrom2018 : 0));
    return bytes;
}

Bytes writeGuarded(ByteView content, const Guard& begin, const Guard& end, bool wideLength) {
    BitWriter checked;
    checked.rl(static_cast<std::uint32_t>(content.size()));
    if (wideLength)
        checked.rl(0);
    checked.append(content);
    BitWriter out;
    out.append(begin);
    out.append(checked.bytes());
    out.rs(crc16(checked.bytes()));
    out.append(end);
    return out.bytes();
}

Bytes writeObjectMap(const std::vector<ObjectPlace>& places) {
    Bytes out;
    BitWriter page;
    ObjectPlace last{0, 0};
    const auto finishPage = [&] {
        Bytes whole;
        appendReversed(whole, static_cast<std::uint16_t>(page.bytes().size() + 2));
        whole.insert(whole.end(), page.bytes().begin(), page.bytes().end());
        appendReversed(whole, crc16(whole));
        out.insert(out.end(), whole.begin(), whole.end());
        page = {};
        last = {0, 0};
    };
    for (const ObjectPlace& place : places) {
        if (page.bytes().size() + 2 + longestPair > mapPageLimit)
            finishPage();
        page.umc(static_cast<std::uint32_t>(place.first - last.first));
        page.mc(static_cast<std::int32_t>(place.second - last.second));
        last = place;
    }
    if (!page.bytes().empty())
        finishPage();
    finishPage();
    return out;
}

Bytes writeSecondHeader(const FileFacts& facts, const Locators& locators, std::uint32_t address,
                        const std::array<Handle, secondHeaderHandles>& handles) {
    BitWriter content;
    content.bl(address);
    appendMagic(content);
    content.append(Bytes(5, 0));
    content.rc(facts.maintenance);
    content.rc(1);
    content.bs(facts.application);
    content.rs(facts.codePage);
    content.bs(static_cast<std::uint16_t>(locators.size()));
    for (const Locator& locator : locators) {
        // The place of the measurement isn't repeated.
        const bool repeated = locator.number != locator::measurement && locator.number != locator::freeSpace;
        content.rc(locator.number);
        content.bl(repeated ? locator.address : 0);
        content.bl(repeated ? locator.size : 0);
    }
    content.bs(static_cast<std::uint16_t>(handles.size()));
    for (std::size_t number = 0; number < handles.size(); ++number) {
        Bytes digits;
        for (Handle rest = handles[number]; rest != 0; rest >>= 8)
            digits.insert(digits.begin(), static_cast<std::uint8_t>(rest & 0xFF));
        content.rc(static_cast<std::uint8_t>(digits.size()));
        content.rc(static_cast<std::uint8_t>(number));
        content.append(digits);
    }
    content.alignToByte();

    // The length counts itself, the content, the check and eight closing bytes.
    BitWriter checked;
    checked.rl(static_cast<std::uint32_t>(4 + content.bytes().size() + 2 + 8));
    checked.append(content.bytes());
    BitWriter out;
    out.append(secondHeaderBegin);
    out.append(checked.bytes());
    out.rs(crc16(checked.bytes()));
    out.append(Bytes(8, 0));
    out.append(secondHeaderEnd);
    return out.bytes();
}

} // namespace dwg
