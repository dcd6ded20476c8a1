#pragma once

#include <optional>
#include <string>

/// The text that an AutoLISP symbol of the host holds at this moment; nothing where it is undefined or holds anything
/// else. Main thread.
std::optional<std::wstring> TextOfSymbol(const std::wstring& symbol);
