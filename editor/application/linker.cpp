#include "editor/application/linker.h"

#include "editor/application/editor.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"

#include <dlfcn.h>

#include <exception>

namespace editor {

namespace {

std::wstring lastLoaderError() {
    const char* const reason = dlerror();
    return reason != nullptr ? fromNarrow(reason) : std::wstring(L"unknown reason");
}

template <class Function> Function exported(void* library, const char* name) {
    return reinterpret_cast<Function>(dlsym(library, name));
}

} // namespace

Linker::Linker(Editor& theEditor) : editor(theEditor) {}

Linker::~Linker() = default;

bool Linker::registerAppMDIAware(void* pkt) {
    for (const auto& module : loaded) {
        if (module.get() == pkt && module->initialising) {
            module->severalDocuments = true;
            return true;
        }
    }
    return false;
}

bool Linker::loadModule(const wchar_t* fileName, bool printIt, bool) {
    const std::wstring name = fileName != nullptr ? fileName : L"";
    const auto file = editor.findFile(name);
    if (!file)
        return refuse(printIt, name, L"the file can't be found");
    for (const auto& module : loaded) {
        if (sameFile(module->path, *file)) {
            if (printIt)
                editor.console().printLine(L"\"" + name + L"\" is already loaded.");
            return module->accepted || module->initialising;
        }
    }

    void* const library = dlopen(toUtf8(*file).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr)
        return refuse(printIt, name, lastLoaderError());
    const auto version = exported<int (*)()>(library, "acrxGetApiVersion");
    const auto entry = exported<EntryPoint>(library, "acrxEntryPoint");
    if (version == nullptr || entry == nullptr)
        return refuse(printIt, name, L"it is no application module");
    if (const int built = version(); built != ACRX_API_VERSION)
        return refuse(printIt, name, L"it was built for release " + std::to_wstring(built));

    Module& module = *loaded.emplace_back(std::make_unique<Module>(Module{*file, entry}));
    module.initialising = true;
    const int answer = deliver(module, AcRx::kInitAppMsg);
    module.initialising = false;
    if (answer == AcRx::kRetError)
        return refuse(printIt, name, L"it could not be initialised");
    module.accepted = true;
    if (editor.documents().current() != nullptr)
        deliver(module, AcRx::kLoadDwgMsg);
    return true;
}

bool Linker::refuse(bool printIt, const std::wstring& fileName, const std::wstring& reason) {
    if (printIt)
        editor.console().printLine(L"\"" + fileName + L"\" can't be loaded: " + reason + L".");
    return false;
}

void Linker::send(AcRx::AppMsgCode message) {
    // A module may load another one while it handles the message; that one has then had its own.
    const std::size_t count = loaded.size();
    for (std::size_t index = 0; index < count; ++index) {
        if (loaded[index]->accepted)
            deliver(*loaded[index], message);
    }
}

int Linker::deliver(Module& module, AcRx::AppMsgCode message) {
    std::wstring reason;
    try {
        return module.entry(message, &module);
    } catch (const std::exception& error) {
        reason = L": " + fromNarrow(error.what());
    } catch (...) {
        reason = L".";
    }
    editor.console().printFault(L"\"" + fileNameOf(module.path) + L"\" failed in message " + std::to_wstring(message) +
                                reason);
    return AcRx::kRetError;
}

} // namespace editor
