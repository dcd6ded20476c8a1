#include "samples/Library.h"

namespace samples {

namespace {

void outline(Sketch& s) {
    s.layer(L"SANITARY", 5);
}
void detail(Sketch& s) {
    s.layer(L"SANITARY-DETAIL", 8);
}
void hidden(Sketch& s) {
    s.layer(L"SANITARY-HIDDEN", 9, L"HIDDEN");
}

// The wall is the x axis, all stands below it, its middle at x = 0.

void tap(Sketch& s, double x, double y) {
    detail(s);
    s.circle(x, y, 25);
    s.rectangle(x - 12, y - 120, 24, 100);
}

void bathtub(Sketch& s, double length, double width) {
    const double left = -length / 2, inner = width - 160;
    outline(s);
    s.rectangle(left, -width, length, width);
    detail(s);
    s.polyline({{left + 80 + inner / 2, -width + 80},
                {left + length - 180, -width + 80, quarterTurn},
                {left + length - 80, -width + 180},
                {left + length - 80, -180, quarterTurn},
                {left + length - 180, -80},
                {left + 80 + inner / 2, -80, 1}},
               true);
    s.circle(left + length - 200, -width / 2, 35);
    s.base(0, 0);
}

void cornerTub(Sketch& s, double side) {
    outline(s);
    s.polyline({{0, 0}, {0, -side}, {side * 0.45, -side, quarterTurn}, {side, -side * 0.45}, {side, 0}}, true);
    detail(s);
    s.ellipse(side * 0.46, -side * 0.46, side * 0.5, 0.62, -45);
    s.circle(side * 0.25, -side * 0.25, 35);
    s.base(0, 0);
}

void shower(Sketch& s, double width, double depth) {
    outline(s);
    s.rectangle(-width / 2, -depth, width, depth);
    detail(s);
    s.cushion(-width / 2 + 40, -depth + 40, width - 80, depth - 80, 60);
    s.line(-width / 2 + 60, -depth + 60, width / 2 - 60, -60);
    s.line(-width / 2 + 60, -60, width / 2 - 60, -depth + 60);
    s.circle(0, -depth / 2, 45);
    s.base(0, 0);
}

void basin(Sketch& s, double x, double width, double depth) {
    detail(s);
    s.ellipse(x, -depth * 0.56, width * 0.4, depth * 0.8 / width);
    s.circle(x, -depth * 0.5, 20);
    tap(s, x, -60);
}

void washbasin(Sketch& s, double width, int basins) {
    const double depth = width < 500 ? 350 : 480;
    outline(s);
    s.cushion(-width / 2, -depth, width, depth, 60);
    for (int i = 0; i < basins; ++i)
        basin(s, width * ((i + 0.5) / basins - 0.5), width / basins, depth);
    s.base(0, 0);
}

void toilet(Sketch& s) {
    outline(s);
    s.cushion(-190, -180, 380, 180, 30);
    s.polyline({{-180, -430},
                {-180, -230, -quarterTurn},
                {-130, -180},
                {130, -180, -quarterTurn},
                {180, -230},
                {180, -430, -1}},
               true);
    detail(s);
    s.ellipse(0, -420, 150, 0.8, 90);
    s.circle(0, -90, 25);
    s.base(0, 0);
}

void bidet(Sketch& s) {
    outline(s);
    s.polyline({{-180, -390}, {-180, 0}, {180, 0}, {180, -390, -1}}, true);
    detail(s);
    s.ellipse(0, -340, 170, 0.75, 90);
    s.circle(0, -330, 20);
    tap(s, 0, -60);
    s.base(0, 0);
}

void urinal(Sketch& s) {
    outline(s);
    s.polyline({{-160, -170}, {-160, 0}, {160, 0}, {160, -170, -1}}, true);
    detail(s);
    s.ellipse(0, -165, 115, 0.9);
    s.circle(0, -165, 20);
    s.base(0, 0);
}

void sink(Sketch& s, double width, int bowls) {
    outline(s);
    s.rectangle(-width / 2, -600, width, 600);
    double x = -width / 2 + 50;
    for (int bowl = 0; bowl < bowls; ++bowl) {
        detail(s);
        s.cushion(x, -540, 350, 400, 50);
        s.circle(x + 175, -340, 40);
        x += 400;
    }
    tap(s, x - 225, -60);
    const int grooves = static_cast<int>((width / 2 - 40 - x - 30) / 50);
    for (int groove = 0; groove < grooves; ++groove)
        s.line(x + 30 + 50.0 * groove, -520, x + 30 + 50.0 * groove, -140);
    s.base(0, 0);
}

void machine(Sketch& s, double drum, const wchar_t* label) {
    outline(s);
    s.rectangle(-300, -600, 600, 600);
    detail(s);
    s.line(-300, -560, 300, -560);
    s.text(-40 * static_cast<double>(std::wstring(label).size()), -120, 80, label);
    hidden(s);
    if (drum > 0)
        s.circle(0, -320, drum);
    else
        s.rectangle(-240, -500, 480, 320);
    s.base(0, 0);
}

void floorDrain(Sketch& s) {
    outline(s);
    s.rectangle(-75, -75, 150, 150);
    detail(s);
    s.circle(0, 0, 60);
    for (int slot = -2; slot <= 2; ++slot)
        s.line(-40, 18.0 * slot, 40, 18.0 * slot);
    s.base(0, 0);
}

void waterHeater(Sketch& s) {
    outline(s);
    s.circle(0, -280, 250);
    s.line(-60, -37, -60, 0);
    s.line(60, -37, 60, 0);
    detail(s);
    s.circle(0, -280, 220);
    s.text(-90, -320, 80, L"WH");
    s.base(0, 0);
}

} // namespace

Folder sanitary() {
    return {"sanitary",
            L"SANITARY",
            AcDb::kDHL_1024,
            {
                {L"Bathtub", L"Bathtub 1700 x 750, drain right", [](Sketch& s) { bathtub(s, 1700, 750); }},
                {L"Bathtub-1600", L"Bathtub 1600 x 700, drain right", [](Sketch& s) { bathtub(s, 1600, 700); }},
                {L"Bathtub-1800", L"Bathtub 1800 x 800, drain right", [](Sketch& s) { bathtub(s, 1800, 800); }},
                {L"Bathtub-Corner", L"Corner bathtub 1400 x 1400", [](Sketch& s) { cornerTub(s, 1400); }},
                {L"Bidet", L"Bidet 360 x 570", bidet},
                {L"Dishwasher", L"Dishwasher 600 x 600", [](Sketch& s) { machine(s, 0, L"DW"); }},
                {L"Dryer", L"Tumble dryer 600 x 600", [](Sketch& s) { machine(s, 180, L"TD"); }},
                {L"Floor-Drain", L"Floor drain 150 x 150", floorDrain},
                {L"Shower-800", L"Shower tray 800 x 800", [](Sketch& s) { shower(s, 800, 800); }},
                {L"Shower-900", L"Shower tray 900 x 900", [](Sketch& s) { shower(s, 900, 900); }},
                {L"Shower-1000", L"Shower tray 1000 x 1000", [](Sketch& s) { shower(s, 1000, 1000); }},
                {L"Shower-1200", L"Shower tray 1200 x 900", [](Sketch& s) { shower(s, 1200, 900); }},
                {L"Sink-Double", L"Kitchen sink, two bowls, 1200 x 600", [](Sketch& s) { sink(s, 1200, 2); }},
                {L"Sink-Single", L"Kitchen sink, one bowl, 800 x 600", [](Sketch& s) { sink(s, 800, 1); }},
                {L"Toilet", L"Toilet with cistern 380 x 610", toilet},
                {L"Urinal", L"Urinal 320 x 330", urinal},
                {L"Washbasin-450", L"Hand basin 450 x 350", [](Sketch& s) { washbasin(s, 450, 1); }},
                {L"Washbasin-600", L"Washbasin 600 x 480", [](Sketch& s) { washbasin(s, 600, 1); }},
                {L"Washbasin-800", L"Washbasin 800 x 480", [](Sketch& s) { washbasin(s, 800, 1); }},
                {L"Washbasin-Double", L"Washbasin for two, 1200 x 480", [](Sketch& s) { washbasin(s, 1200, 2); }},
                {L"Washing-Machine", L"Washing machine 600 x 600", [](Sketch& s) { machine(s, 220, L"WM"); }},
                {L"Water-Heater", L"Water heater, diameter 500", waterHeater},
            }};
}

} // namespace samples
