#include "editor/application/placing.h"

#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/database/attributes.h"

#include <cmath>
#include <memory>
#include <vector>

namespace editor {

namespace {

double& axisOf(AcGeVector3d& vector, wchar_t axis) {
    return axis == L'X' ? vector.x : axis == L'Y' ? vector.y : vector.z;
}

AcGeVector3d turnedBy(const AcGeVector3d& vector, double angle) {
    const double cosine = std::cos(angle), sine = std::sin(angle);
    return {vector.x * cosine - vector.y * sine, vector.x * sine + vector.y * cosine, vector.z};
}

} // namespace

Placing::Placing(Editor& running) : editor(running), line(running.commandLine()) {}

AcDbObjectId Placing::place(AcDbObjectId block) {
    const AcGePoint3d point = askForPoint(block);
    if (!scalePreset)
        askForScale(point);
    if (!rotation)
        rotation = askForRotation(L"Specify rotation angle <0>: ", point);
    // Asked for before anything is added, so that Escape leaves nothing behind.
    const std::vector<std::wstring> values = askForAttributes(block);
    const AcDbObjectId reference = add(block, point);
    if (!values.empty())
        addValues(reference, values);
    return reference;
}

AcDbObjectId Placing::placeEvenly(AcDbObjectId block) {
    PromptOptions options;
    options.ghost = Ghost{block, shownScale, shownRotation};
    const AcGePoint3d point = *line.getPoint(L"Specify insertion point for block: ", options).value;
    const double factor = askForFactor(L"Specify scale factor for XYZ axes <1>: ", 1, point);
    scale = {factor, factor, factor};
    rotation = askForRotation(L"Specify rotation angle <0>: ", point);
    return add(block, point);
}

AcGePoint3d Placing::askForPoint(AcDbObjectId block) {
    PromptOptions options;
    options.keywords = Keywords(L"Basepoint Scale X Y Z Rotate PScale PX PY PZ PRotate");
    while (true) {
        options.ghost = Ghost{block, shownScale, rotation.value_or(shownRotation)};
        const auto answer = line.getPoint(L"Specify insertion point or [Basepoint/Scale/X/Y/Z/Rotate]: ", options);
        if (answer.value)
            return *answer.value;
        preset(answer.keyword);
    }
}

void Placing::preset(const std::wstring& option) {
    if (option == L"Basepoint") {
        // Given on the block as it is shown with its own base at the origin.
        const AcGePoint3d base = *line.getPoint(L"Specify base point: ").value;
        const AcGeVector3d turned = turnedBy(base - AcGePoint3d::kOrigin, -rotation.value_or(shownRotation));
        grip = {turned.x / shownScale.x, turned.y / shownScale.y, turned.z / shownScale.z};
    } else if (option == L"Rotate" || option == L"PRotate") {
        const double angle = askForRotation(L"Specify rotation angle <0>: ", std::nullopt);
        if (option == L"Rotate")
            rotation = angle;
        shownRotation = angle;
    } else {
        const bool isPreview = option.front() == L'P';
        const std::wstring axis = isPreview ? option.substr(1) : option;
        const bool isWhole = axis == L"Scale";
        const double factor = askForFactor(isWhole ? L"Specify scale factor for XYZ axes <1>: "
                                                   : L"Specify " + axis + L" scale factor <1>: ",
                                           1, std::nullopt);
        for (const wchar_t each : {L'X', L'Y', L'Z'}) {
            if (isWhole || each == axis.front())
                axisOf(shownScale, each) = factor;
        }
        if (isPreview)
            return;
        scalePreset = true;
        scale = shownScale;
    }
}

void Placing::askForScale(const AcGePoint3d& point) {
    PromptOptions options;
    options.mayBeEmpty = true;
    options.nonZero = true;
    options.base = point;
    options.keywords = Keywords(L"Corner XYZ");
    const auto answer =
        line.getNumber(L"Enter X scale factor, specify opposite corner, or [Corner/XYZ] <1>: ", options);
    if (answer.keyword == L"Corner") {
        PromptOptions box;
        box.base = point;
        box.rectangle = true;
        while (true) {
            const AcGeVector3d reach = *line.getPoint(L"Specify opposite corner: ", box).value - point;
            if (reach.x != 0 && reach.y != 0) {
                scale = {reach.x, reach.y, reach.x};
                return;
            }
            editor.console().printLine(L"Value must be nonzero.");
        }
    }
    const bool eachAxis = answer.keyword == L"XYZ";
    scale.x = eachAxis ? askForFactor(L"Specify X scale factor <1>: ", 1, point) : answer.value.value_or(1);
    scale.y = askForFactor(L"Enter Y scale factor <use X scale factor>: ", scale.x, point);
    scale.z = eachAxis ? askForFactor(L"Specify Z scale factor <use X scale factor>: ", scale.x, point) : scale.x;
}

double Placing::askForFactor(const std::wstring& prompt, double byDefault, const std::optional<AcGePoint3d>& base) {
    PromptOptions options;
    options.mayBeEmpty = true;
    options.nonZero = true;
    options.base = base;
    return line.getNumber(prompt, options).value.value_or(byDefault);
}

double Placing::askForRotation(const std::wstring& prompt, const std::optional<AcGePoint3d>& base) {
    PromptOptions options;
    options.mayBeEmpty = true;
    options.base = base;
    return line.getAngle(prompt, options).value.value_or(0);
}

AcDbObjectId Placing::add(AcDbObjectId block, const AcGePoint3d& point) {
    const AcGeVector3d toGrip = turnedBy({grip.x * scale.x, grip.y * scale.y, grip.z * scale.z}, *rotation);
    auto reference = std::make_unique<AcDbBlockReference>(point + toGrip * -1, block);
    reference->setScaleFactors(scale);
    reference->setRotation(*rotation);
    const AcDbObjectId added = addToModelSpace(*acdbHostApplicationServices()->workingDatabase(), std::move(reference));
    if (added.isNull())
        throw CommandFailed{L"The drawing does not take the block reference."};
    return added;
}

std::vector<std::wstring> Placing::askForAttributes(AcDbObjectId block) {
    const auto questions = attributeQuestions(block);
    const bool asks = std::get<int>(*editor.variables().get(L"ATTREQ")) != 0;
    std::vector<std::wstring> values;
    bool headed = false;
    for (const AttributeQuestion& question : questions) {
        std::wstring value;
        if (asks && !question.preset) {
            if (!headed)
                editor.console().printLine(L"Enter attribute values");
            headed = true;
            const std::wstring prompt =
                question.prompt + (question.byDefault.empty() ? L": " : L" <" + question.byDefault + L">: ");
            value = line.getText(prompt, true);
        }
        values.push_back(value.empty() ? question.byDefault : value);
    }
    return values;
}

void Placing::addValues(AcDbObjectId reference, const std::vector<std::wstring>& values) {
    if (const int status = addAttributes(reference, values); status != eOk)
        throw CommandFailed{L"The attributes can't be added: " + statusText(status) + L"."};
}

} // namespace editor
