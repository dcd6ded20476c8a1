#include "tests/reading/fake_helper/FakeHelper.h"

#include <cstring>

namespace {

FakeAnswer answer = nullptr;

HelperResult LoadDrawing(void* object, const wchar_t* path, std::int32_t wantInsPts, std::int32_t width,
                         std::int32_t height, const HelperList* data, HelperDate* first, HelperDate* second,
                         const HelperText* description, const HelperText* failure) {
    if (answer == nullptr)
        return kHelperFalse;
    return answer(object, path, wantInsPts, width, height, data, first, second, description, failure);
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void FakeHelper_SetAnswer(FakeAnswer next) {
    answer = next;
}

__attribute__((visibility("default"))) void* TessaroHelper_Services() {
    static int object = 0;
    return &object;
}

__attribute__((visibility("default"))) HelperMethod TessaroHelper_FindMethod(const char* typeName,
                                                                             const char* methodName) {
    const bool known = std::strcmp(typeName, kHelperServicesType) == 0 && std::strcmp(methodName, "LoadDrawing") == 0;
    const HelperLoadDrawing method = LoadDrawing;
    return known ? reinterpret_cast<HelperMethod>(method) : nullptr;
}

} // extern "C"
