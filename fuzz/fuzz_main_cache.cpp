// A main cache with its records, packed or plain; one that can be read is written and read again, after which another
// writing changes nothing.

#include "editor/sdk/editor.h"
#include "fuzz/MemoryFile.h"
#include "tessaro/catalogue/CArchiveExt.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/SafeFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdlib.h>

int acutPrintf(const wchar_t*, ...) {
    return RTNORM;
}

namespace {

const std::filesystem::path& Target() {
    static const std::filesystem::path file = [] {
        std::error_code ignored;
        const bool memory = std::filesystem::is_directory("/dev/shm", ignored);
        std::string pattern = (memory ? std::filesystem::path("/dev/shm") : std::filesystem::temp_directory_path()) /
                              "tessaro-fuzz-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        std::atexit([] { std::filesystem::remove_all(Target().parent_path()); });
        return std::filesystem::path(pattern) / "saved";
    }();
    return file;
}

void Forget() {
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
}

std::string Written() {
    WriteMainCache();
    std::ifstream in(Target(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

bool Read() {
    Forget();
    try {
        return !ReadMainCache().failed;
    } catch (const platform::UserException&) {
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    demandLoadCache = 1;
    const MemoryFile memory(data, size);
    cachePath = memory.path();
    if (Read()) {
        cachePath = Target().wstring();
        const std::string first = Written();
        if (!Read() || Written() != first)
            std::abort();
    }
    Forget();
    return 0;
}
