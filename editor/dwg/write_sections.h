#pragma once

#include "editor/dwg/day_and_time.h"
#include "editor/dwg/handle.h"
#include "editor/dwg/source.h"
#include "editor/dwg/version.h"

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

/// Sections of a flat file of release AC1015 as bytes, each with its own guards and checks; some of them are the same
/// in paged files.
namespace dwg {

/// Where a section of the flat file lies.
struct Locator {
    std::uint8_t number = 0;
    std::uint32_t address = 0;
    std::uint32_t size = 0;
};

/// The numbers of the sections.
namespace locator {
constexpr std::uint8_t headerVariables = 0;
constexpr std::uint8_t classes = 1;
constexpr std::uint8_t objectMap = 2;
constexpr std::uint8_t freeSpace = 3;
constexpr std::uint8_t measurement = 4;
constexpr std::uint8_t auxHeader = 5;
} // namespace locator

constexpr std::size_t locatorCount = 6;
using Locators = std::array<Locator, locatorCount>;

/// Magic, maintenance, image address, code page, locators, check and end guard.
constexpr std::uint32_t fileHeaderSize = 21 + 4 + 9 * locatorCount + 2 + 16;
constexpr std::uint32_t auxHeaderSize = 123;

/// What file header, auxiliary header and second header tell.
struct FileFacts {
    std::uint8_t maintenance = 15;
    std::uint16_t application = 25;
    std::uint16_t codePage = 30;
    std::uint32_t imageAddress = 0;
    DayAndTime created, updated;
    Handle handleSeed = 0;
};

Bytes writeFileHeader(const FileFacts& facts, const Locators& locators);
/// As all releases from 2000 on store it; 2018 has more room for maintenance numbers.
Bytes writeAuxHeader(const FileFacts& facts, Release release = Release::r2000);

/// A section between its guards: length, content, check. For header variables and classes. `wideLength` gives the
/// length its second half.
Bytes writeGuarded(ByteView content, const std::array<std::uint8_t, 16>& begin, const std::array<std::uint8_t, 16>& end,
                   bool wideLength = false);
extern const std::array<std::uint8_t, 16> headerVariablesBegin, headerVariablesEnd, classesBegin, classesEnd;

/// Where an object lies in the file.
using ObjectPlace = std::pair<Handle, std::uint32_t>;

/// Pages of differences of handles and offsets, closed by an empty page. The places are in rising handle order.
Bytes writeObjectMap(const std::vector<ObjectPlace>& places);

/// The handles that the second header repeats, in its order.
constexpr std::size_t secondHeaderHandles = 14;

/// The copy of the locators that lies behind the object map at `address`.
Bytes writeSecondHeader(const FileFacts& facts, const Locators& locators, std::uint32_t address,
                        const std::array<Handle, secondHeaderHandles>& handles);

} // namespace dwg
