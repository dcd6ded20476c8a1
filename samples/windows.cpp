#include "samples/Library.h"

namespace samples {

namespace {

constexpr double wall = 360; ///< its thickness; the outer face is the x axis, the opening begins at x = 0
constexpr double depth = 80; ///< of the frame, which lies in the middle of the wall

void outline(Sketch& s) {
    s.layer(L"WINDOW", 4);
}
void glass(Sketch& s) {
    s.layer(L"WINDOW-GLASS", 140);
}
void hidden(Sketch& s) {
    s.layer(L"WINDOW-HIDDEN", 9, L"HIDDEN");
}

/// The wall's edges, the sill outside, and the frame.
void opening(Sketch& s, double width) {
    outline(s);
    s.line(0, 0, 0, -wall);
    s.line(width, 0, width, -wall);
    s.rectangle(-40, 0, width + 80, 30);
    s.rectangle(0, -wall / 2 - depth / 2, width, depth);
    s.line(0, -wall, width, -wall);
    glass(s);
    s.line(depth, -wall / 2, width - depth, -wall / 2);
    s.base(0, 0);
}

/// Parts of equal width, a post between two of them.
void posts(Sketch& s, double width, int parts) {
    outline(s);
    for (int post = 1; post < parts; ++post)
        s.rectangle(width * post / parts - depth / 2, -wall / 2 - depth / 2, depth, depth);
}

void casement(Sketch& s, double width, int sashes) {
    opening(s, width);
    posts(s, width, sashes);
    hidden(s);
    const double sash = width / sashes, inside = -wall / 2 - depth / 2;
    for (int i = 0; i < sashes; ++i) {
        const bool left = i % 2 == 0;
        const double hinge = left ? sash * i : sash * (i + 1);
        s.line(hinge, inside, hinge, inside - sash);
        s.arc(hinge, inside, sash, left ? 270 : 180, left ? 360 : 270);
    }
}

void fixed(Sketch& s, double width) {
    opening(s, width);
    posts(s, width, width > 1500 ? 2 : 1);
}

void sliding(Sketch& s, double width) {
    opening(s, width);
    outline(s);
    s.rectangle(0, -wall / 2, width / 2 + 30, 30);
    s.rectangle(width / 2 - 30, -wall / 2 - 30, width / 2 + 30, 30);
    hidden(s);
    s.line(width * 0.65, -wall - 60, width * 0.85, -wall - 60);
    s.line(width * 0.65, -wall - 60, width * 0.70, -wall - 30);
    s.line(width * 0.65, -wall - 60, width * 0.70, -wall - 90);
}

void bay(Sketch& s, double width) {
    const double out = width / 4;
    outline(s);
    s.polyline({{0, -wall}, {0, 0}, {out, out}, {width - out, out}, {width, 0}, {width, -wall}}, false);
    s.polyline({{depth, -wall},
                {depth, -depth / 2},
                {out + depth / 2, out - depth},
                {width - out - depth / 2, out - depth},
                {width - depth, -depth / 2},
                {width - depth, -wall}},
               false);
    glass(s);
    s.line(out, out - depth / 2, width - out, out - depth / 2);
    hidden(s);
    s.line(0, -wall, width, -wall);
    s.base(0, 0);
}

/// Seen from above the roof.
void roof(Sketch& s, double width, double height) {
    outline(s);
    s.rectangle(0, 0, width, height);
    s.rectangle(60, 60, width - 120, height - 120);
    glass(s);
    s.line(width * 0.3, height * 0.4, width * 0.6, height * 0.7);
    s.line(width * 0.4, height * 0.35, width * 0.7, height * 0.65);
    hidden(s);
    s.line(60, height / 2, width - 60, height / 2);
    s.base(0, 0);
}

} // namespace

Folder windows() {
    Folder folder{"windows", L"WINDOW", AcDb::kDHL_1027, {}};
    const auto add = [&folder](const std::wstring& kind, int width, const std::wstring& words,
                               std::function<void(Sketch&)> draw) {
        const std::wstring number = std::to_wstring(width);
        folder.recipes.push_back({L"Window-" + kind + number, words + L", width " + number, std::move(draw)});
    };
    for (const int width : {600, 800, 1000, 1200, 1500}) {
        const int sashes = width > 900 ? 2 : 1;
        add(L"", width, sashes == 1 ? L"Casement window, one sash" : L"Casement window, two sashes",
            [width, sashes](Sketch& s) { casement(s, width, sashes); });
    }
    for (const int width : {600, 1200, 1800, 2400})
        add(L"Fixed-", width, L"Fixed window", [width](Sketch& s) { fixed(s, width); });
    for (const int width : {1200, 1500, 1800, 2400})
        add(L"Sliding-", width, L"Sliding window", [width](Sketch& s) { sliding(s, width); });
    for (const int width : {1800, 2400})
        add(L"Bay-", width, L"Bay window", [width](Sketch& s) { bay(s, width); });
    for (const int width : {780, 940, 1140})
        add(L"Roof-", width, L"Roof window, height 1400", [width](Sketch& s) { roof(s, width, 1400); });
    for (const int width : {1400, 1800})
        add(L"French-", width, L"French window, to the floor", [width](Sketch& s) { casement(s, width, 2); });
    return folder;
}

} // namespace samples
