#include "samples/Library.h"

namespace samples {

namespace {

void symbol(Sketch& s) {
    s.layer(L"E-SYMBOL", 1);
}
void wire(Sketch& s) {
    s.layer(L"E-WIRE", 5);
}
void label(Sketch& s) {
    s.layer(L"E-TEXT", 2);
}

void socket(Sketch& s) {
    symbol(s);
    s.arc(0, 0, 100, 180, 360);
    s.line(-100, 0, 100, 0);
    s.line(0, 0, 0, 80);
    s.base(0, 80);
}

/// A socket outlet with what stands in it: a number, or letters for what it gives.
void markedSocket(Sketch& s, const wchar_t* mark) {
    socket(s);
    s.line(-60, 40, 60, 40);
    label(s);
    s.text(-20.0 * static_cast<double>(std::wstring(mark).size()), -80, 50, mark);
}

void switchSingle(Sketch& s) {
    symbol(s);
    s.circle(0, 0, 40);
    s.line(28, 28, 170, 170);
    s.line(170, 170, 210, 130);
    s.base(0, 0);
}

void switchTwoWay(Sketch& s) {
    switchSingle(s);
    s.line(-28, -28, -170, -170);
    s.line(-170, -170, -210, -130);
    s.base(0, 0);
}

void switchDouble(Sketch& s) {
    switchSingle(s);
    s.line(140, 140, 180, 100);
}

void switchDimmer(Sketch& s) {
    switchSingle(s);
    s.polyline({{60, 150}, {120, 210}, {60, 210}}, true);
}

void pushButton(Sketch& s) {
    symbol(s);
    s.circle(0, 0, 70);
    s.circle(0, 0, 40);
    s.base(0, 0);
}

void lampCeiling(Sketch& s) {
    symbol(s);
    s.circle(0, 0, 120);
    s.line(-85, -85, 85, 85);
    s.line(-85, 85, 85, -85);
    s.base(0, 0);
}

void lampWall(Sketch& s) {
    lampCeiling(s);
    wire(s);
    s.line(-150, 120, 150, 120);
    s.base(0, 120);
}

void lampSpot(Sketch& s) {
    lampCeiling(s);
    s.arc(0, 0, 170, 30, 150);
    s.line(-147, 85, -190, 150);
    s.line(147, 85, 190, 150);
}

void lampFluorescent(Sketch& s, double length) {
    symbol(s);
    s.rectangle(-length / 2, -50, length, 100);
    s.line(-length / 2 + 40, 0, length / 2 - 40, 0);
    s.base(0, 0);
}

void fuse(Sketch& s) {
    symbol(s);
    s.rectangle(-100, -40, 200, 80);
    wire(s);
    s.line(-200, 0, 200, 0);
    label(s);
    s.text(-30, 60, 50, L"F1");
    s.base(-200, 0);
}

void resistor(Sketch& s) {
    symbol(s);
    s.rectangle(-120, -45, 240, 90);
    wire(s);
    s.line(-220, 0, -120, 0);
    s.line(120, 0, 220, 0);
    label(s);
    s.text(-30, 65, 50, L"R1");
    s.base(-220, 0);
}

void capacitor(Sketch& s) {
    symbol(s);
    s.line(-20, -100, -20, 100);
    s.line(20, -100, 20, 100);
    wire(s);
    s.line(-200, 0, -20, 0);
    s.line(20, 0, 200, 0);
    label(s);
    s.text(40, 70, 50, L"C1");
    s.base(-200, 0);
}

void inductor(Sketch& s) {
    symbol(s);
    for (int turn = 0; turn < 4; ++turn)
        s.arc(-120 + 80.0 * turn, 0, 40, 0, 180);
    wire(s);
    s.line(-260, 0, -160, 0);
    s.line(160, 0, 260, 0);
    label(s);
    s.text(-30, 70, 50, L"L1");
    s.base(-260, 0);
}

void diode(Sketch& s) {
    symbol(s);
    s.solid(-60, -70, -60, 70, 60, 0);
    s.line(60, -70, 60, 70);
    wire(s);
    s.line(-200, 0, -60, 0);
    s.line(60, 0, 200, 0);
    label(s);
    s.text(-30, 90, 50, L"D1");
    s.base(-200, 0);
}

void transistor(Sketch& s) {
    symbol(s);
    s.circle(0, 0, 150);
    s.line(-50, -90, -50, 90);
    s.line(-50, 40, 70, 130);
    s.line(-50, -40, 70, -130);
    s.solid(70, -130, 10, -115, 40, -70);
    wire(s);
    s.line(-250, 0, -50, 0);
    s.line(70, 130, 70, 250);
    s.line(70, -130, 70, -250);
    s.base(-250, 0);
}

void ground(Sketch& s) {
    symbol(s);
    s.line(-100, 0, 100, 0);
    s.line(-65, -35, 65, -35);
    s.line(-30, -70, 30, -70);
    wire(s);
    s.line(0, 0, 0, 150);
    s.base(0, 150);
}

void battery(Sketch& s) {
    symbol(s);
    for (int cell = 0; cell < 2; ++cell) {
        s.line(-60 + 90.0 * cell, -100, -60 + 90.0 * cell, 100);
        s.line(-20 + 90.0 * cell, -50, -20 + 90.0 * cell, 50);
    }
    wire(s);
    s.line(-220, 0, -60, 0);
    s.line(70, 0, 230, 0);
    label(s);
    s.text(-140, 60, 60, L"+");
    s.base(-220, 0);
}

/// A machine: letters in a circle, three phases above.
void machine(Sketch& s, const wchar_t* letters) {
    symbol(s);
    s.circle(0, 0, 200);
    label(s);
    s.text(-60, -60, 150, letters);
    wire(s);
    s.line(0, 200, 0, 320);
    s.line(-100, 173, -100, 320);
    s.line(100, 173, 100, 320);
    s.base(0, 320);
}

void transformer(Sketch& s) {
    symbol(s);
    s.circle(-70, 0, 120);
    s.circle(70, 0, 120);
    wire(s);
    s.line(-320, 0, -190, 0);
    s.line(190, 0, 320, 0);
    label(s);
    s.text(-30, 140, 50, L"T1");
    s.base(-320, 0);
}

/// A device: letters in a box on the wall.
void box(Sketch& s, double width, double height, const wchar_t* letters) {
    symbol(s);
    s.rectangle(-width / 2, -height, width, height);
    label(s);
    s.text(-22.0 * static_cast<double>(std::wstring(letters).size()), -height / 2 - 30, 60, letters);
    s.base(0, 0);
}

void distributionBoard(Sketch& s) {
    box(s, 600, 200, L"");
    s.solid(-300, -200, 300, -200, -300, 0);
    s.line(300, -200, -300, 0);
}

void smokeDetector(Sketch& s) {
    symbol(s);
    s.circle(0, 0, 120);
    s.polyline({{-60, -50}, {-20, 0, 0.5}, {20, 0, -0.5}, {60, 50}}, false);
    s.base(0, 0);
}

void bell(Sketch& s) {
    symbol(s);
    s.arc(0, 0, 120, 0, 180);
    s.line(-120, 0, 120, 0);
    wire(s);
    s.line(-50, 0, -50, -90);
    s.line(50, 0, 50, -90);
    s.base(0, -90);
}

} // namespace

Folder electrical() {
    return {
        "electrical",
        L"E-",
        AcDb::kDHL_1800,
        {
            {L"Battery", L"Battery, two cells", battery},
            {L"Bell", L"Bell", bell},
            {L"Capacitor", L"Capacitor", capacitor},
            {L"Diode", L"Diode", diode},
            {L"Distribution-Board", L"Distribution board 600 x 200", distributionBoard},
            {L"Fuse", L"Fuse", fuse},
            {L"Generator", L"Three-phase generator", [](Sketch& s) { machine(s, L"G"); }},
            {L"Ground", L"Protective earth", ground},
            {L"Inductor", L"Inductor, four turns", inductor},
            {L"Lamp-Ceiling", L"Ceiling outlet for a lamp", lampCeiling},
            {L"Lamp-Fluorescent-600", L"Fluorescent lamp, length 600", [](Sketch& s) { lampFluorescent(s, 600); }},
            {L"Lamp-Fluorescent-1200", L"Fluorescent lamp, length 1200", [](Sketch& s) { lampFluorescent(s, 1200); }},
            {L"Lamp-Fluorescent-1500", L"Fluorescent lamp, length 1500", [](Sketch& s) { lampFluorescent(s, 1500); }},
            {L"Lamp-Spot", L"Spotlight", lampSpot},
            {L"Lamp-Wall", L"Wall outlet for a lamp", lampWall},
            {L"Meter", L"Energy meter 300 x 300", [](Sketch& s) { box(s, 300, 300, L"kWh"); }},
            {L"Motor", L"Three-phase motor", [](Sketch& s) { machine(s, L"M"); }},
            {L"Push-Button", L"Push button", pushButton},
            {L"Resistor", L"Resistor", resistor},
            {L"Smoke-Detector", L"Smoke detector", smokeDetector},
            {L"Socket", L"Socket outlet", socket},
            {L"Socket-Data", L"Data outlet", [](Sketch& s) { markedSocket(s, L"D"); }},
            {L"Socket-Double", L"Socket outlet, double", [](Sketch& s) { markedSocket(s, L"2"); }},
            {L"Socket-Telephone", L"Telephone outlet", [](Sketch& s) { markedSocket(s, L"T"); }},
            {L"Socket-Triple", L"Socket outlet, triple", [](Sketch& s) { markedSocket(s, L"3"); }},
            {L"Socket-TV", L"Aerial outlet", [](Sketch& s) { markedSocket(s, L"TV"); }},
            {L"Switch", L"Switch, single pole", switchSingle},
            {L"Switch-Dimmer", L"Dimmer", switchDimmer},
            {L"Switch-Double", L"Switch, two circuits", switchDouble},
            {L"Switch-Two-Way", L"Switch, two-way", switchTwoWay},
            {L"Transformer", L"Transformer", transformer},
            {L"Transistor-NPN", L"Transistor, NPN", transistor},
        }};
}

} // namespace samples
