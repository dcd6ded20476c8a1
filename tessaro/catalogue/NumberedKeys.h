#pragma once

#include <string>
#include <vector>

/// The values of the keys prefix1, prefix2 ... of a section up to `count`, in the order of their numbers. Keys that are
/// missing are empty values; as one empty value says as much as many, the first of them stands for all, and a count
/// beyond what a file holds costs nothing.
std::vector<std::wstring> ReadNumberedKeys(const std::wstring& section, const std::wstring& prefix, int count,
                                           const std::wstring& file);
