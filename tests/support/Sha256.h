#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace tests {

/// SHA-256 in lower-case hexadecimal digits.
std::string sha256(std::span<const std::uint8_t> bytes);

} // namespace tests
