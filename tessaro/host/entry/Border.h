#pragma once

#include <functional>

/// Carries out what the host called. An exception ends here, with a line in the log that names the place: none may
/// pass into the host.
void EndAtBorder(const wchar_t* place, const std::function<void()>& function) noexcept;
