#pragma once

#include "tessaro/platform/File.h"

#include <sys/stat.h>

/// What this room's files have in common.
namespace platform {

/// The cause that stands for an `errno`.
FileException::Cause CauseOf(int error);
/// Why a file of this status is not opened; none where it is.
FileException::Cause Refusal(const struct stat& status, bool writes);
/// True where all bytes are written; otherwise errno tells why not.
bool WriteAll(int descriptor, const char* bytes, std::size_t count);

} // namespace platform
