#include "samples/Sketch.h"

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
void sofaTwo(Sketch& s) {
    sofa(s, 2);
}
void sofaThree(Sketch& s) {
    sofa(s, 3);
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
void bedSingle(Sketch& s) {
    bed(s, 1000, 1);
}
void bedDouble(Sketch& s) {
    bed(s, 1800, 2);
}

void desk(Sketch& s) {
    outline(s);
    s.rectangle(0, 0, 1600, 800);
    hidden(s);
    s.rectangle(20, 60, 420, 720);
    s.rectangle(1160, 60, 420, 720);
    detail(s);
    s.cushion(550, 420, 500, 180, 20);
    s.rectangle(520, 120, 560, 180);
    s.base(800, 0);
}

void roundTable(Sketch& s) {
    outline(s);
    s.circle(0, 0, 600);
    detail(s);
    s.circle(0, 0, 570);
    hidden(s);
    s.circle(0, 0, 180);
    s.base(0, 0);
}

void diningTable(Sketch& s) {
    for (int i = 0; i < 2; ++i) {
        chairAt(s, 250 + 800.0 * i, 950, 450, 2);
        chairAt(s, 250 + 800.0 * i, -500, 450, 0);
    }
    chairAt(s, -500, 225, 450, 3);
    chairAt(s, 1750, 225, 450, 1);
    outline(s);
    s.cushion(0, 0, 1700, 900, 60);
    detail(s);
    s.cushion(40, 40, 1620, 820, 40);
    s.base(850, 450);
}

void wardrobe(Sketch& s) {
    outline(s);
    s.rectangle(0, 0, 1800, 600);
    detail(s);
    s.line(30, 300, 1770, 300);
    for (int x = 150; x < 1700; x += 150)
        s.line(x - 40, 80, x + 40, 520);
    hidden(s);
    s.arc(0, 0, 600, 270, 360);
    s.arc(1800, 0, 600, 180, 270);
    s.line(0, 0, 0, -600);
    s.line(1800, 0, 1800, -600);
    s.base(900, 600);
}

void bookshelf(Sketch& s) {
    outline(s);
    s.rectangle(0, 0, 1200, 300);
    detail(s);
    double x = 20;
    for (int book = 0; x < 1140; ++book) {
        const double width = 25 + 12.0 * (book * 7 % 4);
        s.rectangle(x, 40, width, 170 + 15.0 * (book * 5 % 4));
        x += width + 4;
    }
    s.base(600, 300);
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

void bathtub(Sketch& s) {
    outline(s);
    s.rectangle(0, 0, 1700, 750);
    detail(s);
    s.polyline({{250, 80, 0},
                {1500, 80, 0.4142},
                {1600, 180, 0},
                {1600, 570, 0.4142},
                {1500, 670, 0},
                {250, 670, 0.6},
                {250, 80, 0}},
               false);
    s.circle(1480, 375, 35);
    s.base(0, 375);
}

void plant(Sketch& s) {
    outline(s);
    s.circle(0, 0, 150);
    s.layer(L"PLANTS", 92);
    for (int leaf = 0; leaf < 8; ++leaf)
        s.ellipse(0, 0, 330, 0.22, 45.0 * leaf / 2);
    s.base(0, 0);
}

} // namespace

const std::vector<Recipe>& furniture() {
    static const std::vector<Recipe> recipes = {
        {L"Armchair", L"Armchair, upholstered, 900 x 850", armchair},
        {L"Bathtub", L"Bathtub 1700 x 750, drain at the right", bathtub},
        {L"Bed-Double", L"Double bed 1800 x 2000, two pillows", bedDouble},
        {L"Bed-Single", L"Single bed 1000 x 2000", bedSingle},
        {L"Bookshelf", L"Bookshelf, filled, 1200 x 300", bookshelf},
        {L"Chair", L"Chair 450 x 450", chair},
        {L"Desk", L"Desk with keyboard and screen, 1600 x 800", desk},
        {L"Dining-Table-6", L"Dining table with six chairs", diningTable},
        {L"Nightstand", L"Nightstand with lamp", nightstand},
        {L"Plant", L"Potted plant", plant},
        {L"Round-Table", L"Round table, diameter 1200", roundTable},
        {L"Sofa-2", L"Sofa with two seats", sofaTwo},
        {L"Sofa-3", L"Sofa with three seats", sofaThree},
        {L"Wardrobe", L"Wardrobe 1800 x 600, doors shown open", wardrobe},
    };
    return recipes;
}

} // namespace samples
