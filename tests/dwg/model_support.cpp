#include "tests/dwg/model_support.h"

namespace tests {

std::vector<std::filesystem::path> drawingsOf2000() {
    return realDrawings("AC1015");
}

std::string hex(const std::vector<std::uint8_t>& bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
        text += ' ';
    }
    return text;
}

} // namespace tests
