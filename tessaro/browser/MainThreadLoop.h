#pragma once

/// Lets the main thread's event loop answer the calls of other threads, and puts message boxes, wait cursor and pickers
/// on the screen. Done at the first opening and kept for the life of the process, since the last finisher may still
/// call when the window is gone. Main thread.
void InstallMainThreadLoop();
