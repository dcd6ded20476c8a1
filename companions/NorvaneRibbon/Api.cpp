#include "companions/NorvaneRibbon/RibbonInterface.h"

#include "editor/sdk/buttons.h"

#include <cstring>
#include <string>

namespace {

/// The object behind the factory; it has no state.
struct Api {};

HelperResult Raise(const HelperText& failure, const std::wstring& reason) {
    failure.assign(failure.owner, reason.data(), reason.size());
    return kHelperRaised;
}

HelperResult AddButton(void*, const wchar_t* command, const wchar_t* title, const std::uint8_t* picture,
                       std::uint32_t size, const HelperText* failure) {
    AcRxSysRegistry* const registry = acrxSysRegistry();
    auto* const ribbon = registry != nullptr ? dynamic_cast<AcRxButtonBar*>(registry->at(ACED_RIBBON)) : nullptr;
    if (ribbon == nullptr)
        return Raise(*failure, L"the host has no ribbon");
    if (!ribbon->addButton(command, title, picture, size))
        return Raise(*failure, L"the ribbon does not take the button");
    return kHelperTrue;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void* NorvaneRibbon_API() {
    static Api api;
    return &api;
}

__attribute__((visibility("default"))) HelperMethod NorvaneRibbon_FindMethod(const char* typeName,
                                                                             const char* methodName) {
    if (std::strcmp(typeName, kRibbonApiType) != 0 || std::strcmp(methodName, "AddButton") != 0)
        return nullptr;
    const RibbonAddButton method = AddButton;
    return reinterpret_cast<HelperMethod>(method);
}

} // extern "C"
