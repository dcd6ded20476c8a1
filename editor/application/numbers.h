#pragma once

#include "editor/sdk/ge.h"

#include <optional>
#include <string_view>

/// Numbers and points as they are typed: always with a decimal point.
namespace editor {

/// A whole text as a number; a leading plus sign is accepted, "inf" and "nan" are not.
std::optional<double> parseNumber(std::wstring_view text);
std::optional<long> parseWholeNumber(std::wstring_view text);

/// "x,y" or "x,y,z"; "@x,y" from the last point; "d<a" by distance and angle in degrees; "@" alone is the last point.
/// A missing z is 0, or the last point's for a relative point.
std::optional<AcGePoint3d> parsePoint(std::wstring_view text, const AcGePoint3d& lastPoint);

constexpr double pi = 3.14159265358979323846;
constexpr double radians(double degrees) {
    return degrees * pi / 180;
}
constexpr double degrees(double radians) {
    return radians * 180 / pi;
}

} // namespace editor
