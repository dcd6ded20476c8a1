#include "tessaro/placement/InsertTexts.h"

#include "editor/sdk/db.h"
#include "editor/sdk/editor.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/platform/Text.h"

namespace {

constexpr int kScaleOne = 0, kScaleDrawing = 1, kScaleTyped = 3;

std::wstring ScaleText(const Directory& directory, const InsertSource& source) {
    switch (directory.scaleMode) {
    case kScaleOne:
        return L" _scale 1";
    case kScaleDrawing:
    case kScaleTyped:
        return platform::Format(L" _scale %f", source.scale);
    default:
        return {};
    }
}

std::wstring RotationText(const Directory& directory) {
    return directory.rotationMode == 0 ? platform::Format(L" _rotate %f", directory.rotationAngle) : std::wstring();
}

} // namespace

InsertTexts ComposeInsertTexts(const Directory& directory, const InsertSource& source) {
    const std::wstring head = L"._-insert ";
    const std::wstring scale = ScaleText(directory, source);
    const std::wstring end = RotationText(directory) + L"\n";
    InsertTexts texts;
    texts.repeat = head + source.name + L"\n" + scale + end;
    texts.first = head + source.insertSpec + L"\n";
    if (source.answerYes)
        texts.first += L"_y\n";
    texts.first += (directory.scaleMode == kScaleOne ? L"_scale 1" : scale) + end;
    return texts;
}

double PlacementScale(const Directory& directory) {
    if (directory.scaleMode == kScaleDrawing) {
        resbuf value;
        return acedGetVar(L"dimscale", &value) == RTNORM ? value.resval.rreal : 0.0;
    }
    if (directory.scaleMode == kScaleTyped)
        if (const AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase())
            return drawing->userr4();
    return 0.0;
}
