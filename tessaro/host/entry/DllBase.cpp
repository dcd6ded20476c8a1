#include "tessaro/host/entry/DllBase.h"

#include "tessaro/platform/SharedLibrary.h"
#include "tessaro/platform/Text.h"

#include <dlfcn.h>

namespace dll::stdcall {

dllbase::dllbase(bool load, const std::wstring& moduleName, const std::wstring& procName) {
    module = load ? dlopen(platform::ToNarrow(moduleName).c_str(), RTLD_NOW | RTLD_LOCAL)
                  : platform::GetModuleHandle(moduleName);
    if (module != nullptr)
        proc = dlsym(module, platform::ToNarrow(procName).c_str());
    if (!load)
        module = nullptr;
}

dllbase::~dllbase() {
    if (module != nullptr)
        dlclose(module);
}

} // namespace dll::stdcall
