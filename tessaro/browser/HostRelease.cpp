#include "tessaro/browser/HostRelease.h"

#include <array>
#include <string_view>
#include <utility>

namespace {

constexpr std::array<std::pair<std::wstring_view, int>, 12> kReleases{{
    {L"13", 14},
    {L"14", 15},
    {L"15", 16},
    {L"16", 17},
    {L"17", 18},
    {L"18", 19},
    {L"19", 20},
    {L"20", 20},
    {L"21", 20},
    {L"22", 21},
    {L"23", 21},
    {L"24", 21},
}};

} // namespace

int MaxFileType(const std::wstring& release, int other) {
    for (const auto& [prefix, type] : kReleases)
        if (release.starts_with(prefix))
            return type;
    return other;
}
