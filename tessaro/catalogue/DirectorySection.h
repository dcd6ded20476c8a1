#pragma once

#include "tessaro/catalogue/Directory.h"

#include <string>
#include <vector>

/// The section "Paths" and one section per Directory, named by its path.

/// The listed paths in their order.
std::vector<std::wstring> ReadPaths(const std::wstring& file);
void WritePaths(const std::vector<DirectorySettings>& settings, const std::wstring& file);

/// The one key that is read for every Directory; absent gives empty.
void ReadDirectoryDescription(DirectorySettings& settings, const std::wstring& file);
/// All other keys. An unknown word leaves the field as it is; View and CurrentScheme are always set.
void ReadDirectorySection(DirectorySettings& settings, const std::wstring& file);
void WriteDirectorySection(const DirectorySettings& settings, const std::wstring& file);
