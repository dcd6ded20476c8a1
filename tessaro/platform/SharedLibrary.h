#pragma once

#include <string>
#include <string_view>

namespace platform {

/// A loaded shared object found by its file's name ("tessaro24-64.arx", whatever its folder; case ignored), through the
/// process's list of loaded objects; the process's own name counts too. Null where there is none. Not owned.
void* GetModuleHandle(std::wstring_view fileName);
/// Full path of a loaded object; of the process's executable for null.
std::wstring GetModuleFileName(void* module);

/// Loads a shared object and holds it for its life.
class SharedLibrary {
public:
    SharedLibrary() = default;
    explicit SharedLibrary(std::wstring_view path);
    ~SharedLibrary();
    SharedLibrary(SharedLibrary&& other) noexcept : handle(other.handle) { other.handle = nullptr; }
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    bool IsLoaded() const { return handle != nullptr; }
    void* Find(const char* symbol) const;
    /// Leaves the library in the process for good.
    void Release() { handle = nullptr; }

private:
    void* handle = nullptr;
};

} // namespace platform
