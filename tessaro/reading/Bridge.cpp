#include "tessaro/reading/Bridge.h"

#include "companions/TessaroHelper/HelperInterface.h"
#include "tessaro/browser/preview/Dib.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <mutex>
#include <stdexcept>

std::atomic<std::intptr_t> servicesptr{0};

namespace {

constexpr const wchar_t* kHelperName = L"TessaroHelper, Culture=neutral";

/// The helper's object and its one method; lives as long as the process.
struct Services {
    void* object = nullptr;
    HelperLoadDrawing loadDrawing = nullptr;
};

std::runtime_error HelperError(const std::wstring& reason) {
    return std::runtime_error(platform::ToNarrow(reason));
}

std::intptr_t CreateServices() {
    platform::SharedLibrary library = ResolveHandler(kHelperName);
    const auto factory = reinterpret_cast<HelperFactory>(library.Find(kHelperServicesFactory));
    const auto findMethod = reinterpret_cast<HelperFindMethod>(library.Find(kHelperFindMethod));
    if (factory == nullptr || findMethod == nullptr)
        throw HelperError(L"TessaroHelper has no type TessaroHelper.Services");
    Services services;
    services.loadDrawing = reinterpret_cast<HelperLoadDrawing>(findMethod(kHelperServicesType, "LoadDrawing"));
    if (services.loadDrawing == nullptr)
        throw HelperError(L"TessaroHelper.Services has no method LoadDrawing");
    services.object = factory();
    if (services.object == nullptr)
        throw HelperError(L"TessaroHelper.Services can't be created");
    library.Release();
    return reinterpret_cast<std::intptr_t>(new Services(services));
}

/// Two threads may make the first call at once.
const Services& GetServices() {
    static std::mutex creation;
    const std::lock_guard lock(creation);
    if (servicesptr == 0)
        servicesptr = CreateServices();
    return *reinterpret_cast<const Services*>(servicesptr.load());
}

void AppendNumber(void* owner, double value) {
    static_cast<std::vector<double>*>(owner)->push_back(value);
}

void AssignText(void* owner, const wchar_t* text, std::size_t length) {
    static_cast<std::wstring*>(owner)->assign(text, length);
}

platform::Time ToTime(const HelperDate& date) {
    return platform::TimeFromLocal(date.year, date.month, date.day, date.hour, date.minute, date.second);
}

} // namespace

platform::SharedLibrary ResolveHandler(const std::wstring& name) {
    const std::wstring file = platform::Join(LocalPath, name.substr(0, name.find(L',')) + L".dll");
    platform::SharedLibrary library(file);
    if (!library.IsLoaded())
        throw HelperError(L"can't load " + file);
    return library;
}

bool LoadDrawing(const std::wstring& path, Block& block, bool wantInsPts, const PreviewBytes* preview,
                 MarkPoints& points) {
    return LoadDrawing2(path, block, wantInsPts, preview, points);
}

bool LoadDrawing2(const std::wstring& path, Block& block, bool wantInsPts, const PreviewBytes* preview,
                  MarkPoints& points) {
    const Services& services = GetServices();
    const DibHeader header = preview != nullptr ? ReadDibHeader(*preview) : DibHeader{};
    std::vector<double> data;
    std::wstring description; // A null text and an empty one come to the same.
    std::wstring failure;
    // One variable for both dates: the later write is the date that both fields get.
    HelperDate date{1, 1, 1, 0, 0, 0};
    const HelperList list{&data, AppendNumber};
    const HelperText descriptionText{&description, AssignText};
    const HelperText failureText{&failure, AssignText};

    const HelperResult result =
        services.loadDrawing(services.object, path.c_str(), wantInsPts && preview != nullptr ? 1 : 0, header.width,
                             header.height, &list, &date, &date, &descriptionText, &failureText);
    if (result == kHelperRaised)
        throw HelperError(failure);
    if (result == kHelperFalse)
        return false;

    block.created = ToTime(date);
    block.modified = ToTime(date);
    block.description = description;
    // Each round reads the first record: a list of n records gives the first point n times.
    for (std::size_t i = 0; i < data.size(); i += kHelperRecordSize)
        ProjectInsertionPoint(data, header.width, header.height, points);
    return true;
}
