#pragma once

#include "companions/TessaroHelper/HelperInterface.h"

extern "C" {

/// NorvaneRibbon.API.AddButton: puts a button for a command into the host's ribbon. The command is sent as it stands;
/// `picture` holds `size` bytes of a PNG, which are copied. Main thread.
typedef HelperResult (*RibbonAddButton)(void* object, const wchar_t* command, const wchar_t* title,
                                        const std::uint8_t* picture, std::uint32_t size, const HelperText* failure);

} // extern "C"

constexpr const char* kRibbonApiType = "NorvaneRibbon.API";
constexpr const char* kRibbonApiFactory = "NorvaneRibbon_API";
constexpr const char* kRibbonFindMethod = "NorvaneRibbon_FindMethod";
