#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/format.h"

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

} // namespace

void addDrawCommands(Editor& editor) {
    const auto addCommand = [&editor](const wchar_t* name, void (*function)(Editor&)) {
        editor.commands().addOwn(
            {L"EDITOR", name, name, ACRX_CMD_MODAL, true, [&editor, function] { function(editor); }});
    };
    addCommand(L"LINE", drawLines);
    addCommand(L"CIRCLE", drawCircle);
}

} // namespace editor
