#include "tessaro/host/entry/Border.h"

#include "tessaro/host/Log.h"
#include "tessaro/platform/Text.h"

#include <exception>

void EndAtBorder(const wchar_t* place, const std::function<void()>& function) noexcept {
    try {
        function();
    } catch (const std::exception& exception) {
        Log(L"%s: exception %s\n", place, platform::FromNarrow(exception.what()).c_str());
    } catch (...) {
        Log(L"%s: exception of unknown type\n", place);
    }
}
