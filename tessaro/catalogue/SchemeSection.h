#pragma once

#include "tessaro/mapping/MapScheme.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// The section "Schemes" and one section per scheme, named by it.

using NamedScheme = std::pair<std::wstring, MapScheme>;

/// The listed names in their order.
std::vector<std::wstring> ReadSchemeNames(const std::wstring& file);
std::unique_ptr<MapScheme> ReadSchemeSection(const std::wstring& name, const std::wstring& file);
void WriteSchemes(const std::vector<NamedScheme>& list, const std::wstring& file);
