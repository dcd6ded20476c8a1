#include "samples/Library.h"

namespace samples {

namespace {

void frame(Sketch& s) {
    s.layer(L"TITLE-FRAME", 7);
}
void lines(Sketch& s) {
    s.layer(L"TITLE-LINE", 8);
}
void words(Sketch& s) {
    s.layer(L"TITLE-TEXT", 2);
}

/// The table with the drawing's name, its lower right corner given.
void table(Sketch& s, double right, double bottom) {
    constexpr double width = 180, row = 12;
    const wchar_t* const labels[][3] = {
        {L"Drawn", L"Checked", L"Sheet"}, {L"Scale", L"Date", L"Number"}, {L"Project", L"", L""}, {L"Title", L"", L""}};
    frame(s);
    s.rectangle(right - width, bottom, width, 4 * row);
    for (int line = 0; line < 4; ++line) {
        const double y = bottom + row * line;
        lines(s);
        s.line(right - width, y, right, y);
        for (int column = 0; column < 3; ++column) {
            const std::wstring label = labels[line][column];
            const double x = right - width + width / 3 * column;
            if (label.empty())
                continue;
            words(s);
            s.text(x + 2, y + row - 4, 2.5, label);
            lines(s);
            if (column > 0)
                s.line(x, y, x, y + row);
        }
    }
}

/// A sheet with its trimmed edge, the frame with a margin for binding, marks in the middles, and the table.
void sheet(Sketch& s, double width, double height, const wchar_t* format) {
    constexpr double binding = 20, margin = 10;
    lines(s);
    s.rectangle(0, 0, width, height);
    frame(s);
    s.rectangle(binding, margin, width - binding - margin, height - 2 * margin);
    for (const double y : {0.0, height - margin})
        s.line(width / 2, y, width / 2, y + margin);
    s.line(0, height / 2, binding, height / 2);
    s.line(width - margin, height / 2, width, height / 2);
    table(s, width - margin, margin);
    words(s);
    s.text(width - margin - 10, 3, 3.5, format);
    s.base(0, 0);
}

void northArrow(Sketch& s) {
    frame(s);
    s.circle(0, 0, 12);
    s.line(0, -16, 0, 20);
    s.solid(0, 20, -4, 0, 0, 4);
    lines(s);
    s.polyline({{0, 20}, {4, 0}, {0, 4}}, true);
    words(s);
    s.text(-2.2, 23, 5, L"N");
    s.base(0, 0);
}

/// Five parts of a metre each, for plans 1:50.
void scaleBar(Sketch& s) {
    constexpr double part = 20;
    frame(s);
    s.rectangle(0, 0, 5 * part, 3);
    for (int i = 0; i < 5; ++i) {
        frame(s);
        if (i % 2 == 0) {
            s.solid(part * i, 0, part * (i + 1), 0, part * i, 3);
            s.solid(part * (i + 1), 0, part * (i + 1), 3, part * i, 3);
        }
        words(s);
        s.text(part * i - 1, 5, 2.5, std::to_wstring(i));
    }
    words(s);
    s.text(5 * part - 1, 5, 2.5, L"5 m");
    s.text(0, -5, 2.5, L"1:50");
    s.base(0, 0);
}

void revisions(Sketch& s) {
    constexpr double columns[] = {0, 12, 100, 125, 150};
    const wchar_t* const heads[] = {L"No.", L"Change", L"Date", L"Name"};
    lines(s);
    for (int row = 0; row <= 6; ++row)
        s.line(0, 7.0 * row, 150, 7.0 * row);
    for (const double x : columns)
        s.line(x, 0, x, 42);
    words(s);
    for (int column = 0; column < 4; ++column)
        s.text(columns[column] + 1.5, 37, 2.5, heads[column]);
    frame(s);
    s.rectangle(0, 0, 150, 42);
    s.base(0, 0);
}

} // namespace

Folder titleBlocks() {
    Folder folder{"title-blocks", L"TITLE", AcDb::kDHL_1800, {}};
    const struct {
        const wchar_t* name;
        double width, height;
    } sheets[] = {{L"A0", 1189, 841}, {L"A1", 841, 594},          {L"A2", 594, 420},         {L"A3", 420, 297},
                  {L"A4", 297, 210},  {L"A3-Portrait", 297, 420}, {L"A4-Portrait", 210, 297}};
    for (const auto& size : sheets)
        folder.recipes.push_back(
            {std::wstring(L"Frame-") + size.name, std::wstring(L"Sheet with title block, ") + size.name,
             [size](Sketch& s) { sheet(s, size.width, size.height, std::wstring(size.name, 2).c_str()); }});
    folder.recipes.push_back({L"North-Arrow", L"North arrow", northArrow});
    folder.recipes.push_back({L"Revision-Table", L"Table of changes, five lines", revisions});
    folder.recipes.push_back({L"Scale-Bar-50", L"Scale bar of five metres, 1:50", scaleBar});
    return folder;
}

} // namespace samples
