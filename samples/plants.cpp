#include "samples/Library.h"

#include <cmath>
#include <numbers>

namespace samples {

namespace {

constexpr double degree = std::numbers::pi / 180;

void outline(Sketch& s) {
    s.layer(L"PLANT", 92);
}
void detail(Sketch& s) {
    s.layer(L"PLANT-DETAIL", 94);
}
void trunk(Sketch& s, double radius) {
    s.layer(L"PLANT-TRUNK", 32);
    s.circle(0, 0, radius);
    s.base(0, 0);
}

/// Bows along a circle, as the edge of a crown.
void crown(Sketch& s, double radius, int bows) {
    std::vector<Corner> corners;
    for (int bow = 0; bow < bows; ++bow) {
        const double at = 360.0 * bow / bows * degree;
        corners.push_back({radius * std::cos(at), radius * std::sin(at), bow % 3 == 0 ? 0.7 : 0.45});
    }
    s.polyline(corners, true);
}

void rays(Sketch& s, double inner, double outer, int count) {
    for (int ray = 0; ray < count; ++ray) {
        const double x = std::cos(360.0 * ray / count * degree), y = std::sin(360.0 * ray / count * degree);
        s.line(inner * x, inner * y, outer * x, outer * y);
    }
}

void deciduous(Sketch& s, double diameter) {
    const double radius = diameter / 2;
    outline(s);
    crown(s, radius * 0.9, 14);
    detail(s);
    rays(s, radius * 0.12, radius * 0.55, 7);
    trunk(s, radius * 0.06);
}

void conifer(Sketch& s, double diameter) {
    constexpr int teeth = 16;
    const double radius = diameter / 2;
    std::vector<Corner> corners;
    for (int tooth = 0; tooth < 2 * teeth; ++tooth) {
        const double at = 180.0 * tooth / teeth * degree, length = tooth % 2 == 0 ? radius : radius * 0.78;
        corners.push_back({length * std::cos(at), length * std::sin(at)});
    }
    outline(s);
    s.polyline(corners, true);
    detail(s);
    rays(s, 0, radius * 0.78, teeth);
    trunk(s, radius * 0.05);
}

void palm(Sketch& s, double diameter) {
    const double radius = diameter / 2;
    outline(s);
    for (int leaf = 0; leaf < 9; ++leaf) {
        const double at = 40.0 * leaf;
        s.ellipse(radius / 2 * std::cos(at * degree), radius / 2 * std::sin(at * degree), radius / 2, 0.22, at);
    }
    detail(s);
    rays(s, 0, radius * 0.9, 9);
    trunk(s, radius * 0.07);
}

void shrub(Sketch& s, double diameter) {
    outline(s);
    crown(s, diameter * 0.44, 9);
    detail(s);
    crown(s, diameter * 0.2, 6);
    trunk(s, diameter * 0.03);
}

void hedge(Sketch& s, double length) {
    constexpr double bow = 250;
    const int bows = static_cast<int>(length / bow);
    std::vector<Corner> corners;
    for (int i = 0; i <= bows; ++i)
        corners.push_back({bow * i - length / 2, -300, i < bows ? 0.5 : 0});
    for (int i = bows; i >= 0; --i)
        corners.push_back({bow * i - length / 2, 300, i > 0 ? 0.5 : 0});
    outline(s);
    s.polyline(corners, true);
    detail(s);
    for (int i = 0; i < bows; ++i)
        s.circle(bow * (i + 0.5) - length / 2, i % 2 == 0 ? 110 : -110, 60);
    trunk(s, 30);
}

void blossoms(Sketch& s, double x, double y) {
    s.polygon(x, y, 70, 5, 90);
    s.circle(x, y, 25);
}

void flowerBed(Sketch& s, double length, double width) {
    outline(s);
    s.cushion(-length / 2, -width / 2, length, width, width / 2);
    detail(s);
    const int columns = static_cast<int>((length - width) / 400) + 1;
    for (int column = 0; column < columns; ++column)
        for (const double y : {-width / 4, width / 4})
            blossoms(s, 400 * (column - (columns - 1) / 2.0), y);
    trunk(s, 25);
}

void planter(Sketch& s, double length, double width) {
    s.layer(L"PLANT-POT", 8);
    s.rectangle(-length / 2, -width / 2, length, width);
    s.rectangle(-length / 2 + 30, -width / 2 + 30, length - 60, width - 60);
    outline(s);
    const int count = static_cast<int>(length / width);
    for (int i = 0; i < count; ++i)
        for (int leaf = 0; leaf < 4; ++leaf)
            s.ellipse(length * ((i + 0.5) / count - 0.5), 0, width * 0.42, 0.25, 45.0 * leaf);
    trunk(s, 20);
}

void climber(Sketch& s) {
    std::vector<Corner> stem;
    for (int turn = 0; turn <= 8; ++turn)
        stem.push_back({125.0 * turn - 500, -60, turn % 2 == 0 ? 0.6 : -0.6});
    stem.back().bulge = 0;
    outline(s);
    s.polyline(stem, false);
    detail(s);
    for (int leaf = 0; leaf < 8; ++leaf)
        s.ellipse(125.0 * leaf - 437, leaf % 2 == 0 ? -110 : -10, 45, 0.5, 60.0 * leaf);
    trunk(s, 20);
}

void grass(Sketch& s) {
    outline(s);
    for (int blade = 0; blade < 24; ++blade) {
        const double at = 15.0 * blade * degree, length = 220 + 20.0 * (blade * 7 % 5);
        s.polyline({{30 * std::cos(at), 30 * std::sin(at), blade % 2 == 0 ? 0.2 : -0.2},
                    {length * std::cos(at), length * std::sin(at)}},
                   false);
    }
    trunk(s, 30);
}

} // namespace

Folder plants() {
    Folder folder{"plants", L"PLANT", AcDb::kDHL_1021, {}};
    const struct {
        const wchar_t* name;
        const wchar_t* comments;
        void (*draw)(Sketch&, double);
        std::vector<int> sizes;
    } kinds[] = {
        {L"Tree-Deciduous-", L"Deciduous tree, crown ", deciduous, {3000, 5000, 8000, 12000}},
        {L"Tree-Conifer-", L"Conifer, crown ", conifer, {2000, 4000, 6000}},
        {L"Tree-Palm-", L"Palm, crown ", palm, {3000, 5000}},
        {L"Shrub-", L"Shrub, diameter ", shrub, {1000, 1500, 2000}},
        {L"Hedge-", L"Hedge, 600 wide, length ", hedge, {2000, 4000}},
    };
    for (const auto& kind : kinds)
        for (const int size : kind.sizes)
            folder.recipes.push_back({kind.name + std::to_wstring(size), kind.comments + std::to_wstring(size),
                                      [draw = kind.draw, size](Sketch& s) { draw(s, size); }});
    const Recipe single[] = {
        {L"Climber", L"Climbing plant on a wall, 1000 wide", climber},
        {L"Flower-Bed-Long", L"Flower bed 3000 x 800", [](Sketch& s) { flowerBed(s, 3000, 800); }},
        {L"Flower-Bed-Round", L"Flower bed, diameter 1500", [](Sketch& s) { flowerBed(s, 1500, 1500); }},
        {L"Grass", L"Ornamental grass, diameter 600", grass},
        {L"Planter-Long", L"Planter 1200 x 400", [](Sketch& s) { planter(s, 1200, 400); }},
        {L"Planter-Square", L"Planter 500 x 500", [](Sketch& s) { planter(s, 500, 500); }},
    };
    folder.recipes.insert(folder.recipes.end(), std::begin(single), std::end(single));
    return folder;
}

} // namespace samples
