#include "samples/Sketch.h"

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

void socketDouble(Sketch& s) {
    socket(s);
    s.line(-60, 40, 60, 40);
    label(s);
    s.text(-20, -80, 50, L"2");
    s.base(0, 80);
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

void motor(Sketch& s) {
    symbol(s);
    s.circle(0, 0, 200);
    label(s);
    s.text(-60, -60, 150, L"M");
    wire(s);
    s.line(0, 200, 0, 320);
    s.line(-100, 173, -100, 320);
    s.line(100, 173, 100, 320);
    s.base(0, 320);
}

} // namespace

const std::vector<Recipe>& electrical() {
    static const std::vector<Recipe> recipes = {
        {L"Battery", L"Battery, two cells", battery},
        {L"Capacitor", L"Capacitor", capacitor},
        {L"Diode", L"Diode", diode},
        {L"Fuse", L"Fuse", fuse},
        {L"Ground", L"Protective earth", ground},
        {L"Inductor", L"Inductor, four turns", inductor},
        {L"Lamp-Ceiling", L"Ceiling outlet for a lamp", lampCeiling},
        {L"Lamp-Wall", L"Wall outlet for a lamp", lampWall},
        {L"Motor", L"Three-phase motor", motor},
        {L"Resistor", L"Resistor", resistor},
        {L"Socket", L"Socket outlet", socket},
        {L"Socket-Double", L"Socket outlet, double", socketDouble},
        {L"Switch", L"Switch, single pole", switchSingle},
        {L"Switch-Two-Way", L"Switch, two-way", switchTwoWay},
        {L"Transistor-NPN", L"Transistor, NPN", transistor},
    };
    return recipes;
}

} // namespace samples
