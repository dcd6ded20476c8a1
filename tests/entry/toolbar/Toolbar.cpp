// A toolbar module under the toolbar's name that tells what it is asked for.
#include <cstdio>
#include <string>

namespace {

/// A line end as two characters.
std::string Told(const std::wstring& text) {
    std::string told;
    for (const wchar_t c : text)
        told += c == L'\n' ? std::string("\\n") : std::string(1, static_cast<char>(c));
    return told;
}

} // namespace

// Texts cross by value, as the interface between the modules says.
// NOLINTBEGIN(performance-unnecessary-value-param)
extern "C" {

int AddToToolbar(std::wstring command, std::wstring title, void* instance, unsigned int resource, int first,
                 unsigned long second) {
    std::printf("AddToToolbar %s %s instance %s resource %u %d %lu\n", Told(command).c_str(), Told(title).c_str(),
                instance != nullptr ? "true" : "false", resource, first, second);
    std::fflush(stdout);
    return 0;
}

int RemoveFromToolbar(std::wstring command) {
    std::printf("RemoveFromToolbar %s\n", Told(command).c_str());
    std::fflush(stdout);
    return 0;
}
}
// NOLINTEND(performance-unnecessary-value-param)
