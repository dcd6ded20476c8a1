#pragma once

#include <filesystem>

namespace bench {

/// Makes the process's one QApplication, on no screen. Later calls do nothing.
void StartApplication();

/// A drawing of the shared folder, or an empty path with a line that says so.
std::filesystem::path SharedDrawing(const char* name);

} // namespace bench
