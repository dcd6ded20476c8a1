#include "editor/database/canvas.h"

#include "editor/database/colours.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace editor {

namespace {

constexpr int largestSide = 4096;
constexpr std::uint32_t headerSize = 40;
constexpr std::uint32_t paletteSize = 256;

void append16(std::string& bytes, std::uint32_t value) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8 & 0xFF);
}

void append32(std::string& bytes, std::uint32_t value) {
    append16(bytes, value & 0xFFFF);
    append16(bytes, value >> 16);
}

/// The part of a line inside the rectangle from (0, 0) to (width, height), by cutting its parameter range at each side.
std::optional<std::pair<Canvas::Position, Canvas::Position>> clipped(Canvas::Position from, Canvas::Position to,
                                                                     double width, double height) {
    double first = 0, last = 1;
    const double dx = to.x - from.x, dy = to.y - from.y;
    const auto cut = [&](double step, double room) {
        if (step == 0)
            return room >= 0;
        const double at = room / step;
        if (step < 0)
            first = std::max(first, at);
        else
            last = std::min(last, at);
        return first <= last;
    };
    if (!cut(-dx, from.x) || !cut(dx, width - from.x) || !cut(-dy, from.y) || !cut(dy, height - from.y))
        return std::nullopt;
    return std::pair{Canvas::Position{from.x + first * dx, from.y + first * dy},
                     Canvas::Position{from.x + last * dx, from.y + last * dy}};
}

} // namespace

Canvas::Canvas(int width, int height)
    : columns(std::clamp(width, 1, largestSide)), rows(std::clamp(height, 1, largestSide)),
      pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

std::uint8_t Canvas::pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= columns || y >= rows)
        return 0;
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(x)];
}

void Canvas::set(int x, int y, std::uint8_t index) {
    if (x >= 0 && y >= 0 && x < columns && y < rows)
        pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(x)] = index;
}

void Canvas::line(Position from, Position to, std::uint8_t index) {
    if (!std::isfinite(from.x + from.y + to.x + to.y))
        return;
    const auto inside = clipped(from, to, columns - 1, rows - 1);
    if (!inside)
        return;
    const auto [start, stop] = *inside;
    const int steps = static_cast<int>(std::ceil(std::max(std::abs(stop.x - start.x), std::abs(stop.y - start.y))));
    for (int step = 0; step <= steps; ++step) {
        const double part = steps == 0 ? 0 : static_cast<double>(step) / steps;
        set(static_cast<int>(std::lround(start.x + (stop.x - start.x) * part)),
            static_cast<int>(std::lround(start.y + (stop.y - start.y) * part)), index);
    }
}

void Canvas::fill(const std::vector<Position>& corners, std::uint8_t index) {
    std::vector<double> crossings;
    for (int row = 0; row < rows; ++row) {
        crossings.clear();
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const Position a = corners[i], b = corners[(i + 1) % corners.size()];
            if ((a.y <= row) != (b.y <= row))
                crossings.push_back(a.x + (row - a.y) * (b.x - a.x) / (b.y - a.y));
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const double first = std::clamp(std::ceil(crossings[i]), 0.0, static_cast<double>(columns));
            const double last = std::clamp(std::floor(crossings[i + 1]), -1.0, static_cast<double>(columns - 1));
            for (int x = static_cast<int>(first); x <= static_cast<int>(last); ++x)
                set(x, row, index);
        }
    }
}

std::string Canvas::bitmap() const {
    const std::size_t stride = (static_cast<std::size_t>(columns) + 3) / 4 * 4;
    std::string bytes;
    bytes.reserve(headerSize + paletteSize * 4 + stride * static_cast<std::size_t>(rows));
    append32(bytes, headerSize);
    append32(bytes, static_cast<std::uint32_t>(columns));
    append32(bytes, static_cast<std::uint32_t>(rows));
    append16(bytes, 1);
    append16(bytes, 8);
    append32(bytes, 0);
    append32(bytes, static_cast<std::uint32_t>(stride * static_cast<std::size_t>(rows)));
    append32(bytes, 0);
    append32(bytes, 0);
    append32(bytes, paletteSize);
    append32(bytes, 0);
    constexpr Rgb white = {255, 255, 255};
    for (std::uint32_t index = 0; index < paletteSize; ++index) {
        Rgb colour = colourOfIndex(static_cast<std::uint16_t>(index));
        if (index == 0)
            colour = white;
        else if (colour == white)
            colour = {};
        append32(bytes, static_cast<std::uint32_t>(colour.red << 16 | colour.green << 8 | colour.blue));
    }
    for (int row = 0; row < rows; ++row) {
        const auto first = pixels.begin() + static_cast<std::ptrdiff_t>(row) * columns;
        bytes.append(first, first + columns);
        bytes.append(stride - static_cast<std::size_t>(columns), '\0');
    }
    return bytes;
}

} // namespace editor
