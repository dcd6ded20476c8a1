#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/format.h"
#include "editor/database/new_text.h"

#include <cmath>
#include <memory>

namespace editor {

namespace {

AcDbObjectId add(std::unique_ptr<AcDbEntity> entity) {
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    const AcDbObjectId id = addToModelSpace(*database, std::move(entity));
    if (id.isNull())
        throw CommandFailed{L"The drawing does not take the object."};
    return id;
}

void drawLines(Editor& editor) {
    CommandLine& line = editor.commandLine();
    PromptOptions options;
    options.mayBeEmpty = true;
    const auto first = line.getPoint(L"Specify first point: ", options);
    std::vector<AcGePoint3d> points = {first.value ? *first.value : line.lastPoint()};
    std::vector<AcDbObjectId> segments;
    while (true) {
        options.base = points.back();
        options.keywords = Keywords(segments.size() < 2 ? L"Undo" : L"Close Undo");
        const auto next = line.getPoint(
            segments.size() < 2 ? L"Specify next point or [Undo]: " : L"Specify next point or [Close/Undo]: ", options);
        if (next.empty())
            return;
        if (next.keyword == L"Undo") {
            if (segments.empty()) {
                editor.console().printLine(L"All segments already undone.");
                continue;
            }
            eraseObject(segments.back());
            segments.pop_back();
            points.pop_back();
            line.setLastPoint(points.back());
            continue;
        }
        const AcGePoint3d end = next.value ? *next.value : points.front();
        segments.push_back(add(std::make_unique<AcDbLine>(points.back(), end)));
        points.push_back(end);
        if (next.keyword == L"Close")
            return;
    }
}

void drawCircle(Editor& editor) {
    CommandLine& line = editor.commandLine();
    const AcGePoint3d center = *line.getPoint(L"Specify center point for circle: ").value;
    PromptOptions options;
    options.base = center;
    options.positive = true;
    options.keywords = Keywords(L"Diameter");
    const auto answer = line.getNumber(L"Specify radius of circle or [Diameter]: ", options);
    double radius = answer.value.value_or(0);
    if (!answer.value) {
        options.keywords = {};
        radius = *line.getNumber(L"Specify diameter of circle: ", options).value / 2;
    }
    add(std::make_unique<AcDbCircle>(center, AcGeVector3d::kZAxis, radius));
}

/// Line below line until an empty one.
void drawText(Editor& editor) {
    CommandLine& line = editor.commandLine();
    AcDbDatabase& database = *acdbHostApplicationServices()->workingDatabase();
    NewText text;
    text.style = currentTextStyle(database);
    PromptOptions options;
    options.keywords = Keywords(L"Justify Style");
    while (true) {
        const auto start = line.getPoint(L"Specify start point of text or [Justify/Style]: ", options);
        if (start.value) {
            text.point = *start.value;
            break;
        }
        if (start.keyword == L"Justify") {
            const auto answer = line.getKeyword(L"Enter an option [Left/Center/Right/Middle] <Left>: ",
                                                Keywords(L"Left Center Right Middle"), L"Left");
            text.justification = answer == L"Left"     ? NewText::Justification::Left
                                 : answer == L"Center" ? NewText::Justification::Center
                                 : answer == L"Right"  ? NewText::Justification::Right
                                                       : NewText::Justification::Middle;
            continue;
        }
        const std::wstring style = line.getLine(L"Enter style name <" + text.style + L">: ");
        if (!style.empty() && !hasTextStyle(database, style))
            editor.console().printLine(L"Cannot find text style \"" + style + L"\".");
        else if (!style.empty())
            text.style = style;
    }
    options = {};
    options.mayBeEmpty = true;
    options.base = text.point;
    text.height = fixedTextHeight(database, text.style);
    if (!(text.height > 0)) {
        options.positive = true;
        const double offered = textHeight(database);
        text.height =
            line.getNumber(L"Specify height <" + numberText(offered, 4) + L">: ", options).value.value_or(offered);
        setTextHeight(database, text.height);
    }
    options.positive = false;
    text.rotation = line.getAngle(L"Specify rotation angle of text <0>: ", options).value.value_or(0);
    while (true) {
        text.value = line.getText(L"Enter text: ", true);
        if (text.value.empty())
            return;
        if (addText(database, text).isNull())
            throw CommandFailed{L"The drawing does not take the object."};
        constexpr double lineDistance = 5.0 / 3;
        text.point = text.point +
                     AcGeVector3d{std::sin(text.rotation), -std::cos(text.rotation), 0} * (text.height * lineDistance);
    }
}

} // namespace

void addDrawCommands(Editor& editor) {
    const auto addCommand = [&editor](const wchar_t* name, void (*function)(Editor&)) {
        editor.commands().addOwn({L"EDITOR", name, name, ACRX_CMD_MODAL, [&editor, function] { function(editor); }});
    };
    addCommand(L"LINE", drawLines);
    addCommand(L"CIRCLE", drawCircle);
    addCommand(L"TEXT", drawText);
}

} // namespace editor
