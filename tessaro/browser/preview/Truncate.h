#pragma once

#include <cmath>
#include <cstdint>

/// Toward zero. What is no number, or more than any picture holds, lands far outside of it.
inline std::int64_t Truncate(double value) {
    constexpr double limit = 1e12;
    if (std::isnan(value))
        return static_cast<std::int64_t>(-limit);
    return static_cast<std::int64_t>(std::fmax(-limit, std::fmin(limit, value)));
}
