#include "tessaro/platform/Text.h"

#include "tessaro/platform/CaseTables.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace platform {
namespace {

bool IsSpace(wchar_t c) {
    return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

std::wstring_view WithoutLeadingSpace(std::wstring_view text) {
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    return text;
}

/// True for minus; takes the sign off.
bool TakeSign(std::wstring_view& text) {
    if (text.empty() || (text.front() != L'-' && text.front() != L'+'))
        return false;
    const bool minus = text.front() == L'-';
    text.remove_prefix(1);
    return minus;
}

std::size_t CountDigits(std::wstring_view text) {
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count]))
        ++count;
    return count;
}

/// A number too great or too small for a double: the decimal place of its first digit other than 0 tells which.
double Beyond(const std::string& number) {
    const std::size_t mark = number.find('e');
    const std::string digits = number.substr(0, mark);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_of("123456789");
    if (first == std::string::npos)
        return 0;
    const bool negativeExponent = mark != std::string::npos && number[mark + 1] == '-';
    long long exponent = negativeExponent ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    if (mark == std::string::npos)
        exponent = 0;
    else
        std::from_chars(number.data() + mark + 1, number.data() + number.size(), exponent);
    return static_cast<long long>(point) - static_cast<long long>(first) + exponent > 0 ? HUGE_VAL : 0;
}

} // namespace

std::wstring ToUpper(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& c : result)
        c = UpperCharacter(c);
    return result;
}

std::wstring ToLower(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& c : result)
        c = LowerCharacter(c);
    return result;
}

int CompareNoCase(std::wstring_view a, std::wstring_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const wchar_t left = LowerCharacter(a[i]), right = LowerCharacter(b[i]);
        if (left != right)
            return left < right ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

std::wstring Trim(std::wstring_view text) {
    text = WithoutLeadingSpace(text);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return std::wstring(text);
}

int ToInt(std::wstring_view text) {
    text = WithoutLeadingSpace(text);
    const bool minus = TakeSign(text);
    constexpr std::int64_t limit = std::int64_t{1} << 31;
    std::int64_t value = 0;
    for (; !text.empty() && IsDigit(text.front()) && value <= limit; text.remove_prefix(1))
        value = value * 10 + (text.front() - L'0');
    return static_cast<int>(minus ? -std::min(value, limit) : std::min(value, limit - 1));
}

double ToReal(std::wstring_view text) {
    text = WithoutLeadingSpace(text);
    const bool minus = TakeSign(text);
    std::size_t length = CountDigits(text);
    std::size_t digits = length;
    if (length < text.size() && text[length] == L'.') {
        const std::size_t behind = CountDigits(text.substr(length + 1));
        digits += behind;
        length += 1 + behind;
    }
    if (digits == 0)
        return 0;
    if (length < text.size() && (text[length] == L'e' || text[length] == L'E')) {
        std::wstring_view exponent = text.substr(length + 1);
        const std::size_t whole = exponent.size();
        TakeSign(exponent);
        if (const std::size_t count = CountDigits(exponent))
            length += 1 + (whole - exponent.size()) + count;
    }
    std::string number;
    for (const wchar_t c : text.substr(0, length))
        if (c != L'+')
            number += c == L'E' ? 'e' : static_cast<char>(c);
    double value = 0;
    if (std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc::result_out_of_range)
        value = Beyond(number);
    return minus ? -value : value;
}

} // namespace platform
