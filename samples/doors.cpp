#include "samples/Library.h"

namespace samples {

namespace {

constexpr double wall = 120; ///< its thickness; the wall lies below the x axis, the opening begins at x = 0
constexpr double leaf = 40;  ///< thickness of a leaf
constexpr double jamb = 50;  ///< width of the frame at each side

void outline(Sketch& s) {
    s.layer(L"DOOR", 30);
}
void swing(Sketch& s) {
    s.layer(L"DOOR-SWING", 8);
}
void hidden(Sketch& s) {
    s.layer(L"DOOR-HIDDEN", 9, L"HIDDEN");
}

void frame(Sketch& s, double width) {
    outline(s);
    s.rectangle(-jamb, -wall, jamb, wall);
    s.rectangle(width, -wall, jamb, wall);
    hidden(s);
    s.line(0, -wall, width, -wall);
    s.base(0, 0);
}

/// A leaf that stands open upwards, with the arc that it turns through.
void openLeaf(Sketch& s, double hinge, double width, bool leftHinge) {
    outline(s);
    s.rectangle(leftHinge ? hinge : hinge - leaf, 0, leaf, width);
    swing(s);
    s.arc(hinge, 0, width, leftHinge ? 0 : 90, leftHinge ? 90 : 180);
}

void single(Sketch& s, double width, bool leftHinge) {
    frame(s, width);
    openLeaf(s, leftHinge ? 0 : width, width, leftHinge);
}

void twoLeaves(Sketch& s, double width) {
    frame(s, width);
    openLeaf(s, 0, width / 2, true);
    openLeaf(s, width, width / 2, false);
}

void sliding(Sketch& s, double width) {
    frame(s, width);
    outline(s);
    s.rectangle(-0.3 * width, -wall / 2 - leaf / 2, width, leaf);
    hidden(s);
    s.rectangle(-width - jamb, -wall / 2 - leaf, width + jamb, 2 * leaf);
    swing(s);
    s.line(0.75 * width, 60, 0.95 * width, 60);
    s.line(0.95 * width, 60, 0.89 * width, 90);
    s.line(0.95 * width, 60, 0.89 * width, 30);
}

void folding(Sketch& s, double width) {
    constexpr int panels = 4;
    frame(s, width);
    outline(s);
    const double step = width * 0.7 / panels, depth = width / panels * 0.7;
    for (int panel = 0; panel < panels; ++panel) {
        const bool up = panel % 2 == 0;
        s.line(step * panel, up ? 0 : depth, step * (panel + 1), up ? depth : 0);
    }
    hidden(s);
    s.line(0, 0, width, 0);
}

void revolving(Sketch& s, double width) {
    const double radius = width / 2;
    outline(s);
    s.arc(radius, 0, radius, 135, 225);
    s.arc(radius, 0, radius, -45, 45);
    s.arc(radius, 0, radius + jamb, 135, 225);
    s.arc(radius, 0, radius + jamb, -45, 45);
    swing(s);
    for (const double side : {-0.707, 0.707})
        s.line(radius - side * radius, -0.707 * radius, radius + side * radius, 0.707 * radius);
    s.circle(radius, 0, leaf);
    s.base(0, 0);
}

void garage(Sketch& s, double width) {
    frame(s, width);
    outline(s);
    s.rectangle(0, -leaf, width, leaf);
    hidden(s);
    s.rectangle(0, 0, width, 2200);
    swing(s);
    for (const double x : {0.0, width})
        s.line(x, 0, x, 2200);
}

} // namespace

Folder doors() {
    Folder folder{"doors", L"DOOR", AcDb::kDHL_1027, {}};
    const auto add = [&folder](const std::wstring& kind, int width, const std::wstring& ending,
                               const std::wstring& words, std::function<void(Sketch&)> draw) {
        const std::wstring number = std::to_wstring(width);
        folder.recipes.push_back(
            {L"Door-" + kind + number + ending, words + L", clear width " + number, std::move(draw)});
    };
    for (const int width : {700, 800, 900, 1000, 1100, 1200}) {
        add(L"", width, L"", L"Door, hinges left", [width](Sketch& s) { single(s, width, true); });
        add(L"", width, L"-Right", L"Door, hinges right", [width](Sketch& s) { single(s, width, false); });
    }
    for (const int width : {1400, 1600, 1800})
        add(L"Double-", width, L"", L"Double door", [width](Sketch& s) { twoLeaves(s, width); });
    for (const int width : {900, 1200})
        add(L"Sliding-", width, L"", L"Sliding door into the wall", [width](Sketch& s) { sliding(s, width); });
    for (const int width : {900, 1800})
        add(L"Folding-", width, L"", L"Folding door, four panels", [width](Sketch& s) { folding(s, width); });
    add(L"Revolving-", 2400, L"", L"Revolving door, two wings", [](Sketch& s) { revolving(s, 2400); });
    for (const int width : {2500, 5000})
        add(L"Garage-", width, L"", L"Garage door, opens overhead", [width](Sketch& s) { garage(s, width); });
    return folder;
}

} // namespace samples
