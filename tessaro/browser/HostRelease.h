#pragma once

#include <string>

/// Highest Block::fileType that a host reads, by the first two characters of its release ("24.1"); `other` for a
/// release that the table does not know.
int MaxFileType(const std::wstring& release, int other);
