#pragma once

#include "editor/sdk/db.h"

#include <filesystem>
#include <stdexcept>

/// "2018/Dynblocks.dwg" of the shared drawings; an empty path where they aren't there, which is said.
std::filesystem::path LargeDrawing();

inline void ReadInto(AcDbDatabase& database, const std::filesystem::path& file) {
    if (database.readDwgFile(file.wstring().c_str()) != eOk)
        throw std::runtime_error(file.string() + " can't be read");
}
