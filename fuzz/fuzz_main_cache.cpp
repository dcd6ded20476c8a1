// A main cache with its records, packed or plain; one that can be read is written and read again, after which another
// writing changes nothing.

#include "editor/sdk/editor.h"
#include "fuzz/FuzzFolder.h"
#include "fuzz/MemoryFile.h"
#include "tessaro/catalogue/CArchiveExt.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/SafeFile.h"

#include <fstream>
#include <iterator>

int acutPrintf(const wchar_t*, ...) {
    return RTNORM;
}

namespace {

std::filesystem::path Target() {
    return FuzzFolder::Path() / "saved";
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
