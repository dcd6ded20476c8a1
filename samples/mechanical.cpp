#include "samples/Library.h"

#include <cmath>
#include <numbers>

namespace samples {

namespace {

constexpr double pi = std::numbers::pi;

void object(Sketch& s) {
    s.layer(L"M-OBJECT", 7);
}
void center(Sketch& s) {
    s.layer(L"M-CENTER", 1, L"CENTER");
}
void hidden(Sketch& s) {
    s.layer(L"M-HIDDEN", 4, L"HIDDEN");
}
void thread(Sketch& s) {
    s.layer(L"M-THREAD", 30);
}

void cross(Sketch& s, double radius) {
    center(s);
    s.line(-radius, 0, radius, 0);
    s.line(0, -radius, 0, radius);
}

/// Measures of a metric thread's parts.
struct Thread {
    int size;
    double acrossFlats, head, washerHole, washer;
    double core() const { return size * 0.425; } ///< radius at the thread's ground
};

void hexagonTop(Sketch& s, const Thread& t) {
    object(s);
    s.polygon(0, 0, t.acrossFlats / std::sqrt(3.0), 6);
    s.circle(0, 0, t.acrossFlats * 0.48);
    cross(s, t.acrossFlats * 0.72);
    s.base(0, 0);
}

/// Five times as long as it is wide; the thread takes its outer half.
void boltSide(Sketch& s, const Thread& t) {
    const double radius = t.size / 2.0, length = 5.0 * t.size, half = t.acrossFlats / std::sqrt(3.0);
    object(s);
    s.rectangle(-t.head, -half, t.head, 2 * half);
    s.line(-t.head, -half / 2, 0, -half / 2);
    s.line(-t.head, half / 2, 0, half / 2);
    s.polyline({{0, -radius},
                {length - 1, -radius},
                {length, 1 - radius},
                {length, radius - 1},
                {length - 1, radius},
                {0, radius}},
               false);
    s.line(length / 2, -radius, length / 2, radius);
    thread(s);
    s.line(length / 2, -t.core(), length, -t.core());
    s.line(length / 2, t.core(), length, t.core());
    center(s);
    s.line(-t.head - 4, 0, length + 4, 0);
    s.base(0, 0);
}

void nut(Sketch& s, const Thread& t) {
    hexagonTop(s, t);
    object(s);
    s.circle(0, 0, t.core());
    thread(s);
    s.arc(0, 0, t.size / 2.0, 0, 270);
}

void washer(Sketch& s, const Thread& t) {
    object(s);
    s.circle(0, 0, t.washer / 2);
    s.circle(0, 0, t.washerHole / 2);
    cross(s, t.washer * 0.62);
    s.base(0, 0);
}

struct Bearing {
    int number;
    double bore, outer;
};

void bearing(Sketch& s, const Bearing& b) {
    const double wall = (b.outer - b.bore) / 2, middle = (b.outer + b.bore) / 4;
    object(s);
    for (const double radius : {b.outer / 2, b.outer / 2 - wall / 3, b.bore / 2 + wall / 3, b.bore / 2})
        s.circle(0, 0, radius);
    for (int ball = 0; ball < 9; ++ball)
        s.circle(middle * std::cos(2 * pi * ball / 9), middle * std::sin(2 * pi * ball / 9), wall * 0.26);
    center(s);
    s.circle(0, 0, middle);
    cross(s, b.outer * 0.58);
    s.base(0, 0);
}

void spring(Sketch& s) {
    object(s);
    std::vector<Corner> wire;
    for (int turn = 0; turn <= 8; ++turn) {
        wire.push_back({turn * 10.0, -12, 0});
        wire.push_back({turn * 10.0 + 5, 12, 0});
    }
    s.polyline(wire, false);
    for (const Corner& bend : wire)
        s.circle(bend.x, bend.y, 1.5);
    center(s);
    s.line(-6, 0, 91, 0);
    s.base(0, 0);
}

/// Of module 4: the pitch circle's radius is twice the number of teeth.
void gear(Sketch& s, int teeth) {
    const double pitch = 2.0 * teeth, ground = pitch - 5, head = pitch + 4;
    object(s);
    std::vector<Corner> corners;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double angle = 2 * pi * tooth / teeth;
        for (const auto& [offset, radius] : {std::pair{-0.30, ground}, {-0.15, head}, {0.15, head}, {0.30, ground}}) {
            const double at = angle + 2 * pi / teeth * offset;
            corners.push_back({radius * std::cos(at), radius * std::sin(at), 0});
        }
    }
    s.polyline(corners, true);
    s.polyline({{3, std::sqrt(91.0), 0}, {3, 12.5, 0}, {-3, 12.5, 0}, {-3, std::sqrt(91.0), 0}}, false);
    s.arc(0, 0, 10, 107.458, 72.542);
    s.circle(0, 0, 16);
    center(s);
    s.circle(0, 0, pitch);
    cross(s, head + 6);
    s.base(0, 0);
}

void flange(Sketch& s) {
    object(s);
    s.circle(0, 0, 75);
    s.circle(0, 0, 30);
    for (int hole = 0; hole < 6; ++hole)
        s.circle(55 * std::cos(pi / 3 * hole), 55 * std::sin(pi / 3 * hole), 7);
    hidden(s);
    s.circle(0, 0, 38);
    center(s);
    s.circle(0, 0, 55);
    cross(s, 82);
    s.base(0, 0);
}

void key(Sketch& s) {
    object(s);
    s.polyline({{0, -5, 0}, {30, -5, 1}, {30, 5, 0}, {0, 5, 1}}, true);
    center(s);
    s.line(-9, 0, 39, 0);
    s.base(15, 0);
}

void pulley(Sketch& s) {
    object(s);
    s.circle(0, 0, 60);
    s.circle(0, 0, 52);
    s.circle(0, 0, 18);
    s.circle(0, 0, 10);
    for (int spoke = 0; spoke < 5; ++spoke) {
        const double angle = 2 * pi * spoke / 5 + pi / 2;
        for (const double side : {-0.09, 0.09})
            s.line(18 * std::cos(angle + side * 2), 18 * std::sin(angle + side * 2), 52 * std::cos(angle + side),
                   52 * std::sin(angle + side));
    }
    hidden(s);
    s.circle(0, 0, 56);
    cross(s, 66);
    s.base(0, 0);
}

/// A rolled section with flanges, rounded where they meet the web.
void beam(Sketch& s, double height, double width, double web, double flange, double round) {
    const double x = width / 2, y = height / 2, inner = y - flange, w = web / 2;
    object(s);
    s.polyline({{-x, -y},
                {x, -y},
                {x, -inner},
                {w + round, -inner, -quarterTurn},
                {w, round - inner},
                {w, inner - round, -quarterTurn},
                {w + round, inner},
                {x, inner},
                {x, y},
                {-x, y},
                {-x, inner},
                {-w - round, inner, -quarterTurn},
                {-w, inner - round},
                {-w, round - inner, -quarterTurn},
                {-w - round, -inner},
                {-x, -inner}},
               true);
    center(s);
    s.line(0, -y - 10, 0, y + 10);
    s.base(0, -y);
}

void angleSection(Sketch& s) {
    object(s);
    s.polyline({{0, 0, 0},
                {60, 0, 0},
                {60, 3, quarterTurn},
                {57, 6, 0},
                {14, 6, -quarterTurn},
                {6, 14, 0},
                {6, 57, quarterTurn},
                {3, 60, 0},
                {0, 60, 0}},
               true);
    s.base(0, 0);
}

void elbow(Sketch& s) {
    object(s);
    s.arc(0, 0, 70, 0, 90);
    s.arc(0, 0, 30, 0, 90);
    s.line(30, 0, 70, 0);
    s.line(0, 30, 0, 70);
    s.rectangle(25, -8, 50, 8);
    s.rectangle(-8, 25, 8, 50);
    hidden(s);
    s.arc(0, 0, 66, 0, 90);
    s.arc(0, 0, 34, 0, 90);
    center(s);
    s.arc(0, 0, 50, 0, 90);
    s.base(50, -8);
}

void oval(Sketch& s) {
    object(s);
    s.ellipse(0, 0, 60, 0.5);
    s.ellipse(0, 0, 45, 0.4);
    s.circle(-50, 0, 4);
    s.circle(50, 0, 4);
    cross(s, 68);
    s.point(0, 0);
    s.base(0, 0);
}

} // namespace

Folder mechanical() {
    constexpr Thread threads[] = {{8, 13, 5.3, 8.4, 16},
                                  {10, 16, 6.4, 10.5, 20},
                                  {12, 18, 7.5, 13, 24},
                                  {16, 24, 10, 17, 30},
                                  {20, 30, 12.5, 21, 37}};
    constexpr Bearing bearings[] = {{6204, 20, 47}, {6206, 30, 62}, {6208, 40, 80}};
    Folder folder{"mechanical", L"M-", AcDb::kDHL_1021, {}};
    const auto add = [&folder](const std::wstring& name, const std::wstring& words, std::function<void(Sketch&)> draw) {
        folder.recipes.push_back({name, words, std::move(draw)});
    };
    for (const Thread& t : threads) {
        const std::wstring size = L"M" + std::to_wstring(t.size), length = std::to_wstring(5 * t.size);
        add(L"BOLT-" + size + L"-SIDE", L"Hexagon bolt " + size + L" x " + length + L", side view",
            [t](Sketch& s) { boltSide(s, t); });
        add(L"BOLT-" + size + L"-TOP", L"Hexagon bolt " + size + L", top view", [t](Sketch& s) { hexagonTop(s, t); });
        add(L"NUT-" + size, L"Hexagon nut " + size, [t](Sketch& s) { nut(s, t); });
        add(L"WASHER-" + size, L"Plain washer " + size, [t](Sketch& s) { washer(s, t); });
    }
    for (const Bearing& b : bearings)
        add(L"BEARING-" + std::to_wstring(b.number),
            L"Ball bearing " + std::to_wstring(int(b.bore)) + L" x " + std::to_wstring(int(b.outer)),
            [b](Sketch& s) { bearing(s, b); });
    for (const int teeth : {24, 36})
        add(L"GEAR-" + std::to_wstring(teeth), L"Spur gear, " + std::to_wstring(teeth) + L" teeth, module 4",
            [teeth](Sketch& s) { gear(s, teeth); });
    add(L"BEAM-200", L"Beam section, height 200", [](Sketch& s) { beam(s, 200, 100, 5.6, 8.5, 12); });
    add(L"BEAM-300", L"Beam section, height 300", [](Sketch& s) { beam(s, 300, 150, 7.1, 10.7, 15); });
    add(L"ANGLE-60x6", L"Angle section 60 x 60 x 6", angleSection);
    add(L"COVER-OVAL", L"Oval cover with two holes", oval);
    add(L"ELBOW-DN40", L"Pipe elbow 90 degrees with sockets", elbow);
    add(L"FLANGE-DN60", L"Flange with six holes", flange);
    add(L"KEY-10x40", L"Parallel key 10 x 40, round ends", key);
    add(L"PULLEY-120", L"Belt pulley, diameter 120, five spokes", pulley);
    add(L"SPRING", L"Compression spring, nine turns", spring);
    return folder;
}

} // namespace samples
