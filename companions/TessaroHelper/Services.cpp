#include "companions/TessaroHelper/DrawingRecord.h"
#include "companions/TessaroHelper/HelperInterface.h"

#include <cstring>
#include <exception>
#include <string>

namespace {

/// The object behind the factory; it has no state, so that any thread may use it.
struct Services {};

void Assign(const HelperText& text, const std::wstring& value) {
    text.assign(text.owner, value.data(), value.size());
}

HelperResult LoadDrawing(void*, const wchar_t* path, std::int32_t wantInsPts, std::int32_t, std::int32_t,
                         const HelperList* data, HelperDate* first, HelperDate* second, const HelperText* description,
                         const HelperText* failure) try {
    const auto record = helper::readDrawingRecord(path, wantInsPts != 0);
    if (!record)
        return kHelperFalse;
    *first = record->created;
    *second = record->updated;
    Assign(*description, record->comments);
    for (const double number : record->view)
        data->append(data->owner, number);
    return kHelperTrue;
} catch (const std::exception& raised) {
    const std::string reason = raised.what();
    Assign(*failure, std::wstring(reason.begin(), reason.end()));
    return kHelperRaised;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void* TessaroHelper_Services() {
    static Services services;
    return &services;
}

__attribute__((visibility("default"))) HelperMethod TessaroHelper_FindMethod(const char* typeName,
                                                                             const char* methodName) {
    if (std::strcmp(typeName, kHelperServicesType) != 0 || std::strcmp(methodName, "LoadDrawing") != 0)
        return nullptr;
    const HelperLoadDrawing method = LoadDrawing;
    return reinterpret_cast<HelperMethod>(method);
}

} // extern "C"
