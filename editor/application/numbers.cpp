#include "editor/application/numbers.h"

#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace editor {

namespace {

std::optional<std::string> narrowed(std::wstring_view text) {
    std::string narrow;
    for (const wchar_t character : text) {
        if (character <= 0 || character > 0x7E)
            return std::nullopt;
        narrow += static_cast<char>(character);
    }
    if (narrow.size() > 1 && narrow[0] == '+' && narrow[1] != '-' && narrow[1] != '+')
        narrow.erase(0, 1);
    return narrow;
}

template <class Number> std::optional<Number> parsed(std::wstring_view text) {
    const auto narrow = narrowed(text);
    if (!narrow || narrow->empty())
        return std::nullopt;
    Number value{};
    const char* const last = narrow->data() + narrow->size();
    const auto [end, error] = std::from_chars(narrow->data(), last, value);
    if (error != std::errc() || end != last)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<double> parseNumber(std::wstring_view text) {
    const auto value = parsed<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<long> parseWholeNumber(std::wstring_view text) {
    return parsed<long>(text);
}

std::optional<AcGePoint3d> parsePoint(std::wstring_view text, const AcGePoint3d& lastPoint) {
    const bool relative = !text.empty() && text[0] == L'@';
    if (relative)
        text.remove_prefix(1);
    if (relative && text.empty())
        return lastPoint;
    const AcGePoint3d from = relative ? lastPoint : AcGePoint3d();

    if (const auto angleMark = text.find(L'<'); angleMark != std::wstring_view::npos) {
        const auto distance = parseNumber(text.substr(0, angleMark));
        const auto angle = parseNumber(text.substr(angleMark + 1));
        if (!distance || !angle)
            return std::nullopt;
        return AcGePoint3d{from.x + *distance * std::cos(radians(*angle)),
                           from.y + *distance * std::sin(radians(*angle)), from.z};
    }

    std::vector<double> coordinates;
    while (true) {
        const auto comma = text.find(L',');
        const auto coordinate = parseNumber(text.substr(0, comma));
        if (!coordinate || coordinates.size() == 3)
            return std::nullopt;
        coordinates.push_back(*coordinate);
        if (comma == std::wstring_view::npos)
            break;
        text.remove_prefix(comma + 1);
    }
    if (coordinates.size() < 2)
        return std::nullopt;
    return AcGePoint3d{from.x + coordinates[0], from.y + coordinates[1],
                       from.z + (coordinates.size() == 3 ? coordinates[2] : 0)};
}

} // namespace editor
