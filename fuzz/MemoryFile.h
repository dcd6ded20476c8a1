#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

/// A file in memory that is opened by its name like any other.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size) : descriptor(memfd_create("input", 0)) {
        if (write(descriptor, data, size) != static_cast<ssize_t>(size))
            std::abort();
    }
    ~MemoryFile() { close(descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    std::wstring path() const { return L"/proc/self/fd/" + std::to_wstring(descriptor); }

private:
    const int descriptor;
};
