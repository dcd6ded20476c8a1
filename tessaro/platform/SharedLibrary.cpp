#include "tessaro/platform/SharedLibrary.h"

#include "tessaro/platform/NativePath.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <dlfcn.h>
#include <filesystem>
#include <link.h>
#include <vector>

namespace platform {
namespace {

std::vector<std::string> LoadedObjects() {
    std::vector<std::string> names;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* list) {
            static_cast<std::vector<std::string>*>(list)->emplace_back(info->dlpi_name);
            return 0;
        },
        &names);
    return names;
}

/// The handle of an object that is loaded already, without a hold on it.
void* HandleOf(const char* name) {
    void* const handle = dlopen(name, RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr)
        dlclose(handle);
    return handle;
}

} // namespace

void* GetModuleHandle(std::wstring_view fileName) {
    for (const std::string& name : LoadedObjects())
        if (!name.empty() && EqualNoCase(SplitPath(FromNarrow(name)).nameAndExtension(), fileName))
            if (void* const handle = HandleOf(name.c_str()))
                return handle;
    return EqualNoCase(SplitPath(ExecutablePath()).nameAndExtension(), fileName) ? HandleOf(nullptr) : nullptr;
}

std::wstring GetModuleFileName(void* module) {
    link_map* map = nullptr;
    if (module == nullptr || dlinfo(module, RTLD_DI_LINKMAP, &map) != 0 || map->l_name[0] == '\0')
        return ExecutablePath();
    std::error_code failed;
    return FromNarrow(std::filesystem::absolute(map->l_name, failed).native());
}

SharedLibrary::SharedLibrary(std::wstring_view path) {
    const auto native = FindNative(path);
    if (!native)
        return;
    // A name without a folder would be looked for on the linker's path.
    const std::string file = native->find('/') == std::string::npos ? "./" + *native : *native;
    handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

SharedLibrary::~SharedLibrary() {
    if (handle != nullptr)
        dlclose(handle);
}

void* SharedLibrary::Find(const char* symbol) const {
    return handle == nullptr ? nullptr : dlsym(handle, symbol);
}

} // namespace platform
