#include "editor/application/services.h"

namespace editor {

std::optional<std::wstring> WindowServices::pickFileToOpen(const std::wstring&) {
    return std::nullopt;
}

std::optional<std::wstring> WindowServices::pickFileToSave(const std::wstring&) {
    return std::nullopt;
}

SaveAnswer WindowServices::askToSave(const std::wstring&) {
    return SaveAnswer::Cancel;
}

std::optional<int> WindowServices::pickColour(int) {
    return std::nullopt;
}

AcDbObjectId WindowServices::objectAt(const AcGePoint3d&) {
    return {};
}

} // namespace editor
