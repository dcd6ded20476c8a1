#pragma once

#include <cstdint>

namespace dwg {

/// A date as drawings keep it, the Julian day and milliseconds of the day, or a length of time in days and
/// milliseconds.
struct DayAndTime {
    std::uint32_t day = 0;
    std::uint32_t milliseconds = 0;
    bool operator==(const DayAndTime&) const = default;
};

} // namespace dwg
