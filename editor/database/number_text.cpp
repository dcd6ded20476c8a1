#include "editor/sdk/db.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <string>

namespace {

constexpr int unitScientific = 1;
constexpr int unitDecimal = 2;
constexpr int highestPrecision = 8;
constexpr int defaultPrecision = 4;

int precisionOf(int precision) {
    if (precision >= 0)
        return precision <= highestPrecision ? precision : highestPrecision;
    const AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    return database != nullptr ? database->luprec() : defaultPrecision;
}

} // namespace

// Scientific and decimal lengths are written; the fractional and feet-and-inches units are refused. charconv keeps the
// decimal point whatever the process's locale says.
int acdbRToS(double value, int unit, int precision, wchar_t* text, std::size_t size) {
    if (text == nullptr || size == 0)
        return RTERROR;
    text[0] = L'\0';
    if ((unit != unitDecimal && unit != unitScientific) || !std::isfinite(value))
        return RTERROR;
    char digits[400] = {};
    const auto format = unit == unitDecimal ? std::chars_format::fixed : std::chars_format::scientific;
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value, format, precisionOf(precision));
    if (error != std::errc() || static_cast<std::size_t>(end - digits) >= size)
        return RTERROR;
    std::transform(&digits[0], end, text, [](char digit) { return digit == 'e' ? L'E' : static_cast<wchar_t>(digit); });
    text[end - digits] = L'\0';
    return RTNORM;
}
