#pragma once

namespace platform {

/// Gives the system back what was freed in small parts, which the process would keep for itself. Takes milliseconds,
/// so it is for the end of an occasion that freed much. Any thread.
void ReturnFreedMemory();

} // namespace platform
