#pragma once

#include "editor/dwg/model.h"
#include "tests/dwg/real_drawings.h"

#include <filesystem>
#include <ostream>
#include <vector>

namespace dwg {

inline void PrintTo(const HandleRef& reference, std::ostream* out) {
    *out << int(reference.code) << ":" << std::hex << reference.value << std::dec;
}

} // namespace dwg

namespace tests {

/// The real drawings of release AC1015 beside the checkout; none where the folder is absent.
std::vector<std::filesystem::path> drawingsOf2000();

/// Bytes in hexadecimal, for messages.
std::string hex(const std::vector<std::uint8_t>& bytes);

} // namespace tests
