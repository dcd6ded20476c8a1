#include "tests/entry/recorder/RecorderHost.h"

#include "editor/sdk/buttons.h"
#include "editor/sdk/documents.h"
#include "editor/sdk/editor.h"
#include "editor/sdk/status.h"

#include <cstdarg>
#include <cstdio>
#include <cwchar>
#include <dlfcn.h>
#include <fstream>
#include <iostream>

std::map<std::wstring, AcRxFunctionPtr> addedCommands;
AcEditorReactor* addedReactor = nullptr;
bool commandsAreRefused = false;
bool hasRibbon = false;
bool hasToolbar = false;

void Tell(const std::wstring& line) {
    for (const wchar_t c : line)
        std::cout << (c < 128 ? static_cast<char>(c) : '?');
    std::cout << std::endl;
}

namespace {

std::wstring Flag(bool value) {
    return value ? L"true" : L"false";
}

class RecorderLinker : public AcRxDynamicLinker {
    bool registerAppMDIAware(void* pkt) override {
        Tell(L"registerAppMDIAware " + std::to_wstring(reinterpret_cast<std::uintptr_t>(pkt)));
        return true;
    }
    bool loadModule(const wchar_t* fileName, bool printIt, bool asCommand) override {
        Tell(L"loadModule " + std::wstring(fileName) + L" print " + Flag(printIt) + L" command " + Flag(asCommand));
        if (fileName[0] != L'/')
            return false;
        const std::wstring path = fileName;
        return dlopen(std::string(path.begin(), path.end()).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE) != nullptr;
    }
};

class RecorderCommands : public AcEdCommandStack {
    int addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                   AcRxFunctionPtr function, void* context, int functionCode, void* resourceHandle) override {
        Tell(L"addCommand " + std::wstring(group) + L" " + globalName + L" " + localName + L" flags " +
             std::to_wstring(flags) + L" context " + Flag(context != nullptr) + L" code " +
             std::to_wstring(functionCode) + L" resource " + Flag(resourceHandle != nullptr));
        if (commandsAreRefused)
            return Acad::eInvalidInput;
        addedCommands[globalName] = function;
        return 0;
    }
    int removeGroup(const wchar_t* group) override {
        Tell(L"removeGroup " + std::wstring(group));
        return 0;
    }
};

class RecorderEditor : public AcEditor {
    void addReactor(AcEditorReactor* reactor) override {
        Tell(L"addReactor");
        addedReactor = reactor;
    }
    void removeReactor(AcEditorReactor* reactor) override {
        Tell(reactor == addedReactor ? L"removeReactor" : L"removeReactor of another");
        addedReactor = nullptr;
    }
};

/// Leaves the picture in the file "picture" of the present folder.
class RecorderBar : public AcRxButtonBar {
public:
    explicit RecorderBar(const wchar_t* barName) : name(barName) {}
    bool addButton(const wchar_t* command, const wchar_t* title, const void* png, std::size_t size) override {
        std::wstring told = command;
        for (std::size_t at = 0; (at = told.find(L'\n', at)) != std::wstring::npos; at += 2)
            told.replace(at, 1, L"\\n");
        Tell(name + L" " + told + L" " + title + L" picture of " + std::to_wstring(size));
        std::ofstream("picture", std::ios::binary)
            .write(static_cast<const char*>(png), static_cast<std::streamsize>(size));
        return size != 0;
    }
    bool removeButton(const wchar_t*) override { return false; }

private:
    const std::wstring name;
};

class RecorderRegistry : public AcRxSysRegistry {
public:
    AcRxObject* at(const wchar_t* name) override {
        if (std::wstring(name) == ACRX_DYNAMIC_LINKER)
            return &linker;
        if (std::wstring(name) == ACRX_COMMAND_DOCK)
            return &commands;
        if (std::wstring(name) == ACED_RIBBON)
            return hasRibbon ? &ribbon : nullptr;
        if (std::wstring(name) == ACED_TOOLBAR)
            return hasToolbar ? &toolbar : nullptr;
        return std::wstring(name) == ACED_EDITOR_OBJECT ? &editor : nullptr;
    }

private:
    RecorderLinker linker;
    RecorderCommands commands;
    RecorderEditor editor;
    RecorderBar ribbon{L"ribbon"}, toolbar{L"toolbar"};
};

} // namespace

AcRxSysRegistry* acrxSysRegistry() {
    static RecorderRegistry registry;
    return &registry;
}

AcApDocManager* acDocManagerPtr() {
    return nullptr;
}

int acedFindFile(const wchar_t*, wchar_t*, std::size_t) {
    return RTERROR;
}

int acutPrintf(const wchar_t* format, ...) {
    std::wstring pattern = format;
    for (std::size_t place = 0; (place = pattern.find(L"%s", place)) != std::wstring::npos; place += 3)
        pattern.insert(place + 1, L"l");
    wchar_t text[2000];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vswprintf(text, std::size(text), pattern.c_str(), arguments);
    va_end(arguments);
    if (length > 0 && text[length - 1] == L'\n')
        text[length - 1] = L'\0';
    Tell(L"print " + std::wstring(text));
    return RTNORM;
}
