#include "tessaro/host/entry/Ribbon.h"

#include "companions/NorvaneRibbon/RibbonInterface.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/SharedLibrary.h"
#include "tessaro/platform/Text.h"

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace {

constexpr const wchar_t* kRibbonFile = L"NorvaneRibbon.dll";

void AssignText(void* owner, const wchar_t* text, std::size_t length) {
    static_cast<std::wstring*>(owner)->assign(text, length);
}

std::runtime_error RibbonError(const std::wstring& reason) {
    return std::runtime_error(platform::ToNarrow(reason));
}

void AddButton(const std::wstring& file, const std::wstring& command, const std::wstring& title,
               std::span<const std::uint8_t> picture) {
    platform::SharedLibrary library(file);
    if (!library.IsLoaded())
        throw RibbonError(L"can't load " + file);
    const auto factory = reinterpret_cast<HelperFactory>(library.Find(kRibbonApiFactory));
    const auto findMethod = reinterpret_cast<HelperFindMethod>(library.Find(kRibbonFindMethod));
    library.Release(); // What was loaded stays in the process.
    void* const api = factory != nullptr ? factory() : nullptr;
    if (api == nullptr)
        throw RibbonError(L"NorvaneRibbon.API can't be created");
    const auto addButton =
        findMethod != nullptr ? reinterpret_cast<RibbonAddButton>(findMethod(kRibbonApiType, "AddButton")) : nullptr;
    if (addButton == nullptr)
        throw RibbonError(L"NorvaneRibbon.API has no method AddButton");
    std::wstring failure;
    const HelperText failureText{&failure, AssignText};
    const auto size = static_cast<std::uint32_t>(picture.size());
    if (addButton(api, command.c_str(), title.c_str(), picture.data(), size, &failureText) == kHelperRaised)
        throw RibbonError(L"NorvaneRibbon.API.AddButton: " + failure);
}

} // namespace

bool SetupRibbon(const std::wstring& folder, const std::wstring& command, const std::wstring& title,
                 std::span<const std::uint8_t> picture) try {
    AddButton(platform::Join(folder, kRibbonFile), command, title, picture);
    return true;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return false;
}
