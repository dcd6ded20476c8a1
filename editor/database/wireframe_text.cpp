#include "editor/database/colours.h"
#include "editor/database/wireframe_builder.h"

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

/// Widths of an average letter to its height: of the fonts of strokes that drawings bring, and of others.
constexpr double strokeLetter = 0.9, outlineLetter = 0.72;

/// Letters of a run that are drawn.
constexpr std::size_t mostLetters = 5'000;

bool endsIn(const std::wstring& text, std::wstring_view tail) {
    return text.size() >= tail.size() &&
           std::equal(tail.rbegin(), tail.rend(), text.rbegin(),
                      [](wchar_t a, wchar_t b) { return a == (b >= L'A' && b <= L'Z' ? b + 32 : b); });
}

} // namespace

double WireframeBuilder::letterWidth(const dwg::HandleRef& style) const {
    const auto* const record = database.drawing.body<dwg::TextStyle>(style);
    const bool isOutline =
        record != nullptr &&
        (endsIn(record->fontFile, L".ttf") || endsIn(record->fontFile, L".ttc") || endsIn(record->fontFile, L".otf"));
    return isOutline ? outlineLetter : strokeLetter;
}

void WireframeBuilder::line(const std::vector<TextRun>& runs, const Transform& to, const AcGePoint3d& place,
                            const Lettering& lettering, double anchor) {
    const auto heightOf = [&](const TextRun& run) {
        return run.look.fixedHeight ? *run.look.fixedHeight / lettering.height : run.look.height;
    };
    const auto letterOf = [&](const TextRun& run) { return lettering.letter * heightOf(run) * run.look.width; };
    double whole = 0;
    for (const TextRun& run : runs)
        whole += letterOf(run) * static_cast<double>(run.content.size());
    double start = -anchor * whole;
    const std::uint16_t own = colour;
    bool isFirst = true;
    for (const TextRun& run : runs) {
        const double letter = letterOf(run), height = lettering.height * heightOf(run);
        colour = !run.look.colour                    ? own
                 : *run.look.colour == colourByLayer ? ownColours.byLayer
                 : *run.look.colour == colourByBlock ? ownColours.byBlock
                                                     : *run.look.colour;
        TextItem item;
        item.content = run.content.substr(0, mostLetters);
        item.position = to.point(place + lettering.right * start);
        item.along = to.vector(lettering.right * letter);
        const AcGeVector3d lean = lettering.right * std::tan(run.look.oblique);
        const AcGeVector3d upwards{lettering.up.x + lean.x, lettering.up.y + lean.y, lettering.up.z + lean.z};
        item.up = to.vector(upwards * height);
        item.colour = colour;
        item.entity = topEntity;
        item.foreign = foreign;
        item.continued = !isFirst;
        item.anchor = anchor;
        item.marks = run.look.marks;
        start += letter * static_cast<double>(run.content.size());
        const AcGePoint3d& at = item.position;
        if (item.content.empty() || !std::isfinite(at.x + at.y + item.along.x + item.along.y + item.up.x + item.up.y))
            continue;
        pointCount += item.content.size();
        if (pointCount > limits.points) {
            result.cut = true;
            break;
        }
        result.texts.push_back(std::move(item));
        isFirst = false;
    }
    colour = own;
}

void WireframeBuilder::draw(const dwg::TextFields& fields, const std::wstring& content, const Transform& to) {
    constexpr std::uint16_t backwards = 2, upsideDown = 4;
    constexpr std::uint16_t aligned = 3, middle = 4, fitted = 5; // of `horizontal`
    constexpr std::uint16_t bottom = 1, centred = 2, top = 3;    // of `vertical`
    constexpr double descent = 0.3;                              // below the baseline, of the height
    const bool byInsertion = (fields.horizontal == 0 && fields.vertical == 0) || fields.horizontal == aligned ||
                             fields.horizontal == fitted || fields.horizontal > fitted;
    const dwg::Point2 point = byInsertion ? fields.insertion : fields.alignment;
    const Transform plane =
        to.after(planeToWorld(fields.extrusion)).moved({point.x, point.y, fields.elevation}).turned(fields.rotation);
    const double lift = byInsertion                                                 ? 0
                        : fields.horizontal == middle || fields.vertical == centred ? -fields.height / 2
                        : fields.vertical == top                                    ? -fields.height
                        : fields.vertical == bottom                                 ? fields.height * descent
                                                                                    : 0;
    const double anchor = byInsertion || fields.horizontal == 0 ? 0 : fields.horizontal == 2 ? 1 : 0.5;
    const bool isMirrored = (fields.generation & backwards) != 0, isTurned = (fields.generation & upsideDown) != 0;
    Lettering lettering;
    lettering.right = {isMirrored ? -1.0 : 1.0, 0, 0};
    const double upwards = isTurned ? -1 : 1;
    lettering.up = {upwards * std::tan(fields.oblique), upwards, 0};
    lettering.letter = fields.height * letterWidth(fields.style) * fields.widthFactor;
    lettering.height = fields.height;
    line(runsOfText(content), plane, AcGePoint3d{0, lift, 0}, lettering, anchor);
}

void WireframeBuilder::draw(const dwg::MultilineText& body, const Transform& to) {
    constexpr double linePitch = 5.0 / 3;
    Lettering lettering;
    lettering.letter = body.height * letterWidth(body.style);
    lettering.height = body.height;
    lettering.right = toVector(body.xDirection).normal();
    lettering.up = toVector(body.extrusion).normal().crossProduct(lettering.right);
    const bool wraps = body.rectangleWidth > lettering.letter && lettering.letter > 0;
    const auto limit = wraps ? static_cast<std::size_t>(std::min(body.rectangleWidth / lettering.letter, 10000.0)) : 0;
    const std::vector<TextLine> lines = formattedLines(body.value, limit);
    // A line is as high as its highest letters.
    std::vector<double> heights;
    double whole = 0;
    for (const TextLine& row : lines) {
        double height = row.runs.empty() ? body.height : 0;
        for (const TextRun& run : row.runs)
            height = std::max(height, run.look.fixedHeight.value_or(body.height * run.look.height));
        whole += heights.empty() ? height : height * linePitch * body.lineSpacingFactor;
        heights.push_back(height);
    }
    // Attachments 1 to 9 go by rows from the top left.
    const int attachment = body.attachment >= 1 && body.attachment <= 9 ? body.attachment - 1 : 0;
    const double room = wraps ? body.rectangleWidth : 0;
    const int row = attachment / 3, column = attachment % 3;
    double baseline = whole * row / 2;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        baseline -= i == 0 ? heights[i] : heights[i] * linePitch * body.lineSpacingFactor;
        const double own = column / 2.0;
        const TextLine::Side side = lines[i].side;
        const double anchor = side == TextLine::Side::own     ? own
                              : side == TextLine::Side::left  ? 0
                              : side == TextLine::Side::right ? 1
                                                              : 0.5;
        line(lines[i].runs, to,
             toPoint(body.insertion) + lettering.right * ((anchor - own) * room) + lettering.up * baseline, lettering,
             anchor);
    }
}

} // namespace editor
