#include "samples/Library.h"

namespace samples {

namespace {

void wall(Sketch& s, double x, double y, double width, double height) {
    s.layer(L"WALLS", 7);
    s.rectangle(x, y, width, height);
}

// A door with its leaf open: hinge, leaf length, and the direction of the leaf in degrees.
void door(Sketch& s, double x, double y, double leaf, double closed, double open) {
    s.layer(L"DOORS", 30);
    s.arc(x, y, leaf, closed < open ? closed : open, closed < open ? open : closed);
    if (open == 90)
        s.line(x, y, x, y + leaf);
    else if (open == 270)
        s.line(x, y, x, y - leaf);
    else if (open == 180)
        s.line(x, y, x - leaf, y);
    else
        s.line(x, y, x + leaf, y);
}

void window(Sketch& s, double x, double y, double width, double height) {
    s.layer(L"WINDOWS", 4);
    s.rectangle(x, y, width, height);
    if (width > height)
        s.line(x, y + height / 2, x + width, y + height / 2);
    else
        s.line(x + width / 2, y, x + width / 2, y + height);
}

void draw(Sketch& s) {
    // outer walls, broken by windows and the entrance
    wall(s, 0, 0, 1500, 300);
    window(s, 1500, 0, 2000, 300);
    wall(s, 3500, 0, 3000, 300);
    window(s, 6500, 0, 2000, 300);
    wall(s, 8500, 0, 1500, 300);
    wall(s, 9700, 300, 300, 3000);
    window(s, 9700, 3300, 300, 1500);
    wall(s, 9700, 4800, 300, 2200);
    wall(s, 6200, 7000, 3800, 300);
    wall(s, 0, 7000, 5200, 300);
    wall(s, 0, 300, 300, 2200);
    window(s, 0, 2500, 300, 2000);
    wall(s, 0, 4500, 300, 2500);
    // inner walls
    wall(s, 5000, 300, 150, 2600);
    wall(s, 5000, 3800, 150, 700);
    wall(s, 5000, 4500, 1900, 150);
    wall(s, 7800, 4500, 1900, 150);
    wall(s, 5000, 4650, 150, 250);
    wall(s, 5000, 5800, 150, 1200);
    // doors
    door(s, 5075, 2900, 900, 90, 180);
    door(s, 6900, 4575, 900, 0, 90);
    door(s, 5075, 4900, 900, 90, 180);
    door(s, 5200, 7150, 1000, 270, 360);
    s.layer(L"TEXT", 2);
    s.text(900, 4700, 250, L"LIVING ROOM");
    s.text(5500, 1000, 250, L"BEDROOM");
    s.text(7700, 6200, 250, L"HALL");
    s.layer(L"FRAME", 8);
    s.rectangle(-800, -800, 11600, 8900);
    s.text(-650, -650, 200, L"FLAT 1:50");
    s.layer(L"0", 7);
    s.base(0, 0);
}

} // namespace

const Recipe flatPlan = {L"Flat", L"Plan of a small flat, to place the library's blocks in", draw};

} // namespace samples
