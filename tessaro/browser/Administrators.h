#pragma once

#include <string>

/// Whether the user may change the catalogue by the list at that path: each line of its section "Users" is one user
/// name, compared ignoring case. A list that can't be read has no users. An empty path is no list: everybody may.
bool IsAdministrator(const std::wstring& listPath, const std::wstring& user);
