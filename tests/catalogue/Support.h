#pragma once

#include "tessaro/catalogue/ImageList.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace catalogue_tests {

std::wstring Wide(const std::filesystem::path& path);
std::span<const std::uint8_t> Bytes(const std::string& text);
/// A bitmap file of 32 bits, top row first.
Picture ReadBitmap(const std::filesystem::path& file);
std::filesystem::path DataFile(const std::string& name);

/// Module state as it is when the module is mapped, at both ends of the object's life.
class CleanState {
public:
    CleanState();
    ~CleanState();
};

} // namespace catalogue_tests
