#pragma once

#include "editor/sdk/db.h"

#include <memory>
#include <string>
#include <vector>

/// The bulge of a quarter of a circle.
constexpr double quarterTurn = 0.41421356;

namespace samples {

struct Corner {
    double x = 0, y = 0;
    double bulge = 0; ///< tangent of a quarter of the arc's angle to the next corner, positive to the left
};

/// A drawing that is made by code: a pen with a current layer over a new database. Lengths are millimetres, angles
/// degrees counter-clockwise from the x axis.
class Sketch {
public:
    explicit Sketch(const std::wstring& comments);
    ~Sketch();
    Sketch(const Sketch&) = delete;
    Sketch& operator=(const Sketch&) = delete;

    /// Makes the layer where it is missing and current for what follows. Linetypes: "Continuous", "DASHED", "CENTER",
    /// "HIDDEN".
    void layer(const std::wstring& name, int colour, const std::wstring& linetype = L"Continuous");
    void line(double x1, double y1, double x2, double y2);
    void circle(double x, double y, double radius);
    void arc(double x, double y, double radius, double from, double to);
    /// `ratio` of the minor to the major axis, the major axis being `length` long from the centre at `angle`.
    void ellipse(double x, double y, double length, double ratio, double angle = 0);
    void point(double x, double y);
    void polyline(const std::vector<Corner>& corners, bool closed);
    void rectangle(double x, double y, double width, double height);
    /// A rectangle with rounded corners.
    void cushion(double x, double y, double width, double height, double radius);
    void text(double x, double y, double height, const std::wstring& words);
    /// The closed polygon whose corners lie on a circle, the first at `angle`.
    void polygon(double x, double y, double radius, int corners, double angle = 0);
    /// A filled triangle.
    void solid(double x1, double y1, double x2, double y2, double x3, double y3);
    /// The point by which the drawing is placed.
    void base(double x, double y);

    /// Saves in that release with an embedded picture. False where it can't be written.
    bool save(const std::wstring& file, AcDb::AcDbDwgVersion release = AcDb::kDHL_1015);

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace samples
