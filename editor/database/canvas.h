#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace editor {

/// A bitmap of colour indices that is drawn on and then stored as an embedded picture. Position (0, 0) is the lower
/// left pixel; what lies outside isn't drawn.
class Canvas {
public:
    struct Position {
        double x = 0, y = 0;
    };

    /// Both sizes from 1 to 4096.
    Canvas(int width, int height);

    int width() const { return columns; }
    int height() const { return rows; }
    std::uint8_t pixel(int x, int y) const;
    /// A line with both ends drawn.
    void line(Position from, Position to, std::uint8_t index);
    /// The inside of a closed polygon, by the even-odd rule.
    void fill(const std::vector<Position>& corners, std::uint8_t index);

    /// The bitmap without file header: a 40-byte header, 256 colours, pixels of a byte each, lowest row first, rows
    /// filled to four bytes. Index 0 is the white background; indices whose colour is white are black, so that they
    /// stand out from it.
    std::string bitmap() const;

private:
    void set(int x, int y, std::uint8_t index);

    int columns, rows;
    std::vector<std::uint8_t> pixels;
};

} // namespace editor
