#include "tessaro/browser/DrawingScale.h"

#include "editor/sdk/db.h"

#include <array>

namespace {

constexpr int kDecimalUnits = 2;
constexpr int kDrawingPrecision = -1;

AcDbDatabase* CurrentDatabase() {
    const AcDbHostApplicationServices* services = acdbHostApplicationServices();
    return services == nullptr ? nullptr : services->workingDatabase();
}

} // namespace

std::wstring DrawingScaleText() {
    const AcDbDatabase* database = CurrentDatabase();
    std::array<wchar_t, 50> text{};
    if (database == nullptr ||
        acdbRToS(database->userr4(), kDecimalUnits, kDrawingPrecision, text.data(), text.size()) != RTNORM)
        return {};
    return text.data();
}

void SetDrawingScale(double scale) {
    if (AcDbDatabase* database = CurrentDatabase())
        database->setUserr4(scale);
}
