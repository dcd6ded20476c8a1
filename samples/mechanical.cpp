#include "samples/Sketch.h"

#include <cmath>
#include <numbers>

namespace samples {

namespace {

constexpr double pi = std::numbers::pi;

void object(Sketch& s) {
    s.layer(L"OBJECT", 7);
}
void center(Sketch& s) {
    s.layer(L"CENTER", 1, L"CENTER");
}
void hidden(Sketch& s) {
    s.layer(L"HIDDEN", 4, L"HIDDEN");
}
void thread(Sketch& s) {
    s.layer(L"THREAD", 30);
}

void cross(Sketch& s, double radius) {
    center(s);
    s.line(-radius, 0, radius, 0);
    s.line(0, -radius, 0, radius);
}

void hexagon(Sketch& s, double acrossFlats) {
    const double radius = acrossFlats / std::sqrt(3.0);
    std::vector<Corner> corners;
    for (int i = 0; i < 6; ++i)
        corners.push_back({radius * std::cos(pi / 3 * i), radius * std::sin(pi / 3 * i), 0});
    s.polyline(corners, true);
}

void boltTop(Sketch& s) {
    object(s);
    hexagon(s, 18);
    s.circle(0, 0, 8.6);
    cross(s, 13);
    s.base(0, 0);
}

void boltSide(Sketch& s) {
    object(s);
    s.rectangle(-7.5, -10.4, 7.5, 20.8);
    s.line(-7.5, -5.2, 0, -5.2);
    s.line(-7.5, 5.2, 0, 5.2);
    s.polyline({{0, -6, 0}, {59, -6, 0}, {60, -5, 0}, {60, 5, 0}, {59, 6, 0}, {0, 6, 0}}, false);
    s.line(30, -6, 30, 6);
    thread(s);
    s.line(30, -5.1, 60, -5.1);
    s.line(30, 5.1, 60, 5.1);
    center(s);
    s.line(-11, 0, 64, 0);
    s.base(0, 0);
}

void nut(Sketch& s) {
    object(s);
    hexagon(s, 18);
    s.circle(0, 0, 8.6);
    s.circle(0, 0, 5.1);
    thread(s);
    s.arc(0, 0, 6, 0, 270);
    cross(s, 13);
    s.base(0, 0);
}

void washer(Sketch& s) {
    object(s);
    s.circle(0, 0, 12);
    s.circle(0, 0, 6.5);
    cross(s, 15);
    s.base(0, 0);
}

void bearing(Sketch& s) {
    object(s);
    s.circle(0, 0, 31);
    s.circle(0, 0, 26);
    s.circle(0, 0, 20);
    s.circle(0, 0, 15);
    for (int ball = 0; ball < 9; ++ball)
        s.circle(23 * std::cos(2 * pi * ball / 9), 23 * std::sin(2 * pi * ball / 9), 4.2);
    center(s);
    s.circle(0, 0, 23);
    cross(s, 36);
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

void gear(Sketch& s) {
    constexpr int teeth = 24;
    object(s);
    std::vector<Corner> corners;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double angle = 2 * pi * tooth / teeth;
        for (const auto& [offset, radius] : {std::pair{-0.30, 43.0}, {-0.15, 52.0}, {0.15, 52.0}, {0.30, 43.0}}) {
            const double at = angle + 2 * pi / teeth * offset;
            corners.push_back({radius * std::cos(at), radius * std::sin(at), 0});
        }
    }
    s.polyline(corners, true);
    s.polyline({{3, std::sqrt(91.0), 0}, {3, 12.5, 0}, {-3, 12.5, 0}, {-3, std::sqrt(91.0), 0}}, false);
    s.arc(0, 0, 10, 107.458, 72.542);
    s.circle(0, 0, 16);
    center(s);
    s.circle(0, 0, 48);
    cross(s, 58);
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

void beam(Sketch& s) {
    object(s);
    s.polyline({{-50, -100, 0},
                {50, -100, 0},
                {50, -91.5, 0},
                {14.8, -91.5, -0.4142},
                {2.8, -79.5, 0},
                {2.8, 79.5, -0.4142},
                {14.8, 91.5, 0},
                {50, 91.5, 0},
                {50, 100, 0},
                {-50, 100, 0},
                {-50, 91.5, 0},
                {-14.8, 91.5, -0.4142},
                {-2.8, 79.5, 0},
                {-2.8, -79.5, -0.4142},
                {-14.8, -91.5, 0},
                {-50, -91.5, 0}},
               true);
    center(s);
    s.line(0, -110, 0, 110);
    s.base(0, -100);
}

void angleSection(Sketch& s) {
    object(s);
    s.polyline({{0, 0, 0},
                {60, 0, 0},
                {60, 3, 0.4142},
                {57, 6, 0},
                {14, 6, -0.4142},
                {6, 14, 0},
                {6, 57, 0.4142},
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

const std::vector<Recipe>& mechanical() {
    static const std::vector<Recipe> recipes = {
        {L"ANGLE-60x6", L"Angle section 60 x 60 x 6", angleSection},
        {L"BEAM-200", L"Beam section, height 200", beam},
        {L"BEARING-6206", L"Ball bearing 30 x 62", bearing},
        {L"BOLT-M12-SIDE", L"Hexagon bolt M12 x 60, side view", boltSide},
        {L"BOLT-M12-TOP", L"Hexagon bolt M12, top view", boltTop},
        {L"COVER-OVAL", L"Oval cover with two holes", oval},
        {L"ELBOW-DN40", L"Pipe elbow 90 degrees with sockets", elbow},
        {L"FLANGE-DN60", L"Flange with six holes", flange},
        {L"GEAR-24", L"Spur gear, 24 teeth, module 4", gear},
        {L"KEY-10x40", L"Parallel key 10 x 40, round ends", key},
        {L"NUT-M12", L"Hexagon nut M12", nut},
        {L"PULLEY-120", L"Belt pulley, diameter 120, five spokes", pulley},
        {L"SPRING", L"Compression spring, nine turns", spring},
        {L"WASHER-M12", L"Plain washer M12", washer},
    };
    return recipes;
}

} // namespace samples
