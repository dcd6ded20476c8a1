#include "samples/Library.h"

#include <cmath>
#include <numbers>

namespace samples {

namespace {

void outline(Sketch& s) {
    s.layer(L"FURNITURE", 3);
}
void detail(Sketch& s) {
    s.layer(L"FURNITURE-DETAIL", 8);
}
void hidden(Sketch& s) {
    s.layer(L"FURNITURE-HIDDEN", 9, L"HIDDEN");
}

void chairAt(Sketch& s, double x, double y, double side, int back) {
    // back: 0 below, 1 right, 2 above, 3 left of the seat
    outline(s);
    s.cushion(x, y, side, side, side / 8);
    detail(s);
    const double b = side / 8;
    if (back == 0)
        s.rectangle(x, y - b, side, b);
    else if (back == 1)
        s.rectangle(x + side, y, b, side);
    else if (back == 2)
        s.rectangle(x, y + side, side, b);
    else
        s.rectangle(x - b, y, b, side);
}

void chair(Sketch& s) {
    chairAt(s, 0, 0, 450, 2);
    s.base(225, 225);
}

void armchair(Sketch& s) {
    outline(s);
    s.cushion(0, 0, 900, 850, 80);
    detail(s);
    s.cushion(150, 20, 600, 600, 60);
    s.cushion(20, 0, 130, 640, 50);
    s.cushion(750, 0, 130, 640, 50);
    s.cushion(20, 640, 860, 190, 70);
    s.base(450, 425);
}

void sofa(Sketch& s, int seats) {
    const double width = 300 + 650.0 * seats;
    outline(s);
    s.cushion(0, 0, width, 900, 80);
    detail(s);
    for (int seat = 0; seat < seats; ++seat)
        s.cushion(150 + 650.0 * seat, 20, 650, 650, 60);
    s.cushion(20, 0, 130, 690, 50);
    s.cushion(width - 150, 0, 130, 690, 50);
    s.cushion(20, 690, width - 40, 190, 70);
    s.base(width / 2, 900);
}

void bed(Sketch& s, double width, int pillows) {
    outline(s);
    s.rectangle(0, 0, width, 2000);
    s.rectangle(0, 2000, width, 60);
    detail(s);
    const double pillow = (width - 100.0 * (pillows + 1)) / pillows;
    for (int i = 0; i < pillows; ++i)
        s.cushion(100 + (pillow + 100) * i, 1560, pillow, 360, 60);
    s.line(0, 1400, width, 1400);
    s.line(0, 1400, width / 3, 1050);
    s.line(width / 3, 1050, width, 1050);
    s.base(width / 2, 2060);
}
void bunkBed(Sketch& s) {
    bed(s, 900, 1);
    hidden(s);
    s.rectangle(40, 40, 820, 1920);
    detail(s);
    s.rectangle(900, 300, 80, 400);
    for (int rung = 1; rung < 4; ++rung)
        s.line(900, 300 + 100.0 * rung, 980, 300 + 100.0 * rung);
}

void desk(Sketch& s, double width) {
    const double drawers = width / 4;
    outline(s);
    s.rectangle(0, 0, width, 800);
    hidden(s);
    s.rectangle(20, 60, drawers, 720);
    s.rectangle(width - 20 - drawers, 60, drawers, 720);
    detail(s);
    s.cushion(width / 2 - 250, 420, 500, 180, 20);
    s.rectangle(width / 2 - 280, 120, 560, 180);
    s.base(width / 2, 0);
}

/// Chairs around a circle stand with their backs outwards.
void roundTable(Sketch& s, double radius, int chairs) {
    const double out = radius + 60;
    for (int i = 0; i < chairs; ++i) {
        const double at = 2 * std::numbers::pi * i / chairs, c = std::cos(at), d = std::sin(at);
        const auto corner = [&](double along, double across) {
            return Corner{c * along - d * across, d * along + c * across};
        };
        outline(s);
        s.polyline({corner(out, -215), corner(out + 430, -215), corner(out + 430, 215), corner(out, 215)}, true);
        detail(s);
        s.polyline({corner(out + 430, -215), corner(out + 485, -215), corner(out + 485, 215), corner(out + 430, 215)},
                   true);
    }
    outline(s);
    s.circle(0, 0, radius);
    detail(s);
    s.circle(0, 0, radius - 30);
    hidden(s);
    s.circle(0, 0, radius * 0.3);
    s.base(0, 0);
}

/// A table with that many chairs at each long side and one at each end where there is room.
void longTable(Sketch& s, int chairsAside, bool ends, double width) {
    const double length = 800.0 * chairsAside + 100;
    for (int i = 0; i < chairsAside; ++i) {
        chairAt(s, 225 + 800.0 * i, width + 50, 450, 2);
        chairAt(s, 225 + 800.0 * i, -500, 450, 0);
    }
    if (ends) {
        chairAt(s, -500, width / 2 - 225, 450, 3);
        chairAt(s, length + 50, width / 2 - 225, 450, 1);
    }
    outline(s);
    s.cushion(0, 0, length, width, 60);
    detail(s);
    s.cushion(40, 40, length - 80, width - 80, 40);
    s.base(length / 2, width / 2);
}

void coffeeTable(Sketch& s) {
    outline(s);
    s.cushion(-550, -300, 1100, 600, 50);
    detail(s);
    s.cushion(-520, -270, 1040, 540, 40);
    s.base(0, 0);
}

void officeChair(Sketch& s) {
    outline(s);
    s.cushion(-240, -240, 480, 480, 120);
    detail(s);
    s.polyline({{-230, 200}, {-200, 290, -0.25}, {200, 290}, {230, 200}}, false);
    s.cushion(-310, -120, 60, 260, 30);
    s.cushion(250, -120, 60, 260, 30);
    hidden(s);
    for (int foot = 0; foot < 5; ++foot) {
        const double at = 2 * std::numbers::pi * foot / 5 + std::numbers::pi / 2;
        s.line(0, 0, 300 * std::cos(at), 300 * std::sin(at));
    }
    s.base(0, 0);
}

void stool(Sketch& s, double radius) {
    outline(s);
    s.circle(0, 0, radius);
    detail(s);
    s.circle(0, 0, radius - 30);
    s.base(0, 0);
}

void cornerSofa(Sketch& s) {
    outline(s);
    s.polyline({{0, 0}, {0, -2250}, {900, -2250}, {900, -900}, {2600, -900}, {2600, 0}}, true);
    detail(s);
    s.cushion(220, -2100, 660, 1180, 60);
    s.cushion(220, -880, 660, 660, 60);
    s.cushion(900, -880, 760, 660, 60);
    s.cushion(1680, -880, 760, 660, 60);
    s.cushion(20, -2230, 180, 2210, 70);
    s.cushion(220, -200, 2360, 180, 70);
    s.base(0, 0);
}

void lounger(Sketch& s) {
    outline(s);
    s.cushion(-300, -1600, 600, 1600, 80);
    detail(s);
    s.line(-300, -550, 300, -550);
    s.cushion(-220, -320, 440, 240, 60);
    s.base(0, 0);
}

void wardrobe(Sketch& s, double width) {
    outline(s);
    s.rectangle(0, 0, width, 600);
    detail(s);
    s.line(30, 300, width - 30, 300);
    const int hangers = static_cast<int>((width - 250) / 150) + 1;
    for (int hanger = 1; hanger <= hangers; ++hanger)
        s.line(150.0 * hanger - 40, 80, 150.0 * hanger + 40, 520);
    hidden(s);
    s.arc(0, 0, 600, 270, 360);
    s.arc(width, 0, 600, 180, 270);
    s.line(0, 0, 0, -600);
    s.line(width, 0, width, -600);
    s.base(width / 2, 600);
}

void bookshelf(Sketch& s, double length) {
    outline(s);
    s.rectangle(0, 0, length, 300);
    detail(s);
    double x = 20;
    for (int book = 0; x < length - 60; ++book) {
        const double width = 25 + 12.0 * (book * 7 % 4);
        s.rectangle(x, 40, width, 170 + 15.0 * (book * 5 % 4));
        x += width + 4;
    }
    s.base(length / 2, 300);
}

/// A chest seen from above, with the fronts of its drawers pulled out a little.
void chest(Sketch& s, double width, double depth, int fronts) {
    outline(s);
    s.rectangle(-width / 2, -depth, width, depth);
    detail(s);
    for (int front = 0; front < fronts; ++front) {
        const double x = width * (double(front) / fronts - 0.5);
        s.rectangle(x + 10, -depth - 20, width / fronts - 20, 20);
        s.circle(x + width / fronts / 2, -depth - 35, 15);
    }
    s.base(0, 0);
}

void grandPiano(Sketch& s) {
    outline(s);
    s.polyline(
        {{-750, -1700}, {-750, -250, -0.3}, {-350, 0, -0.35}, {50, -420, 0.3}, {350, -820}, {750, -1000}, {750, -1700}},
        true);
    detail(s);
    s.rectangle(-680, -1680, 1360, 150);
    for (int key = 1; key < 28; ++key)
        s.line(-680 + 1360.0 / 28 * key, -1680, -680 + 1360.0 / 28 * key, -1530);
    s.cushion(-350, -2250, 700, 350, 30);
    s.base(0, -1700);
}

void nightstand(Sketch& s) {
    outline(s);
    s.cushion(0, 0, 450, 400, 20);
    detail(s);
    s.circle(225, 220, 120);
    s.circle(225, 220, 40);
    s.line(150, 20, 300, 20);
    s.base(225, 400);
}

void plant(Sketch& s) {
    outline(s);
    s.circle(0, 0, 150);
    s.layer(L"FURNITURE-PLANT", 92);
    for (int leaf = 0; leaf < 8; ++leaf)
        s.ellipse(0, 0, 330, 0.22, 45.0 * leaf / 2);
    s.base(0, 0);
}

} // namespace

Folder furniture() {
    return {
        "furniture",
        L"FURNITURE",
        AcDb::kDHL_1015,
        {
            {L"Armchair", L"Armchair, upholstered, 900 x 850", armchair},
            {L"Bed-Bunk", L"Bunk bed 900 x 2000 with ladder", bunkBed},
            {L"Bed-Double", L"Double bed 1800 x 2000, two pillows", [](Sketch& s) { bed(s, 1800, 2); }},
            {L"Bed-Double-1400", L"Double bed 1400 x 2000", [](Sketch& s) { bed(s, 1400, 2); }},
            {L"Bed-Double-1600", L"Double bed 1600 x 2000", [](Sketch& s) { bed(s, 1600, 2); }},
            {L"Bed-Single", L"Single bed 1000 x 2000", [](Sketch& s) { bed(s, 1000, 1); }},
            {L"Bed-Single-900", L"Single bed 900 x 2000", [](Sketch& s) { bed(s, 900, 1); }},
            {L"Bookshelf", L"Bookshelf, filled, 1200 x 300", [](Sketch& s) { bookshelf(s, 1200); }},
            {L"Bookshelf-800", L"Bookshelf, filled, 800 x 300", [](Sketch& s) { bookshelf(s, 800); }},
            {L"Chair", L"Chair 450 x 450", chair},
            {L"Chair-Office", L"Office chair on five castors", officeChair},
            {L"Chest-of-Drawers", L"Chest of drawers 1000 x 450", [](Sketch& s) { chest(s, 1000, 450, 2); }},
            {L"Coffee-Table", L"Coffee table 1100 x 600", coffeeTable},
            {L"Conference-Table-8", L"Conference table, eight chairs", [](Sketch& s) { longTable(s, 3, true, 1200); }},
            {L"Conference-Table-12", L"Conference table, twelve chairs",
             [](Sketch& s) { longTable(s, 5, true, 1400); }},
            {L"Desk", L"Desk with keyboard and screen, 1600 x 800", [](Sketch& s) { desk(s, 1600); }},
            {L"Desk-1200", L"Desk with keyboard and screen, 1200 x 800", [](Sketch& s) { desk(s, 1200); }},
            {L"Desk-1800", L"Desk with keyboard and screen, 1800 x 800", [](Sketch& s) { desk(s, 1800); }},
            {L"Dining-Table-4", L"Dining table with four chairs", [](Sketch& s) { longTable(s, 2, false, 800); }},
            {L"Dining-Table-6", L"Dining table with six chairs", [](Sketch& s) { longTable(s, 2, true, 900); }},
            {L"Dining-Table-8", L"Dining table with eight chairs", [](Sketch& s) { longTable(s, 3, true, 900); }},
            {L"Dining-Table-10", L"Dining table with ten chairs", [](Sketch& s) { longTable(s, 4, true, 1000); }},
            {L"Lounger", L"Lounger 600 x 1600", lounger},
            {L"Nightstand", L"Nightstand with lamp", nightstand},
            {L"Piano-Grand", L"Grand piano with bench", grandPiano},
            {L"Plant", L"Potted plant", plant},
            {L"Round-Table", L"Round table, diameter 1200", [](Sketch& s) { roundTable(s, 600, 0); }},
            {L"Round-Table-4", L"Round table, diameter 1100, four chairs", [](Sketch& s) { roundTable(s, 550, 4); }},
            {L"Round-Table-6", L"Round table, diameter 1400, six chairs", [](Sketch& s) { roundTable(s, 700, 6); }},
            {L"Round-Table-8", L"Round table, diameter 1800, eight chairs", [](Sketch& s) { roundTable(s, 900, 8); }},
            {L"Sideboard", L"Sideboard 1800 x 450", [](Sketch& s) { chest(s, 1800, 450, 3); }},
            {L"Sofa-2", L"Sofa with two seats", [](Sketch& s) { sofa(s, 2); }},
            {L"Sofa-3", L"Sofa with three seats", [](Sketch& s) { sofa(s, 3); }},
            {L"Sofa-4", L"Sofa with four seats", [](Sketch& s) { sofa(s, 4); }},
            {L"Sofa-Corner", L"Corner sofa 2600 x 2250", cornerSofa},
            {L"Stool", L"Stool, diameter 400", [](Sketch& s) { stool(s, 200); }},
            {L"Stool-Bar", L"Bar stool, diameter 360", [](Sketch& s) { stool(s, 180); }},
            {L"Wardrobe", L"Wardrobe 1800 x 600, doors shown open", [](Sketch& s) { wardrobe(s, 1800); }},
            {L"Wardrobe-1200", L"Wardrobe 1200 x 600, doors shown open", [](Sketch& s) { wardrobe(s, 1200); }},
            {L"Wardrobe-2400", L"Wardrobe 2400 x 600, doors shown open", [](Sketch& s) { wardrobe(s, 2400); }},
        }};
}

} // namespace samples
