// A helper for the tests of the worker: tells a hook of each drawing that it is asked for and reads none.
#include "companions/TessaroHelper/HelperInterface.h"

#include <atomic>
#include <string_view>

using ExaminationHook = void (*)(const wchar_t* path);

namespace {

std::atomic<ExaminationHook> hook{nullptr};

HelperResult LoadDrawing(void*, const wchar_t* path, std::int32_t, std::int32_t, std::int32_t, const HelperList*,
                         HelperDate*, HelperDate*, const HelperText*, const HelperText*) {
    if (const ExaminationHook present = hook)
        present(path);
    return kHelperFalse;
}

} // namespace

extern "C" {

void SetExaminationHook(ExaminationHook function) {
    hook = function;
}

void* TessaroHelper_Services() {
    static char object;
    return &object;
}

HelperMethod TessaroHelper_FindMethod(const char* type, const char* method) {
    return type == std::string_view(kHelperServicesType) && method == std::string_view("LoadDrawing")
               ? reinterpret_cast<HelperMethod>(&LoadDrawing)
               : nullptr;
}
}
