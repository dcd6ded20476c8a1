#pragma once

/// Writes a line to the session's log file, on disk before the return. Off unless a folder "Log" lies beside the
/// module. The format is the wide C family with "%s" as wide text; the line brings its own line end. Callable from any
/// thread, takes no lock across the file; never throws.
void Log(const wchar_t* format, ...);
