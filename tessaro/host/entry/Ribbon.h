#pragma once

#include <cstdint>
#include <span>
#include <string>

/// Has the ribbon's companion in the folder put a button into the host's ribbon; the bytes are handed over as they
/// stand. False where that fails for any reason, which goes to the standard error stream only. Main thread.
bool SetupRibbon(const std::wstring& folder, const std::wstring& command, const std::wstring& title,
                 std::span<const std::uint8_t> picture);
