#pragma once

#include <functional>

/// Carries a control's handler out; an exception ends here, with its own text in a message box.
void ReportErrors(const std::function<void()>& handler);
